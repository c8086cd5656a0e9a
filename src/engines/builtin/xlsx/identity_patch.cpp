#include "engines/builtin/xlsx/identity_patch.h"

#include "engines/builtin/xlsx/part_kinds.h"
#include "engines/builtin/xlsx/slicer_caches.h"
#include "engines/builtin/xml/attribute_patch.h"
#include "engines/builtin/xml/reading.h"

#include <algorithm>
#include <array>
#include <set>

namespace orrery::xlsx {
namespace {

/// An attribute whose value identifies something in parts of a kind, or refers to such a value.
struct IdPlace {
    PartKind kind;
    std::string_view element; // local name
    std::string_view attribute;
};
constexpr std::array<IdPlace, 8> kIdPlaces = {{
    {PartKind::ThreadedComments, "threadedComment", "id"},
    {PartKind::ThreadedComments, "threadedComment", "parentId"},
    {PartKind::ThreadedComments, "mention", "mentionId"},
    {PartKind::NamedViews, "namedSheetView", "id"},
    {PartKind::NamedViews, "nsvFilter", "filterId"}, // the "xr:uid" of a filter
    {PartKind::NamedViews, "columnFilter", "id"},    // that of a table's column
    {PartKind::NamedViews, "sortRule", "id"},
    {PartKind::AddIn, "webextension", "id"},
}};

bool IsIdPlace(PartKind kind, std::string_view element, std::string_view attribute)
{
    return attribute.ends_with(":uid") ||
           std::any_of(kIdPlaces.begin(), kIdPlaces.end(), [&](const IdPlace& place) {
               return place.kind == kind && place.element == element &&
                      place.attribute == attribute;
           });
}

/// Gives the patches of one copied part.
class PartPatcher {
public:
    PartPatcher(std::string_view xml, PartKind kind, const CopyIdentity& identity)
        : xml_(xml), kind_(kind), identity_(identity)
    {
    }

    void Visit(const xml::Scanner& element)
    {
        PatchIds(element);
        if (kind_ == PartKind::Table)
            RenameTable(element);
        else if (kind_ == PartKind::Slicers || kind_ == PartKind::Drawing)
            RenameSlicer(element);
        else if (kind_ == PartKind::NamedViews)
            PatchTableId(element);
        else if (kind_ == PartKind::AddIn)
            PatchBinding(element);
    }

    TextPatch Take() { return std::move(patch_); }

private:
    void PatchIds(const xml::Scanner& element)
    {
        for (const xml::ScannedAttribute& attribute : element.Attributes()) {
            if (!IsIdPlace(kind_, element.LocalName(), attribute.name))
                continue;
            const auto id = xml::DecodeAttribute(attribute.raw);
            if (kind_ == PartKind::AddIn || IsGuid(id)) // the ids of add-ins are any texts
                Set(attribute, OwnId(id, identity_.number));
        }
    }

    void RenameTable(const xml::Scanner& element)
    {
        const auto name = element.AttributeText("displayName");
        if (element.Depth() != 1 || !name || !identity_.tables.contains(*name))
            return;
        SetAttribute(element, "id", std::to_string(identity_.tableIds.at(*name)));
        SetAttribute(element, "displayName", identity_.tables.at(*name));
        SetAttribute(element, "name", identity_.tables.at(*name));
    }

    void RenameSlicer(const xml::Scanner& element)
    {
        const auto name = element.AttributeText("name");
        if (!IsSlicer(element.LocalName()) || !name)
            return;
        const auto found = identity_.slicers.find(*name);
        if (found != identity_.slicers.end())
            SetAttribute(element, "name", found->second);
        if (const auto cache = element.Attribute("cache")) { // in its own part
            const auto own = identity_.names.find(xml::DecodeAttribute(cache->raw));
            if (own != identity_.names.end())
                Set(*cache, own->second);
        }
    }

    /// The table of a filter; 0 for the sheet's own. [MS-XLSX] 2.6.212
    void PatchTableId(const xml::Scanner& element)
    {
        const auto table = element.Attribute("tableId");
        const auto id = xml::ReadDigits(table);
        if (element.LocalName() != "nsvFilter" || !table || !id)
            return;
        const auto found = identity_.newTableIds.find(static_cast<std::uint32_t>(*id));
        if (found != identity_.newTableIds.end())
            Set(*table, std::to_string(found->second));
    }

    void PatchBinding(const xml::Scanner& element)
    {
        const auto id = element.Attribute("appref");
        if (element.LocalName() != "binding" || !id)
            return;
        const auto found = identity_.bindings.find(xml::DecodeAttribute(id->raw));
        if (found != identity_.bindings.end())
            Set(*id, found->second);
    }

    void SetAttribute(const xml::Scanner& element, std::string_view name, const std::string& value)
    {
        xml::SetAttribute(patch_, xml_, element.Begin(), name, value);
    }

    void Set(const xml::ScannedAttribute& attribute, const std::string& value)
    {
        patch_.Replace(attribute.valueBegin, attribute.end - 1,
                       xml::EncodeAttributeAt(xml_, attribute.valueBegin, value));
    }

