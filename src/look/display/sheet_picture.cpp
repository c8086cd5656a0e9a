#include "look/display/sheet_picture.h"

#include "look/chart/paint_chart.h"
#include "look/evaluate/values/dates.h"
#include "look/layout/lay_out.h"
#include "look/layout/pages/pages.h"
#include "look/painter/painter.h"
#include "look/picture/picture.h"

#include <optional>
#include <variant>

namespace orrery::look {

/// The values of a chart's or a sparkline's cells as they are now.
class ComputedValues : public ChartValues {
public:
    ComputedValues(Evaluator& evaluator, SheetDisplay& display, std::size_t sheet)
        : evaluator_(evaluator), display_(display), sheet_(sheet)
    {
    }

    std::vector<book::CellContent> Values(const book::ChartData& data) const override
    {
        const auto computed = evaluator_.ValuesOf(data.formula, sheet_);
        return computed ? *computed : data.cached;
    }
    std::string Format(double number, const std::string& format) const override
    {
        return display_.Format(number, format).text;
    }
    std::vector<std::optional<double>> Numbers(const std::string& formula) const
    {
        std::vector<std::optional<double>> numbers;
        const auto values = evaluator_.ValuesOf(formula, sheet_);
        if (!values)
            return numbers;
        for (const book::CellContent& value : *values) {
            const auto* const number = std::get_if<double>(&value);
            numbers.push_back(number != nullptr ? std::optional(*number) : std::nullopt);
        }
        return numbers;
    }

private:
    Evaluator& evaluator_;
    SheetDisplay& display_;
    std::size_t sheet_;
};

namespace {

void AddPicturesNotShown(const book::Drawing& drawing, std::vector<book::LeftOut>& leftOut)
{
    if (drawing.picture) {
        if (const auto reason = ReasonNotShown(*drawing.picture))
            leftOut.push_back({"picture", drawing.name, *reason});
    }
    for (const book::Drawing& child : drawing.children)
        AddPicturesNotShown(child, leftOut);
}

std::vector<PageBox> PagesOf(const book::SheetLook& sheet, const Layout& layout,
                             const TextMeasure& measure, const book::Font& normalFont,
                             const PictureOptions& options)
{
    const auto format = [&](const char* code) {
        return NumberFormat(code).Format(options.now, book::DateSystem::From1900).text;
    };
    PageOptions pages;
    pages.fields.fileName = options.fileName;
    pages.fields.folder = options.folder;
    pages.fields.page = options.firstPage;
    pages.fields.pages = options.allPages;
    pages.fields.date = format("m/d/yyyy");
    pages.fields.time = format("h:mm AM/PM");
    pages.font = normalFont;
    return LayOutPages(sheet, layout, measure, pages);
}

} // namespace

SheetPicture::SheetPicture(book::WorkbookView& view, std::size_t sheet, const TextMeasure& measure,
                           const PictureOptions& options)
    : view_(view), measure_(measure), name_(view.Workbook().sheets.at(sheet).name), sheet_(sheet),
      evaluator_(view, formula::FromSystem1900(options.now, view.Workbook().dateSystem)),
      display_(view, sheet, evaluator_),
      layout_(LayOut(view.Sheet(sheet), view.Workbook(), display_, measure, {options.range}))
{
    if (!options.range)
        layout_.pages =
            PagesOf(view.Sheet(sheet), layout_, measure, view.Workbook().normalFont, options);
    for (const DrawingBox& box : layout_.drawings)
        AddPicturesNotShown(*box.drawing, layout_.leftOut);
    for (const book::HeaderPicture& picture : view.Sheet(sheet).headerPictures)
        AddPicturesNotShown(picture.drawing, layout_.leftOut);
    if (evaluator_.HasReachedLimit())
        layout_.leftOut.push_back({"formulas", "", "computing all of them takes too long"});
}

std::vector<book::CellAddress> SheetPicture::NotComputed() const
{
    const auto& cells = display_.NotComputed();
    return {cells.begin(), cells.end()};
}

PaintOptions SheetPicture::Options(const ComputedValues& values) const
{
    PaintOptions options;
    options.chart = [&](const book::Chart& chart, const Box& box, Canvas& target) {
        PaintChart(chart, box, target, measure_, values);
    };
    options.sparklines = &view_.Sheet(sheet_).sparklines;
    options.sparklineValues = [&](const std::string& formula) { return values.Numbers(formula); };
    return options;
}

void SheetPicture::Paint(Canvas& canvas, const std::optional<Box>& part)
{
    const ComputedValues values(evaluator_, display_, sheet_);
    PaintOptions options = Options(values);
    options.visible = part;
    PaintSheet(layout_, canvas, measure_, options);
}

void SheetPicture::PaintPage(std::size_t page, Canvas& canvas, LinesLie lines)
{
    const ComputedValues values(evaluator_, display_, sheet_);
    PaintOptions options = Options(values);
    options.printsGridLines = view_.Sheet(sheet_).page.printsGridLines;
    options.marksNotComputed = false;
    options.linesLie = lines;
    look::PaintPage(layout_, layout_.pages.at(page), canvas, measure_, options);
}

book::Color TextColor(const CellDisplay& display)
{
    if (display.color)
        return *display.color;
    return display.style->font.color.value_or(book::kBlack);
}

} // namespace orrery::look
