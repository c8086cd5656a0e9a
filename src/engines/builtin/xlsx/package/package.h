#pragma once

#include "engines/builtin/xlsx/package/content_types.h"
#include "engines/builtin/xlsx/package/relationships.h"
#include "engines/builtin/zip/archive.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// The text of a part, shared by all who read it.
using PartText = std::shared_ptr<const std::string>;

/// An Open Packaging container: parts, their types, and the relationships between them. Part names
/// begin with "/" and are compared without regard to ASCII case. What is not changed is saved as
/// the bytes it was opened with.
class Package {
public:
    /// What may be read of the container at a time; the rest is copied packed.
    static constexpr std::uint64_t kMostRead = std::uint64_t{256} << 20U;

    /// Opens a package whose main part is a workbook in XML.
    /// Throws Error: NotAWorkbook, DamagedWorkbook, BinaryWorkbook, TooLargeUnpacked, FileNotFound,
    /// FileNotReadable.
    explicit Package(const std::filesystem::path& path);

    const std::filesystem::path& Path() const { return path_; }
    /// The workbook part.
    const std::string& MainPart() const { return mainPart_; }
    bool Has(std::string_view part) const;
    std::string TypeOf(std::string_view part) const;
    /// Whether a part may belong to a sheet: not the workbook, the types or relationships.
    bool CanBeOwned(std::string_view part) const;
    /// In the order of the container; neither relationships nor folders.
    std::vector<std::string> PartNames() const;

    // Parts of the container are read as they were opened, whatever was put over them; new parts as
    // they will be saved.
    /// The bytes of a part. Throws Error(DamagedWorkbook) when it is missing or cannot be unpacked,
    /// Error(TooLargeUnpacked) when it and the kept texts have more than kMostRead bytes.
    PartText Read(std::string_view part) const;
    /// The text of an XML part in UTF-8 (other encodings are converted, a byte-order mark dropped),
    /// checked to be well-formed and nested at most 256 deep, without a document type declaration.
    /// Kept after the first call. Throws Error (DamagedWorkbook, TooDeeplyNested,
    /// TooLargeUnpacked).
    PartText ReadXml(std::string_view part) const;
    /// The relationships of a part as they are now, "" for those of the package; none where it has
    /// no .rels part.
    const Relationships& RelationshipsOf(std::string_view part) const;

    /// The same, as a value that stays as it is whatever is set later.
    std::shared_ptr<const Relationships> ShareRelationshipsOf(std::string_view part) const;
    /// The unpacked size of a part of the container in bytes; 0 for one that is not there.
    std::uint64_t SizeOf(std::string_view part) const;
    /// How many parts there are, relationships included, and the unpacked size of those of the
    /// container in bytes.
    std::size_t CountParts() const { return zip_->Entries().size() + added_; }
    std::uint64_t UnpackedSize() const { return zip_->UnpackedSize(); }
    /// All parts for which the container has relationships, whether they are there or not; "" is
    /// the package.
    std::vector<std::string> RelationshipsOwners() const;

    /// Whether a new part may have that name: there is no such part, no relationships that wait for
    /// one, no folder of that name.
    bool IsFree(std::string_view part) const;
    /// A part name that is free: the first of prefix + number + suffix ("/xl/worksheets/sheet",
    /// ".xml") from that number on, which becomes the one taken.
    std::string FreePartName(std::string_view prefix, std::string_view suffix,
                             std::size_t& number) const;
    /// Adds or replaces a part whose content is made each time the package is saved.
    void Put(std::string_view part, std::string_view type, std::function<std::string()> content);
    void Put(std::string_view part, std::string_view type, std::string content);
    /// Adds a part with the packed bytes and the type of another, without its relationships.
    /// Throws Error(DamagedWorkbook) when there is no such part.
    void PutCopy(std::string_view part, std::string_view original);
    /// Removes a part, its relationships and its type.
    void Remove(std::string_view part);
    /// Takes back what was put or removed: the part is again what the container has.
    void Restore(std::string_view part);
    void SetRelationships(std::string_view part, Relationships relationships);
    /// The same with a text that is made each time the package is saved.
    void PutRelationships(std::string_view part, std::function<std::string()> content);

    /// Writes the whole package; the file at `target` is replaced at the end, or stays as it was.
    /// A package may be saved more than once, also over the file that it was opened from: it goes
    /// on reading the old one. Throws Error (FileNotWritable, DiskFull, ...).
    void Save(const std::filesystem::path& target) const;

private:
    /// How a part differs from the container's. Without content and copy it is removed.
    struct Change {
        std::string name;                     ///< as given
        std::string typeBefore;               ///< in the container
        std::function<std::string()> content; ///< makes the bytes
        std::optional<std::size_t> copyOf;    ///< the container's entry whose packed bytes it takes
        bool IsRemoval() const { return !content && !copyOf; }
    };
    using Key = std::string; // PartKey

    void ListEntries();
    void TakeFolders(const std::string& name);
    void CheckSpelling();
    void Verify() const;
    void FindMainPart();
    [[noreturn]] void FailWithoutMainPart(const std::string& what) const;
    void CheckIsWorkbook() const;
    [[noreturn]] void FailMissing(std::string_view part) const;
    std::string NameOf(std::size_t entry) const;
    bool IsPart(std::size_t entry) const;
    std::string Bytes(std::string_view part) const;
    std::string BytesOf(std::size_t entry) const;
    std::string Text(std::string_view part) const;
    const Change* ChangeOf(const Key& key) const;
    Change& ChangePart(std::string_view part);
    void WriteEntries(zip::Writer& writer) const;
    void WriteChange(zip::Writer& writer, const Change& change, const std::string& name) const;

    std::filesystem::path path_;
    std::unique_ptr<zip::Reader> zip_;
    std::map<Key, std::size_t, std::less<>> entries_;
    std::set<Key, std::less<>> taken_; // that are no parts, and no names for new ones
    std::map<Key, Change, std::less<>> changes_;
    std::vector<Key> order_; // of the changes
    std::size_t added_ = 0;  // those of them that the container does not have
    ContentTypes types_;
    std::string mainPart_;
    mutable std::map<Key, PartText, std::less<>> xml_;
    mutable std::uint64_t kept_ = 0; // bytes of xml_
    mutable std::map<Key, std::shared_ptr<const Relationships>, std::less<>> relationships_;
};

} // namespace orrery::xlsx
