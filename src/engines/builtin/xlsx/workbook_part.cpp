#include "engines/builtin/xlsx/workbook_part.h"

#include "engines/builtin/xlsx/package/part_names.h"

#include "book/error.h"
#include "engines/builtin/xml/attribute_patch.h"
#include "engines/builtin/xml/reading.h"
#include "util/error.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <map>

namespace orrery::xlsx {
namespace {

using Token = xml::Scanner::Token;

// The elements of the workbook after which a missing <calcPr> may have to go.
constexpr std::array<std::string_view, 4> kBeforeCalculation = {
    "sheets", "functionGroups", "externalReferences", "definedNames"};

/// The attribute r:id, whatever the prefix of the relationships' namespace.
std::optional<xml::ScannedAttribute> RelationshipAttribute(const xml::Scanner& element)
{
    for (const xml::ScannedAttribute& attribute : element.Attributes()) {
        const std::size_t colon = attribute.name.find(':');
        if (colon != attribute.name.npos && attribute.name.substr(colon + 1) == "id" &&
            element.NamespaceUri(attribute.name.substr(0, colon)).ends_with("/relationships"))
            return attribute;
    }
    return std::nullopt;
}

/// Extensions list the caches of slicers and timelines.
bool IsListEntry(std::string_view localName)
{
    return localName == "slicerCache" || localName == "timelineCacheRef";
}

} // namespace

class WorkbookPart::Reader {
public:
    explicit Reader(WorkbookPart& part) : part_(part), scanner_(*part.xml_, part.partName_) {}

    void Read()
    {
        xml::EnterRoot(scanner_);
        if (!scanner_.Prefix().empty())
            part_.prefix_ = std::string(scanner_.Prefix()) + ':';
        for (auto token = scanner_.Next(); token != Token::End; token = scanner_.Next()) {
            if (token == Token::StartTag && IsMainNamespace(scanner_.NamespaceUri())) {
                ReadElement();
            }
            else if (token == Token::StartTag && IsListEntry(scanner_.LocalName())) {
                ReadListEntry();
            }
            else if (token == Token::EndTag) {
                EndElement();
            }
        }
        if (part_.sheets_.empty())
            Fail("no sheets");
        if (part_.activeSheet_ >= part_.sheets_.size())
            part_.activeSheet_ = 0;
    }

private:
    void ReadElement()
    {
        const std::string_view name = scanner_.LocalName();
        if (name == "sheet" && listDepth_ != 0) {
            ReadSheet();
        }
        else if (name == "definedName") {
            part_.names_.push_back(ReadDefinedName(scanner_));
        }
        else if (name == "workbookView") {
            ReadView();
        }
        else if (name == "calcPr") {
            part_.calculations_.push_back(scanner_.Begin());
        }
        else if (name == "workbookProtection") {
            part_.structureProtected_ = xml::IsTrue(scanner_.Attribute("lockStructure"));
        }
        else if (std::find(kBeforeCalculation.begin(), kBeforeCalculation.end(), name) !=
                 kBeforeCalculation.end()) {
            beforeCalculation_ = true;
            if (name == "sheets" && listDepth_ == 0)
                listDepth_ = scanner_.Depth();
        }
    }

    void ReadSheet()
    {
        SheetEntry entry;
        const auto name = scanner_.AttributeText("name");
        if (!name)
            Fail("a sheet without a name");
        entry.Name = *name;
        entry.SheetId =
            static_cast<std::uint32_t>(xml::ReadDigits(scanner_.Attribute("sheetId")).value_or(0));
        if (const auto id = RelationshipAttribute(scanner_)) {
            entry.RelationshipId = xml::DecodeAttribute(id->raw);
            entry.relationshipAttribute = id->name;
        }
        entry.begin = scanner_.Begin();
        scanner_.SkipElement();
        entry.end = scanner_.End();
        part_.sheets_.push_back(std::move(entry));
    }

    void ReadListEntry()
    {
        const auto id = RelationshipAttribute(scanner_);
        if (!id)
            return;
        ListEntry entry{xml::DecodeAttribute(id->raw), std::string(id->name), scanner_.Begin(), 0};
        scanner_.SkipElement();
        entry.end = scanner_.End();
        part_.lists_.push_back(std::move(entry));
    }

    void ReadView()
    {
        if (part_.views_.empty())
            part_.activeSheet_ = xml::ReadDigits(scanner_.Attribute("activeTab")).value_or(0);
        part_.views_.push_back(scanner_.Begin());
    }

    /// After a top-level element, which may wrap alternatives, others may be inserted.
    void EndElement()
    {
        if (scanner_.Depth() < listDepth_)
            listDepth_ = 0;
        if (scanner_.Depth() != 1)
            return;
        if (beforeCalculation_)
            part_.calculationPlace_ = scanner_.End();
        beforeCalculation_ = false;
    }

