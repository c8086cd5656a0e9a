#include "engines/builtin/xlsx/package/package.h"

#include "book/error.h"
#include "engines/builtin/common/error_path.h"
#include "engines/builtin/xlsx/package/part_names.h"
#include "engines/builtin/xml/encoding.h"
#include "engines/builtin/xml/scanner.h"
#include "util/error.h"
#include "util/paths.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orrery::xlsx {

namespace {

using book::ErrorKind;
using builtin::WithErrorPath;
using util::Error;

constexpr std::string_view kContentTypes = "/[Content_Types].xml";
const std::string kContentTypesKey = PartKey(kContentTypes);

bool IsFolder(std::string_view entryName)
{
    return entryName.ends_with('/') || entryName.ends_with('\\');
}

bool IsRelationshipsPart(std::string_view key)
{
    const std::size_t slash = key.rfind('/');
    return key.ends_with(".rels") && key.substr(0, slash).ends_with("/_rels");
}

void CheckWellFormed(std::string_view xml, std::string_view part)
{
    xml::Scanner scanner(xml, part);
    for (auto token = scanner.Next(); token != xml::Scanner::Token::End; token = scanner.Next()) {
        if (token == xml::Scanner::Token::StartTag)
            scanner.CheckPrefixes();
    }
}

bool IsWorkbookRoot(std::string_view xml, std::string_view part)
{
    xml::Scanner scanner(xml, part);
    while (scanner.Next() != xml::Scanner::Token::StartTag) {
    }
    return scanner.LocalName() == "workbook" && IsMainNamespace(scanner.NamespaceUri());
}

} // namespace

Package::Package(const std::filesystem::path& path) : path_(path)
{
    zip_ = std::make_unique<zip::Reader>(path);
    ListEntries();
    FindMainPart();
    CheckIsWorkbook();
}

void Package::ListEntries()
{
    for (std::size_t index = 0; index < zip_->Entries().size(); ++index) {
        const std::string name = NameOf(index);
        ReserveFolderNames(name);
        if (IsFolder(name))
            continue;
        const auto [entry, isNew] = entries_.emplace(PartKey(name), index);
        // Of names that differ only in case the first counts; the other entries are copied along.
        if (!isNew && NameOf(entry->second) == name) {
            throw Error(ErrorKind::DamagedWorkbook, util::FromPath(path_),
                        "the part " + name + " is there twice");
        }
    }
    CheckSpelling();
}

/// A name that some program takes for a folder cannot be a part's name.
void Package::ReserveFolderNames(const std::string& name)
{
    for (std::size_t slash = name.rfind('/'); slash != std::string::npos && slash != 0;
         slash = name.rfind('/', slash - 1)) {
        if (!taken_.insert(PartKey(std::string_view(name).substr(0, slash))).second)
            return; // those above it are known, too
    }
}

/// An entry with a step like "." in its name is not a part, but some readers take it for one.
void Package::CheckSpelling()
{
    for (const auto& [key, entry] : entries_) {
        const std::string plain = PartKey(ResolveTarget("", key));
        if (plain == key)
            continue;
        if (entries_.contains(plain)) {
            throw Error(ErrorKind::DamagedWorkbook, util::FromPath(path_),
                        "the part " + plain + " is there twice");
        }
        taken_.insert(plain);
    }
}

bool Package::IsPart(std::size_t entry) const
{
    const auto part = entries_.find(PartKey(NameOf(entry)));
    return part != entries_.end() && part->second == entry;
}

bool Package::IsContentTypes(std::size_t entry) const
{
    return PartKey(NameOf(entry)) == kContentTypesKey;
}

void Package::FindMainPart()
{
    if (!Has(kContentTypes))
        FailWithoutMainPart("the part " + std::string(kContentTypes) + " is missing");
    types_ = WithErrorPath(path_, [&] { return ContentTypes::Parse(Text(kContentTypes)); });
    const Relationship* const main = RelationshipsOf("").FindByType("officeDocument");
    if (main == nullptr)
        FailWithoutMainPart("nothing says which part is the workbook");
    mainPart_ = ResolveTarget("", main->Target);
    if (!Has(mainPart_))
        FailWithoutMainPart("the part " + mainPart_ + " is missing");
}

void Package::FailWithoutMainPart(const std::string& what) const
{
    const bool hasSheets = std::any_of(entries_.begin(), entries_.end(), [](const auto& entry) {
        return entry.first.starts_with("/xl/");
    });
    throw Error(hasSheets ? ErrorKind::DamagedWorkbook : ErrorKind::NotAWorkbook,
                util::FromPath(path_), what);
}

