#include "engines/builtin/xlsx/look/workbook_reader.h"

#include "engines/builtin/xlsx/look/cells/element_text.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"

namespace orrery::xlsx {
namespace {

using book::SheetState;

constexpr std::size_t kMaxSheets = 65536;
constexpr std::size_t kMaxNames = 65536;

constexpr Words<SheetState, 3> kStates = {{
    {"visible", SheetState::Visible},
    {"hidden", SheetState::Hidden},
    {"veryHidden", SheetState::VeryHidden},
}};

/// r:id, whatever the prefix is.
std::string ReadRelationshipId(const xml::Scanner& scanner)
{
    for (const xml::ScannedAttribute& attribute : scanner.Attributes()) {
        if (attribute.name.ends_with(":id"))
            return xml::DecodeAttribute(attribute.raw);
    }
    return {};
}

class WorkbookReader {
public:
    WorkbookReader(std::string_view xml, std::string_view partName) : scanner_(xml, partName) {}

    WorkbookEntries Read()
    {
        xml::EnterRoot(scanner_);
        ReadChildren();
        if (entries_.look.activeSheet >= entries_.look.sheets.size())
            entries_.look.activeSheet = 0;
        return std::move(entries_);
    }

private:
    /// Alternatives may be wrapped around an element.
    void ReadChildren()
    {
        xml::ForEachChild(scanner_, [&] {
            const std::string_view name = scanner_.LocalName();
            if (name == "sheets")
                ReadSheets();
            else if (name == "definedNames")
                ReadNames();
            else if (name == "bookViews")
                ReadViews();
            else if (name == "AlternateContent" || name == "Choice" || name == "Fallback")
                ReadChildren();
            else
                ReadProperties(name);
        });
    }

    void ReadProperties(std::string_view name)
    {
        if (name == "workbookPr" && FlagAttribute(scanner_, "date1904", false))
            entries_.look.dateSystem = book::DateSystem::From1904;
        scanner_.SkipElement();
    }

    void ReadSheets()
    {
        xml::ForEachChild(scanner_, [&] {
            if (scanner_.LocalName() == "sheet" && entries_.look.sheets.size() < kMaxSheets) {
                book::SheetSummary sheet;
                sheet.name = scanner_.AttributeText("name").value_or("");
                sheet.state =
                    WordAttribute(scanner_, "state", kStates).value_or(SheetState::Visible);
                entries_.look.sheets.push_back(std::move(sheet));
                entries_.relationshipIds.push_back(ReadRelationshipId(scanner_));
            }
            scanner_.SkipElement();
        });
    }

    void ReadNames()
    {
        xml::ForEachChild(scanner_, [&] {
            if (scanner_.LocalName() != "definedName" || entries_.look.names.size() >= kMaxNames)
                return scanner_.SkipElement();
            book::DefinedName name;
            name.name = scanner_.AttributeText("name").value_or("");
            name.sheet = IndexAttribute(scanner_, "localSheetId");
            name.formula = ReadFormulaText(scanner_);
            if (!name.name.empty())
                entries_.look.names.push_back(std::move(name));
        });
    }

    void ReadViews()
    {
        bool isFirst = true;
        xml::ForEachChild(scanner_, [&] {
            if (isFirst)
                entries_.look.activeSheet = IndexAttribute(scanner_, "activeTab").value_or(0);
            isFirst = false;
            scanner_.SkipElement();
        });
    }

    xml::Scanner scanner_;
    WorkbookEntries entries_;
};

} // namespace

WorkbookEntries ReadWorkbookPart(std::string_view xml, std::string_view partName)
{
    return WorkbookReader(xml, partName).Read();
}

} // namespace orrery::xlsx
