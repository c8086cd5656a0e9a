#include "look/display/sheet_display.h"

#include "look/display/style_layers.h"

#include <utility>
#include <variant>

namespace orrery::look {
namespace {

using book::CellContent;
using book::HorizontalAlignment;

/// Where a value stands that has no alignment of its own. A number in the format of texts is one.
HorizontalAlignment GeneralAlignment(const CellContent& content, bool isTextFormat)
{
    if (std::holds_alternative<double>(content))
        return isTextFormat ? HorizontalAlignment::General : HorizontalAlignment::Right;
    if (std::holds_alternative<bool>(content) || std::holds_alternative<book::CellError>(content))
        return HorizontalAlignment::Center;
    return HorizontalAlignment::General; // a text's direction decides
}

/// A conditional format wins over the fonts within a text and over the number format's colour.
void LayOverText(CellDisplay& display, const book::PartialStyle& conditional)
{
    if (conditional.fontColor)
        display.color = conditional.fontColor;
    for (book::TextRun& run : display.runs)
        LayOver(run.font, conditional);
}

} // namespace

SheetDisplay::SheetDisplay(book::WorkbookView& view, std::size_t sheet, Evaluator& evaluator)
    : view_(view), sheet_(sheet), look_(view.Sheet(sheet)), evaluator_(evaluator),
      conditions_(evaluator, look_, sheet)
{
}

CellDisplay SheetDisplay::Display(book::CellAddress address)
{
    CellDisplay display;
    const book::Cell* const cell = look_.FindCell(address);
    display.style = StyleOf(cell != nullptr ? cell->style : look_.StyleAt(address));
    if (const auto table = TableStyleAt(look_, address))
        LayUnder(display.style.Edit(), *table);
    const book::PartialStyle conditional = ApplyConditions(address, display);
    if (cell == nullptr) {
        display.horizontal = display.style->alignment.horizontal;
        return display;
    }
    if (look_.view.showsFormulas && cell->formula >= 0)
        ShowFormula(*cell, display);
    else
        ShowValue(ValueOf(*cell, display), cell, display);
    LayOverText(display, conditional);
    return display;
}

const SharedStyle& SheetDisplay::StyleOf(std::uint32_t index)
{
    const auto [found, isNew] = styles_.try_emplace(index);
    if (isNew)
        found->second = SharedStyle(look_.styles[index]);
    return found->second;
}

CellContent SheetDisplay::ValueOf(const book::Cell& cell, CellDisplay& display)
{
    const EvaluatedCell evaluated = evaluator_.ValueOf(sheet_, cell.address);
    if (evaluated.source != EvaluatedCell::Source::NotComputed)
        return evaluated.value;
    display.isComputed = false;
    notComputed_.insert(cell.address);
    return {};
}

void SheetDisplay::ShowFormula(const book::Cell& cell, CellDisplay& display) const
{
    display.text = '=' + look_.formulas[static_cast<std::size_t>(cell.formula)].text;
    const auto own = display.style->alignment.horizontal;
    display.horizontal = own == HorizontalAlignment::General ? HorizontalAlignment::Left : own;
}

void SheetDisplay::ShowValue(const CellContent& content, const book::Cell* cell,
                             CellDisplay& display)
{
    const std::string& code = display.style->numberFormat;
    display.horizontal = display.style->alignment.horizontal;
    if (display.horizontal == HorizontalAlignment::General)
        display.horizontal = GeneralAlignment(content, NumberFormatOf(code).IsText());
    const auto* const number = std::get_if<double>(&content);
    if (number != nullptr && *number == 0 && !look_.view.showsZeros)
        return;
    FormattedValue formatted = Format(content, code);
    display.text = std::move(formatted.text);
    display.color = formatted.color;
    display.fillAt = formatted.fillAt;
    display.fillCharacter = std::move(formatted.fillCharacter);
    display.isNumber = number != nullptr;
    display.number = number != nullptr ? *number : 0;
    display.isGeneralNumber = number != nullptr && formatted.isGeneral;
    display.isTooWide = formatted.isTooWide;
    const auto* const text = std::get_if<std::string>(&content);
    if (text != nullptr && cell->richText >= 0 && cell->formula < 0)
        ShowRuns(*text, look_.richTexts[static_cast<std::size_t>(cell->richText)], display);
}

/// The runs of a text stand where the number format puts the text: "x "@.
void SheetDisplay::ShowRuns(const std::string& text, const std::vector<book::TextRun>& runs,
                            CellDisplay& display) const
{
    const std::size_t begin = display.text.find(text);
    if (begin == std::string::npos)
        return;
    display.runs = runs;
    for (book::TextRun& run : display.runs)
        run.begin += begin;
}

book::PartialStyle SheetDisplay::ApplyConditions(book::CellAddress cell, CellDisplay& display)
{
    const ConditionDisplay conditions = conditions_.Display(cell);
    if (conditions.style != book::PartialStyle{})
        LayOver(display.style.Edit(), conditions.style);
    if (conditions.scaleColor)
        display.style.Edit().fill = {book::FillPattern::Solid, conditions.scaleColor, {}, {}};
    display.bar = conditions.bar;
    display.icon = conditions.icon;
    display.showsValue = conditions.showsValue;
    return conditions.style;
}

FormattedValue SheetDisplay::Format(const CellContent& content, const std::string& code)
{
    return NumberFormatOf(code).Format(content, view_.Workbook().dateSystem);
}

const NumberFormat& SheetDisplay::NumberFormatOf(const std::string& code)
{
    return formats_.try_emplace(code, code).first->second;
}

} // namespace orrery::look
