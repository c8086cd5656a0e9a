#include "engines/builtin/xlsx/look/sheet/sheet_reader.h"

#include "engines/builtin/xlsx/look/cells/cell_reader.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/sheet/condition_reader.h"
#include "engines/builtin/xlsx/look/sheet/merge_reader.h"
#include "engines/builtin/xlsx/look/sheet/page_reader.h"
#include "engines/builtin/xlsx/look/sheet/sparkline_reader.h"
#include "engines/builtin/xlsx/look/sheet/view_reader.h"
#include "engines/builtin/xml/reading.h"

#include <algorithm>
#include <cstddef>

namespace orrery::xlsx {
namespace {

class SheetReader {
public:
    SheetReader(std::string_view xml, std::string_view partName, SheetContext& context)
        : scanner_(xml, partName), context_(context), conditions_(context)
    {
    }

    void Read()
    {
        xml::EnterRoot(scanner_);
        xml::ForEachChild(scanner_, [&] { ReadElement(); });
    }

private:
    void ReadElement()
    {
        const std::string_view name = scanner_.LocalName();
        if (name == "sheetData")
            CellReader(context_).Read(scanner_);
        else if (name == "cols")
            ReadColumns(scanner_, context_);
        else if (name == "mergeCells")
            ReadMerges(scanner_, context_);
        else if (name == "conditionalFormatting")
            conditions_.Read(scanner_);
        else if (name == "sheetViews")
            ReadSheetViews(scanner_, context_);
        else if (name == "sheetPr")
            ReadProperties();
        else if (name == "extLst")
            ReadExtensionList();
        else if (!ReadPageElement(scanner_, context_.look.page))
            ReadOther(name);
    }

    void ReadOther(std::string_view name)
    {
        if (name == "sheetFormatPr")
            ReadSheetFormat(scanner_, context_.look);
        scanner_.SkipElement();
    }

    void ReadProperties()
    {
        xml::ForEachChild(scanner_, [&] {
            if (scanner_.LocalName() == "pageSetUpPr")
                ReadPageProperties(scanner_, context_.look.page);
            scanner_.SkipElement();
        });
    }

    void ReadExtensionList()
    {
        xml::ForEachChild(scanner_, [&] { xml::ForEachChild(scanner_, [&] { ReadExtension(); }); });
    }

    void ReadExtension()
    {
        if (scanner_.LocalName() == "conditionalFormattings")
            conditions_.ReadExtensions(scanner_);
        else if (scanner_.LocalName() == "sparklineGroups")
            ReadSparklines(scanner_, context_);
        else
            scanner_.SkipElement();
    }

    xml::Scanner scanner_;
    SheetContext& context_;
    ConditionReader conditions_;
};

} // namespace

void ReadSheetPart(std::string_view xml, std::string_view partName, SheetContext& context)
{
    // Most cells take more than 40 bytes; the rest of the place is given back.
    constexpr std::size_t kBytesOfCell = 40;
    context.look.cells.reserve(std::min(kMaxCells, xml.size() / kBytesOfCell));
    SheetReader(xml, partName, context).Read();
    if (context.look.cells.size() < context.look.cells.capacity() / 2)
        context.look.cells.shrink_to_fit();
}

} // namespace orrery::xlsx