    [[noreturn]] void Fail(std::string_view what) const
    {
        throw util::Error(book::ErrorKind::DamagedWorkbook, {},
                          part_.partName_ + ": " + std::string(what));
    }

    WorkbookPart& part_;
    xml::Scanner scanner_;
    bool beforeCalculation_ = false; // since the last end of a top-level element
    std::size_t listDepth_ = 0;      // of the list of sheets; 0 outside it
};

WorkbookPart::WorkbookPart(PartText xml, std::string partName)
    : xml_(std::move(xml)), partName_(std::move(partName))
{
    Reader(*this).Read();
}

std::string WorkbookPart::ToXml(const std::vector<SavedSheet>& sheets, bool recalculate,
                                const SheetNames& workbookNames, const TableNames& workbookTables,
                                const std::function<SheetNames(std::size_t)>& namesFor,
                                const std::function<TableNames(std::size_t)>& tablesFor) const
{
    TextPatch patch;
    PatchSheets(patch, sheets);
    PatchLists(patch, sheets);
    patch.Add(PatchDefinedNames(*xml_, names_, sheets,
                                {workbookNames, workbookTables, namesFor, tablesFor}));
    PatchViews(patch, sheets);
    if (recalculate)
        PatchCalculation(patch);
    return patch.Apply(*xml_);
}

void WorkbookPart::PatchSheets(TextPatch& patch, const std::vector<SavedSheet>& sheets) const
{
    std::size_t place = sheets_.front().begin; // for the next copies
    for (const SavedSheet& sheet : sheets) {
        assert(sheet.Origin < sheets_.size());
        const SheetEntry& entry = sheets_[sheet.Origin];
        if (sheet.IsCopy) {
            patch.Insert(place, CopiedEntry(entry, sheet));
            continue;
        }
        if (sheet.Name != entry.Name)
            xml::SetAttribute(patch, *xml_, entry.begin, "name", sheet.Name);
        place = entry.end;
    }
}

std::string WorkbookPart::CopiedEntry(const SheetEntry& entry, const SavedSheet& copy) const
{
    const std::string_view element =
        std::string_view(*xml_).substr(entry.begin, entry.end - entry.begin);
    TextPatch patch;
    xml::SetAttribute(patch, element, 0, "name", copy.Name);
    xml::SetAttribute(patch, element, 0, "sheetId", std::to_string(copy.SheetId));
    if (!entry.relationshipAttribute.empty())
        xml::SetAttribute(patch, element, 0, entry.relationshipAttribute, copy.RelationshipId);
    return patch.Apply(element);
}

void WorkbookPart::PatchLists(TextPatch& patch, const std::vector<SavedSheet>& sheets) const
{
    for (const SavedSheet& sheet : sheets) {
        if (sheet.OfWorkbook.empty())
            continue;
        const std::map<std::string_view, std::string_view> own(sheet.OfWorkbook.begin(),
                                                               sheet.OfWorkbook.end());
        for (const ListEntry& entry : lists_) {
            const auto found = own.find(entry.relationshipId);
            if (found == own.end())
                continue;
            const auto element =
                std::string_view(*xml_).substr(entry.begin, entry.end - entry.begin);
            TextPatch copy;
            xml::SetAttribute(copy, element, 0, entry.relationshipAttribute, found->second);
            patch.Insert(entry.end, copy.Apply(element));
        }
    }
}

void WorkbookPart::PatchViews(TextPatch& patch, const std::vector<SavedSheet>& sheets) const
{
    for (const std::size_t view : views_) {
        xml::Scanner scanner(std::string_view(*xml_).substr(view));
        scanner.Next();
        for (const std::string_view attribute : {"activeTab", "firstSheet"}) {
            const std::size_t origin = xml::ReadDigits(scanner.Attribute(attribute)).value_or(0);
            const std::size_t position = PositionOfOriginal(sheets, origin);
            if (position != origin && position < sheets.size())
                xml::SetAttribute(patch, *xml_, view, attribute, std::to_string(position));
        }
    }
}

void WorkbookPart::PatchCalculation(TextPatch& patch) const
{
    constexpr std::string_view kOnLoad = "fullCalcOnLoad";
    for (const std::size_t element : calculations_)
        xml::SetAttribute(patch, *xml_, element, kOnLoad, "1");
    if (calculations_.empty()) {
        patch.Insert(calculationPlace_,
                     "<" + prefix_ + "calcPr " + std::string(kOnLoad) + "=\"1\"/>");
    }
}

} // namespace orrery::xlsx