void Package::CheckIsWorkbook() const
{
    constexpr std::array<std::string_view, 5> kWorkbookTypes = {
        "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml",
        "application/vnd.openxmlformats-officedocument.spreadsheetml.template.main+xml",
        "application/vnd.ms-excel.sheet.macroEnabled.main+xml",
        "application/vnd.ms-excel.template.macroEnabled.main+xml",
        "application/vnd.ms-excel.addin.macroEnabled.main+xml"};
    const std::string type = TypeOf(mainPart_);
    if (std::find(kWorkbookTypes.begin(), kWorkbookTypes.end(), type) != kWorkbookTypes.end())
        return;
    if (type.find("sheet.binary") != std::string::npos || PartKey(mainPart_).ends_with(".bin"))
        throw Error(ErrorKind::BinaryWorkbook, util::FromPath(path_));
    // Some programs declare the general XML type; then the part itself decides.
    if (!WithErrorPath(path_, [&] { return IsWorkbookRoot(Text(mainPart_), mainPart_); })) {
        throw Error(ErrorKind::NotAWorkbook, util::FromPath(path_),
                    "the part " + mainPart_ + " is no workbook");
    }
}

std::string Package::NameOf(std::size_t entry) const
{
    std::string name = zip_->Entries()[entry].name;
    std::replace(name.begin(), name.end(), '\\', '/');
    return name.starts_with('/') ? name : "/" + name;
}

bool Package::Has(std::string_view part) const
{
    return entries_.contains(PartKey(part));
}

bool Package::CanBeOwned(std::string_view part) const
{
    const Key key = PartKey(part);
    return key != PartKey(mainPart_) && key != kContentTypesKey && !IsRelationshipsPart(key);
}

std::string Package::TypeOf(std::string_view part) const
{
    return types_.TypeOf(part);
}

std::vector<std::string> Package::PartNames() const
{
    std::vector<std::string> names;
    for (std::size_t index = 0; index < zip_->Entries().size(); ++index) {
        std::string name = NameOf(index);
        const Key key = PartKey(name);
        if (IsPart(index) && key != kContentTypesKey && !IsRelationshipsPart(key))
            names.push_back(std::move(name));
    }
    return names;
}

PartText Package::Read(std::string_view part) const
{
    return std::make_shared<const std::string>(Bytes(part));
}

std::string Package::Bytes(std::string_view part) const
{
    const auto entry = entries_.find(PartKey(part));
    if (entry == entries_.end())
        FailMissing(part);
    return BytesOf(entry->second);
}

std::string Package::BytesOf(std::size_t entry) const
{
    if (zip_->Entries()[entry].size > kMaxRead - std::min(kept_, kMaxRead)) {
        throw Error(ErrorKind::TooLargeUnpacked, util::FromPath(path_),
                    "with the part " + NameOf(entry) +
                        " it has more than 256 MiB of sheets and other text");
    }
    return zip_->Read(entry);
}

void Package::FailMissing(std::string_view part) const
{
    throw Error(ErrorKind::DamagedWorkbook, util::FromPath(path_),
                "the part " + std::string(part) + " is missing");
}

std::string Package::Text(std::string_view part) const
{
    return xml::DecodePart(Bytes(part), part);
}

PartText Package::ReadXml(std::string_view part) const
{
    const Key key = PartKey(part);
    if (const auto kept = xml_.find(key); kept != xml_.end())
        return kept->second;
    return WithErrorPath(path_, [&] {
        auto text = std::make_shared<const std::string>(Text(part));
        CheckWellFormed(*text, part);
        xml_.emplace(key, text);
        kept_ += text->size();
        return text;
    });
}

const Relationships& Package::RelationshipsOf(std::string_view part) const
{
    const Key key = part.empty() ? Key() : PartKey(part);
    if (const auto known = relationships_.find(key); known != relationships_.end())
        return known->second;
    const std::string name = RelationshipsPartName(part);
    Relationships relationships;
    if (Has(name))
        relationships =
            WithErrorPath(path_, [&] { return Relationships::Parse(Text(name), name); });
    return relationships_.emplace(key, std::move(relationships)).first->second;
}

std::uint64_t Package::SizeOf(std::string_view part) const
{
    const auto entry = entries_.find(PartKey(part));
    return entry == entries_.end() ? 0 : zip_->Entries()[entry->second].size;
}

std::vector<std::string> Package::RelationshipsOwners() const
{
    std::vector<std::string> owners;
    for (const auto& [key, entry] : entries_) {
        if (!IsRelationshipsPart(key))
            continue;
        const std::string name = NameOf(entry);
        const std::size_t slash = name.rfind('/');
        const std::string folder = name.substr(0, slash + 1 - std::string_view("_rels/").size());
        const std::string file = name.substr(slash + 1);
        owners.push_back(file.size() == std::string_view(".rels").size()
                             ? std::string()
                             : folder + file.substr(0, file.rfind('.')));
    }
    return owners;
}

bool Package::IsFree(std::string_view part) const
{
    return !Has(part) && !Has(RelationshipsPartName(part)) && !taken_.contains(PartKey(part));
}

std::string Package::FreePartName(std::string_view prefix, std::string_view suffix,
                                  std::size_t& number) const
{
    for (;; ++number) {
        std::string name = std::string(prefix) + std::to_string(number) + std::string(suffix);
        if (IsFree(name))
            return name;
    }
}

} // namespace orrery::xlsx