    std::string_view xml_;
    PartKind kind_;
    const CopyIdentity& identity_;
    TextPatch patch_;
};

/// The comment that stands for a thread has it as its author: "tc={...}".
TextPatch RenameThreads(std::string_view xml, const CopyIdentity& identity)
{
    constexpr std::string_view kThread = "tc={";
    TextPatch patch;
    for (auto at = xml.find(kThread); at != xml.npos; at = xml.find(kThread, at + 1)) {
        const std::size_t begin = at + kThread.size() - 1;
        const std::string_view id = xml.substr(begin, kGuidLength);
        if (IsGuid(id))
            patch.Replace(begin, begin + kGuidLength, OwnId(id, identity.number));
    }
    return patch;
}

/// Removes what maps a table to an element of the workbook's XML maps, which stays mapped once.
TextPatch RemoveXmlMapping(std::string_view xml, std::string_view partName)
{
    TextPatch patch;
    bool isMapped = false; // the table as a whole
    const auto remove = [&](const xml::Scanner& element, std::string_view name) {
        if (const auto attribute = element.Attribute(name))
            patch.Remove(attribute->begin, attribute->end);
    };
    xml::Scanner scanner(xml, partName);
    for (auto token = scanner.Next(); token != xml::Scanner::Token::End; token = scanner.Next()) {
        if (token != xml::Scanner::Token::StartTag)
            continue;
        const std::string_view name = scanner.LocalName();
        if (scanner.Depth() == 1) {
            isMapped = scanner.AttributeText("tableType") == "xml";
            for (const std::string_view attribute : {"tableType", "connectionId"}) {
                if (isMapped)
                    remove(scanner, attribute);
            }
        }
        else if (name == "tableColumn" && isMapped) {
            remove(scanner, "uniqueName");
        }
        else if (name == "xmlColumnPr") {
            const std::size_t begin = scanner.Begin();
            scanner.SkipElement();
            patch.Remove(begin, scanner.End());
        }
    }
    return patch;
}

/// A range to which an add-in is bound that is not the sheet's own stays the model's alone.
void PatchBindings(TextPatch& patch, const SheetText& sheet, const CopyIdentity& identity)
{
    const auto& bindings = sheet.Identities().bindings;
    std::set<std::size_t> kept; // where extensions begin that the copy has, too
    for (const auto& binding : bindings) {
        if (const auto own = identity.bindings.find(binding.id); own != identity.bindings.end()) {
            kept.insert(binding.extension.begin);
            patch.Replace(binding.value.begin, binding.value.end,
                          xml::EncodeAttributeAt(sheet.Xml(), binding.value.begin, own->second));
        }
    }
    for (const auto& [id, value, element, extension] : bindings) {
        if (identity.bindings.contains(id))
            continue;
        const bool wholly = extension.end != 0 && !kept.contains(extension.begin);
        const auto& range = wholly ? extension : element;
        patch.Remove(range.begin, range.end);
    }
}

} // namespace

TextPatch ApplyIdentity(std::string_view text, std::string_view partName, std::string_view type,
                        const CopyIdentity& identity)
{
    const PartKind kind = KindOf(type);
    if (kind == PartKind::Other)
        return {};
    if (kind == PartKind::VmlDrawing) {
        const auto blocks = identity.drawings.find(PartKey(partName));
        return blocks != identity.drawings.end() ? MoveShapes(text, blocks->second) : TextPatch();
    }
    PartPatcher patcher(text, kind, identity);
    xml::Scanner scanner(text, partName);
    for (auto token = scanner.Next(); token != xml::Scanner::Token::End; token = scanner.Next()) {
        if (token == xml::Scanner::Token::StartTag)
            patcher.Visit(scanner);
    }
    auto patch = patcher.Take();
    if (kind == PartKind::Table)
        patch.Add(RemoveXmlMapping(text, partName));
    else if (kind == PartKind::SlicerCache)
        patch.Add(PatchSlicerCache(text, partName, identity));
    else if (kind == PartKind::Comments)
        patch.Add(RenameThreads(text, identity));
    else if (kind == PartKind::Drawing)
        patch.Add(MoveShapesOfDrawing(text, partName, identity.shapes));
    return patch;
}

TextPatch ApplyIdentity(const SheetText& sheet, const CopyIdentity& identity)
{
    const std::string_view xml = sheet.Xml();
    TextPatch patch;
    for (const auto& [begin, end] : sheet.Identities().uids) {
        const auto uid = xml.substr(begin, end - begin);
        if (IsGuid(uid))
            patch.Replace(begin, end, OwnId(uid, identity.number));
    }
    for (const auto& [begin, end] : sheet.Identities().shapes) {
        const auto shape = xml::ReadDigits(xml.substr(begin, end - begin));
        if (const auto moved = shape ? MoveShape(*shape, identity.shapes) : std::nullopt)
            patch.Replace(begin, end, std::to_string(*moved));
    }
    PatchBindings(patch, sheet, identity);
    return patch;
}

} // namespace orrery::xlsx
