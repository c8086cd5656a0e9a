#pragma once

#include "engines/builtin/xlsx/package/content_types.h"
#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/package/relationships.h"
#include "engines/builtin/zip/writer.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// The changes with which an opened package is saved. Everything else is saved with the bytes that
/// were opened.
class PackageEdit {
public:
    using Content = zip::Producer;

    /// The package outlives its edits.
    explicit PackageEdit(const Package& package);

    /// Adds or replaces a part whose content is made when the package is saved.
    void Put(std::string_view part, std::string_view type, Content content);
    void Put(std::string_view part, std::string_view type, std::string content);
    /// Adds a part with the packed bytes and the type of a part of the opened package, without its
    /// relationships. Throws Error(DamagedWorkbook) if there is no such part.
    void PutCopy(std::string_view part, std::string_view original);
    /// Removes a part, its relationships and its type.
    void Remove(std::string_view part);
    void SetRelationships(std::string_view part, Relationships relationships);
    /// The same with a text that is made when the package is saved.
    void PutRelationships(std::string_view part, Content content);

    /// Writes the whole package. The file at `target`, which may be the opened one, is replaced at
    /// the end, or stays as it was. Throws Error (FileNotWritable, DiskFull, ...).
    void Save(const std::filesystem::path& target) const;

private:
    /// How a part differs from the opened one. One without content and without a copy is removed.
    struct Change {
        std::string name;                  ///< as given
        Content content;                   ///< makes the bytes
        std::optional<std::size_t> copyOf; ///< the entry whose packed bytes it takes
    };
    using Key = std::string; // PartKey

    Change& ChangePart(std::string_view part);
    const Change* ChangeOf(std::size_t entry) const;
    void Verify() const;
    void WriteEntries(zip::Writer& writer) const;
    void WriteChange(zip::Writer& writer, const Change& change, const std::string& name) const;

    const Package& package_;
    std::map<Key, Change, std::less<>> changes_;
    std::vector<Key> added_; // in order, those of the changes that the package does not contain
    ContentTypes types_;
};

} // namespace orrery::xlsx
