#include "engines/builtin/xlsx/look/style/table_parts.h"

#include "engines/builtin/common/words.h"

namespace orrery::xlsx {
namespace {

using book::TablePart;

constexpr builtin::Words<TablePart, 13> kParts = {{
    {"wholeTable", TablePart::WholeTable},
    {"firstColumnStripe", TablePart::FirstColumnStripe},
    {"secondColumnStripe", TablePart::SecondColumnStripe},
    {"firstRowStripe", TablePart::FirstRowStripe},
    {"secondRowStripe", TablePart::SecondRowStripe},
    {"lastColumn", TablePart::LastColumn},
    {"firstColumn", TablePart::FirstColumn},
    {"headerRow", TablePart::HeaderRow},
    {"totalRow", TablePart::TotalRow},
    {"firstHeaderCell", TablePart::FirstHeaderCell},
    {"lastHeaderCell", TablePart::LastHeaderCell},
    {"firstTotalCell", TablePart::FirstTotalCell},
    {"lastTotalCell", TablePart::LastTotalCell},
}};

} // namespace

std::optional<TablePart> TablePartOf(std::string_view type)
{
    return builtin::ValueOfWord(kParts, type);
}

std::int32_t* StripeOf(book::TableStyle& style, TablePart part)
{
    switch (part) {
    case TablePart::FirstRowStripe:
        return &style.rowStripe[0];
    case TablePart::SecondRowStripe:
        return &style.rowStripe[1];
    case TablePart::FirstColumnStripe:
        return &style.columnStripe[0];
    case TablePart::SecondColumnStripe:
        return &style.columnStripe[1];
    default:
        return nullptr;
    }
}

} // namespace orrery::xlsx
