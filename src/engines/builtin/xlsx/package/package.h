#pragma once

#include "engines/builtin/xlsx/package/content_types.h"
#include "engines/builtin/xlsx/package/relationships.h"
#include "engines/builtin/zip/reader.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// The text of a part, shared by all its readers.
using PartText = std::shared_ptr<const std::string>;

/// An opened Open Packaging container: parts, their types, and the relationships between them. Part
/// names begin with "/" and are compared without regard to ASCII case.
class Package {
public:
    /// The most that may be read of the container; the rest is copied packed.
    static constexpr std::uint64_t kMaxRead = std::uint64_t{256} << 20U;

    /// Opens a package whose main part is a workbook in XML.
    /// Throws Error: NotAWorkbook, DamagedWorkbook, BinaryWorkbook, TooLargeUnpacked, FileNotFound,
    /// FileNotReadable.
    explicit Package(const std::filesystem::path& path);

    const std::filesystem::path& Path() const { return path_; }
    /// The workbook part.
    const std::string& MainPart() const { return mainPart_; }
    bool Has(std::string_view part) const;
    std::string TypeOf(std::string_view part) const;
    /// Whether a part may belong to a sheet: it is not the workbook, the content types or
    /// relationships.
    bool CanBeOwned(std::string_view part) const;
    /// In the order of the container, without relationships and folders.
    std::vector<std::string> PartNames() const;

    /// The bytes of a part. Throws Error(DamagedWorkbook) if it is missing or cannot be unpacked,
    /// Error(TooLargeUnpacked) if it and the kept texts have more than kMaxRead bytes.
    PartText Read(std::string_view part) const;
    /// The text of an XML part in UTF-8 (other encodings are converted, a byte-order mark is
    /// dropped), checked to be well-formed and nested at most 256 deep, without a document type
    /// declaration.
    /// Kept after the first call. Throws Error (DamagedWorkbook, TooDeeplyNested,
    /// TooLargeUnpacked).
    PartText ReadXml(std::string_view part) const;
    /// The text of an XML part in UTF-8, neither checked nor kept: for large parts that are read
    /// once. Throws Error (DamagedWorkbook, TooLargeUnpacked).
    std::string Text(std::string_view part) const;
    /// The relationships of a part, or of the package for ""; empty if it has no .rels part.
    const Relationships& RelationshipsOf(std::string_view part) const;
    /// The unpacked size of a part of the container in bytes; 0 if it is missing.
    std::uint64_t SizeOf(std::string_view part) const;
    /// The number of parts, relationships included, and their unpacked size in bytes.
    std::size_t CountParts() const { return zip_->Entries().size(); }
    std::uint64_t UnpackedSize() const { return zip_->UnpackedSize(); }
    /// Closes the file until something of it is asked for, so that other programs can replace it.
    void CloseFile() { zip_->CloseFile(); }
    /// All parts for which the container has relationships, whether they exist or not; "" is the
    /// package.
    std::vector<std::string> RelationshipsOwners() const;

    /// Whether a new part may have that name: there is no such part, no relationships for one and
    /// no folder of that name.
    bool IsFree(std::string_view part) const;
    /// A free part name: the first of prefix + number + suffix ("/xl/worksheets/sheet", ".xml")
    /// from `number` on, which becomes the number used.
    std::string FreePartName(std::string_view prefix, std::string_view suffix,
                             std::size_t& number) const;

private:
    friend class PackageEdit;
    using Key = std::string; // PartKey

    void ListEntries();
    void ReserveFolderNames(const std::string& name);
    void CheckSpelling();
    void FindMainPart();
    [[noreturn]] void FailWithoutMainPart(const std::string& what) const;
    void CheckIsWorkbook() const;
    [[noreturn]] void FailMissing(std::string_view part) const;
    std::string NameOf(std::size_t entry) const;
    bool IsPart(std::size_t entry) const;
    bool IsContentTypes(std::size_t entry) const;
    std::string Bytes(std::string_view part) const;
    std::string BytesOf(std::size_t entry) const;

    std::filesystem::path path_;
    std::unique_ptr<zip::Reader> zip_;
    std::map<Key, std::size_t, std::less<>> entries_;
    std::set<Key, std::less<>> taken_; // names that are not parts and cannot be new ones
    ContentTypes types_;
    std::string mainPart_;
    mutable std::map<Key, PartText, std::less<>> xml_;
    mutable std::uint64_t kept_ = 0; // bytes of xml_
    mutable std::map<Key, Relationships, std::less<>> relationships_;
};

} // namespace orrery::xlsx
