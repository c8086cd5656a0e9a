#include "engines/builtin/xlsx/identities.h"

#include "book/error.h"
#include "engines/builtin/xlsx/package/part_errors.h"
#include "engines/builtin/xml/attribute_patch.h"
#include "engines/builtin/xml/reading.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <limits>
#include <optional>

namespace orrery::xlsx {
namespace {

constexpr std::uint32_t kHighestId = std::numeric_limits<std::int32_t>::max();

enum class PartKind { Other, Table, Slicers, ThreadedComments, Comments, Drawing };

// Content types of all families end in the same word.
PartKind KindOf(std::string_view type)
{
    if (type.ends_with(".table+xml"))
        return PartKind::Table;
    if (type.ends_with(".slicer+xml") || type.ends_with(".timeline+xml"))
        return PartKind::Slicers;
    if (type.ends_with(".threadedcomments+xml"))
        return PartKind::ThreadedComments;
    if (type.ends_with(".comments+xml"))
        return PartKind::Comments;
    if (type.ends_with(".drawing+xml"))
        return PartKind::Drawing;
    return PartKind::Other;
}

bool IsSlicer(std::string_view localName)
{
    return localName == "slicer" || localName == "timeline" || localName == "timeslicer";
}

template <typename Visit>
void ForEachElement(std::string_view xml, std::string_view partName, Visit visit)
{
    xml::Scanner scanner(xml, partName);
    for (auto token = scanner.Next(); token != xml::Scanner::Token::End; token = scanner.Next()) {
        if (token == xml::Scanner::Token::StartTag)
            visit(scanner);
    }
}

/// A GUID of the same form that depends only on the old one and the copy's number, so that the same
/// run gives the same bytes.
std::string DerivedGuid(std::string_view guid, std::uint32_t copy)
{
    std::array<std::uint64_t, 2> hash = {0xcbf29ce484222325U + copy, 0x84222325cbf29ce4U ^ copy};
    for (const char c : guid) {
        hash[0] = (hash[0] ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
        hash[1] = (hash[1] + static_cast<unsigned char>(c)) * 0x9e3779b97f4a7c15U;
    }
    std::array<char, 40> text{};
    // Version 4, variant 1: what readers that check expect of a random GUID.
    std::snprintf(text.data(), text.size(), "{%08X-%04X-4%03X-%04X-%012llX}",
                  static_cast<unsigned>(hash[0] >> 32), static_cast<unsigned>(hash[0] & 0xFFFF),
                  static_cast<unsigned>((hash[0] >> 16) & 0xFFF),
                  static_cast<unsigned>(0x8000 | ((hash[1] >> 48) & 0x3FFF)),
                  static_cast<unsigned long long>(hash[1] & 0xFFFFFFFFFFFFU));
    return text.data();
}

void RenameTable(TextPatch& patch, std::string_view xml, const xml::Scanner& element,
                 const CopyIdentity& identity)
{
    const auto name = element.AttributeText("displayName");
    if (element.Depth() != 1 || !name || !identity.tables.contains(*name))
        return;
    xml::SetAttribute(patch, xml, element.Begin(), "id",
                      std::to_string(identity.tableIds.at(*name)));
    xml::SetAttribute(patch, xml, element.Begin(), "displayName", identity.tables.at(*name));
    xml::SetAttribute(patch, xml, element.Begin(), "name", identity.tables.at(*name));
}

void RenameSlicer(TextPatch& patch, std::string_view xml, const xml::Scanner& element,
                  const CopyIdentity& identity)
{
    const auto name = element.AttributeText("name");
    if (!IsSlicer(element.LocalName()) || !name)
        return;
    if (const auto found = identity.slicers.find(*name); found != identity.slicers.end())
        xml::SetAttribute(patch, xml, element.Begin(), "name", found->second);
}

// A comment's author refers to its thread ("tc={...}"), a reply to its parent. The GUIDs are in
// element content and in attributes of several names, so they are replaced wherever they are.
TextPatch ReplaceGuids(std::string_view xml, const CopyIdentity& identity)
{
    TextPatch patch;
    for (auto at = xml.find('{'); at != std::string_view::npos; at = xml.find('{', at + 1)) {
        constexpr std::size_t kGuidLength = 38;
        const auto found = identity.guids.find(std::string(xml.substr(at, kGuidLength)));
        if (found != identity.guids.end())
            patch.Replace(at, at + kGuidLength, found->second);
    }
    return patch;
}

/// What a part declares: the name of a table or slicer, or the GUID of a threaded comment.
struct Declaration {
    PartKind kind = PartKind::Other;
    std::string name;
    std::uint32_t tableId = 0;
};

std::vector<Declaration> DeclarationsIn(const Package& package, const std::string& part,
                                        PartKind kind)
{
    std::vector<Declaration> declared;
    if (kind != PartKind::Table && kind != PartKind::Slicers && kind != PartKind::ThreadedComments)
        return declared;
    const auto text = [](const xml::Scanner& element, std::string_view name) {
        return element.AttributeText(name).value_or("");
    };
    ForEachElement(*package.ReadXml(part), part, [&](const xml::Scanner& element) {
        if (kind == PartKind::Table && element.Depth() == 1) {
            const auto id = xml::ReadDigits(text(element, "id")).value_or(0);
            declared.push_back(
                {kind, text(element, "displayName"), static_cast<std::uint32_t>(id)});
        }
        else if (kind == PartKind::Slicers && IsSlicer(element.LocalName())) {
            declared.push_back({kind, text(element, "name"), 0});
        }
        else if (kind == PartKind::ThreadedComments && element.LocalName() == "threadedComment") {
            declared.push_back({kind, text(element, "id"), 0});
        }
    });
    return declared;
}

/// Formulas refer to tables by name alone.
void CheckTableNames(const std::vector<Declaration>& declared)
{
    std::unordered_set<std::string> names;
    for (const Declaration& one : declared) {
        if (one.kind == PartKind::Table && !names.insert(util::ToUpperAscii(one.name)).second) {
            throw util::Error(book::ErrorKind::DamagedWorkbook, {},
                              "two tables have the name \"" + one.name + "\"");
        }
    }
}

} // namespace

Identities::Identities(const Package& package, const std::vector<std::string>& definedNames)
{
    for (const auto& name : definedNames)
        taken_.insert(util::ToUpperAscii(name));
    for (const auto& part : package.PartNames()) {
        // Some readers take "/xl/./tables/table1.xml" for the part without the ".".
        const auto kind = KindOf(package.TypeOf(ResolveTarget("", part)));
        if (kind != PartKind::Table && kind != PartKind::Slicers)
            continue;
        UnlessDamaged([&] {
            for (const Declaration& declared : DeclarationsIn(package, part, kind)) {
                taken_.insert(util::ToUpperAscii(declared.name));
                if (declared.tableId <= kHighestId) // later ids must be in range, too
                    lastTableId_ = std::max(lastTableId_, declared.tableId);
            }
        });
    }
}

std::string Identities::FreeName(const std::string& name)
{
    auto& number = numbers_.try_emplace(util::ToUpperAscii(name), 2).first->second;
    while (true) {
        auto candidate = name + "_" + std::to_string(number++);
        if (taken_.insert(util::ToUpperAscii(candidate)).second)
            return candidate;
    }
}

CopyIdentity Identities::ForCopy(const Package& package, const std::vector<std::string>& ownedParts)
{
    std::vector<Declaration> declared;
    for (const auto& part : ownedParts) {
        auto found = DeclarationsIn(package, part, KindOf(package.TypeOf(part)));
        std::move(found.begin(), found.end(), std::back_inserter(declared));
    }
    CheckTableNames(declared);
    CopyIdentity identity;
    ++copies_;
    for (const auto& [kind, name, tableId] : declared) {
        if (kind == PartKind::Table) {
            const auto model = name.empty() ? std::string("Table") : name;
            identity.tables.emplace(model, FreeName(model));
            identity.tableIds.emplace(model, ++lastTableId_);
        }
        else if (kind == PartKind::Slicers) {
            identity.slicers.emplace(name, FreeName(name));
        }
        else {
            identity.guids.emplace(name, DerivedGuid(name, copies_));
        }
    }
    return identity;
}

bool HasIdentity(std::string_view type)
{
    return KindOf(type) != PartKind::Other;
}

TextPatch ApplyIdentity(std::string_view xml, std::string_view partName, std::string_view type,
                        const CopyIdentity& identity)
{
    TextPatch patch;
    const auto kind = KindOf(type);
    if (kind == PartKind::ThreadedComments || kind == PartKind::Comments)
        return ReplaceGuids(xml, identity);
    if (kind == PartKind::Other)
        return patch;
    ForEachElement(xml, partName, [&](const xml::Scanner& element) {
        if (kind == PartKind::Table)
            RenameTable(patch, xml, element, identity);
        else
            RenameSlicer(patch, xml, element, identity);
    });
    return patch;
}

} // namespace orrery::xlsx
