#include "engines/builtin/xls/template_sheet.h"

#include <string>

namespace orrery::xls {

TemplateSheet::TemplateSheet(std::string_view stream, Span place, bool isWorksheet)
    : stream_(stream), place_(place), isWorksheet_(isWorksheet), places_(Bytes())
{
}

const std::shared_ptr<const SheetText>& TemplateSheet::Text()
{
    if (!text_)
        text_ = std::make_shared<SheetText>(std::string(Bytes()), place_.begin);
    return text_;
}

const FormulaFacts& TemplateSheet::Facts()
{
    if (!facts_)
        facts_ = ReadFacts(Bytes());
    return *facts_;
}

const DrawingPlaces& TemplateSheet::Drawings()
{
    if (!drawings_)
        drawings_ = FindDrawings(Bytes());
    return *drawings_;
}

const EmbeddedPlaces& TemplateSheet::Embedded()
{
    if (!embedded_)
        embedded_ = FindEmbedded(Bytes());
    return *embedded_;
}

const TablePlaces& TemplateSheet::Tables()
{
    if (!tables_)
        tables_ = FindTables(Bytes());
    return *tables_;
}

} // namespace orrery::xls
