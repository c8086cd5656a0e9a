// Prints how the sheets of a workbook look, as JSON, for check_looks.py:
//
//     look_dump FILE...

#include "engines/builtin/xlsx/look/look.h"
#include "util/error.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace {

using namespace orrery;

std::string Quoted(std::string_view text)
{
    std::string json = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        }
        else if (static_cast<unsigned char>(c) < 0x20) {
            constexpr std::string_view digits = "0123456789abcdef";
            json += "\\u00";
            json += digits[static_cast<unsigned char>(c) >> 4U];
            json += digits[static_cast<unsigned char>(c) & 0xFU];
        }
        else {
            json += c;
        }
    }
    return json + '"';
}

std::string Json(std::string_view text)
{
    return Quoted(text);
}
std::string Json(bool value)
{
    return value ? "true" : "false";
}
std::string Json(double value)
{
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}
template <typename Value>
requires(std::is_enum_v<Value> ||
         (std::is_integral_v<Value> && !std::is_same_v<Value, bool>)) std::string Json(Value value)
{
    return std::to_string(static_cast<long long>(value));
}
std::string Json(const book::Color& color)
{
    std::array<char, 8> digits{};
    std::snprintf(digits.data(), digits.size(), "%02X%02X%02X", unsigned{color.red},
                  unsigned{color.green}, unsigned{color.blue});
    return Quoted(digits.data());
}
std::string Json(const book::CellRange& range)
{
    return Quoted(book::FormatCellRange(range));
}
template <typename Value> std::string Json(const std::optional<Value>& value)
{
    return value ? Json(*value) : "null";
}

/// Items of an object or a list.
class Writer {
public:
    explicit Writer(char open) : json_(1, open), close_(open == '{' ? '}' : ']') {}
    Writer& Add(std::string_view key, const std::string& json)
    {
        Separate();
        json_ += Quoted(key) + ':' + json;
        return *this;
    }
    Writer& Add(const std::string& json)
    {
        Separate();
        json_ += json;
        return *this;
    }
    std::string Done() { return json_ + close_; }

private:
    void Separate()
    {
        if (json_.size() > 1)
            json_ += ',';
    }
    std::string json_;
    char close_;
};

template <typename Item, typename Print>
std::string List(const std::vector<Item>& items, Print print)
{
    Writer list('[');
    for (const Item& item : items)
        list.Add(print(item));
    return list.Done();
}

std::string FontJson(const book::Font& font)
{
    return Writer('{')
        .Add("name", Json(font.name))
        .Add("size", Json(font.size))
        .Add("bold", Json(font.bold))
        .Add("italic", Json(font.italic))
        .Add("strike", Json(font.strike))
        .Add("underline", Json(font.underline))
        .Add("position", Json(font.position))
        .Add("color", Json(font.color))
        .Done();
}

std::string LineJson(const book::BorderLine& line)
{
    return Writer('[').Add(Json(line.style)).Add(Json(line.color)).Done();
}

std::string FillJson(const book::Fill& fill)
{
    return Writer('{')
        .Add("pattern", Json(fill.pattern))
        .Add("fore", Json(fill.foreground))
        .Add("back", Json(fill.background))
        .Add("gradient", Json(fill.gradient.has_value()))
        .Done();
}

std::string StyleJson(const book::CellStyle& style)
{
    const book::Border& border = style.border;
    const book::Alignment& alignment = style.alignment;
    return Writer('{')
        .Add("font", FontJson(style.font))
        .Add("fill", FillJson(style.fill))
        .Add("left", LineJson(border.left))
        .Add("right", LineJson(border.right))
        .Add("top", LineJson(border.top))
        .Add("bottom", LineJson(border.bottom))
        .Add("diagonal", LineJson(border.diagonal))
        .Add("diagonalUp", Json(border.diagonalUp))
        .Add("diagonalDown", Json(border.diagonalDown))
        .Add("horizontal", Json(alignment.horizontal))
        .Add("vertical", Json(alignment.vertical))
        .Add("wrap", Json(alignment.wrap))
        .Add("shrink", Json(alignment.shrink))
        .Add("indent", Json(alignment.indent))
        .Add("rotation", Json(alignment.rotation))
        .Add("readingOrder", Json(alignment.readingOrder))
        .Add("numberFormat", Json(style.numberFormat))
        .Done();
}

std::string ContentJson(const book::CellContent& content)
{
    return std::visit(
        [](const auto& value) -> std::string {
            using Value = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Value, std::monostate>)
                return "null";
            else if constexpr (std::is_same_v<Value, book::CellError>)
                return Writer('{').Add("error", Json(value)).Done();
            else
                return Json(value);
        },
        content);
}

std::string CellJson(const book::SheetLook& sheet, const book::Cell& cell)
{
    Writer json('[');
    json.Add(Json(cell.address.row)).Add(Json(cell.address.column)).Add(Json(cell.style));
    json.Add(ContentJson(cell.content));
    if (cell.formula < 0)
        return json.Add("null").Done();
    const auto& formula = sheet.formulas[static_cast<std::size_t>(cell.formula)];
    return json.Add(Json(formula.text)).Add(Json(formula.array)).Done();
}

std::string RunsJson(const book::SheetLook& sheet)
{
    Writer json('{');
    for (const book::Cell& cell : sheet.cells) {
        if (cell.richText < 0)
            continue;
        json.Add(book::FormatCellAddress(cell.address),
                 List(sheet.richTexts[static_cast<std::size_t>(cell.richText)],
                      [](const book::TextRun& run) {
                          return Writer('[').Add(Json(run.begin)).Add(FontJson(run.font)).Done();
                      }));
    }
    return json.Done();
}

std::string PageJson(const book::PageSetup& page)
{
    const auto range = [](const book::CellRange& one) { return Json(one); };
    const auto number = [](std::int32_t one) { return Json(one); };
    return Writer('{')
        .Add("paper", Json(page.paper))
        .Add("landscape", Json(page.isLandscape))
        .Add("scale", Json(page.scale))
        .Add("fits", Json(page.fitsPages))
        .Add("wide", Json(page.pagesWide))
        .Add("high", Json(page.pagesHigh))
        .Add("left", Json(page.left))
        .Add("right", Json(page.right))
        .Add("top", Json(page.top))
        .Add("bottom", Json(page.bottom))
        .Add("header", Json(page.headerMargin))
        .Add("footer", Json(page.footerMargin))
        .Add("areas", List(page.printAreas, range))
        .Add("titleRows", Json(page.titleRows))
        .Add("titleColumns", Json(page.titleColumns))
        .Add("rowBreaks", List(page.rowBreaks, number))
        .Add("columnBreaks", List(page.columnBreaks, number))
        .Done();
}

std::string RuleJson(const book::ConditionalRule& rule)
{
    return Writer('{')
        .Add("kind", Json(rule.kind))
        .Add("priority", Json(rule.priority))
        .Add("stop", Json(rule.stopIfTrue))
        .Add("bold", Json(rule.style.bold))
        .Add("color", Json(rule.style.fontColor))
        .Add("formulas", List(rule.formulas, [](const std::string& one) { return Json(one); }))
        .Done();
}

std::string SheetJson(const book::SheetLook& sheet)
{
    const auto range = [](const book::CellRange& one) { return Json(one); };
    return Writer('{')
        .Add("name", Json(sheet.name))
        .Add("standardWidth", Json(sheet.standardWidth))
        .Add("defaultRowHeight", Json(sheet.defaultRowHeight))
        .Add("grid", Json(sheet.view.showsGridLines))
        .Add("rightToLeft", Json(sheet.view.isRightToLeft))
        .Add("zeros", Json(sheet.view.showsZeros))
        .Add(
            "frozen",
            Writer('[').Add(Json(sheet.view.frozenRows)).Add(Json(sheet.view.frozenColumns)).Done())
        .Add("columns", List(sheet.columns,
                             [](const book::ColumnLook& one) {
                                 return Writer('[')
                                     .Add(Json(one.first))
                                     .Add(Json(one.last))
                                     .Add(Json(one.width))
                                     .Add(Json(one.isHidden))
                                     .Done();
                             }))
        .Add("rows", List(sheet.rows,
                          [](const book::RowLook& one) {
                              return Writer('[')
                                  .Add(Json(one.row))
                                  .Add(Json(one.height))
                                  .Add(Json(one.isHidden))
                                  .Done();
                          }))
        .Add("styles", List(sheet.styles, StyleJson))
        .Add("cells",
             List(sheet.cells, [&](const book::Cell& cell) { return CellJson(sheet, cell); }))
        .Add("runs", RunsJson(sheet))
        .Add("merges", List(sheet.merges, range))
        .Add("conditions", List(sheet.conditions,
                                [&](const book::ConditionalFormat& one) {
                                    return Writer('{')
                                        .Add("ranges", List(one.ranges, range))
                                        .Add("rules", List(one.rules, RuleJson))
                                        .Done();
                                }))
        .Add("tables", List(sheet.tables,
                            [](const book::Table& one) {
                                return Writer('[')
                                    .Add(Json(one.name))
                                    .Add(Json(one.range))
                                    .Add(Json(one.style.parts.size()))
                                    .Done();
                            }))
        .Add("sparklines", Json(sheet.sparklines.size()))
        .Add("drawings", Json(sheet.drawings.size()))
        .Add("page", PageJson(sheet.page))
        .Add("leftOut", List(sheet.leftOut,
                             [](const book::LeftOut& one) {
                                 return Json(one.what + " " + one.where + ": " + one.reason);
                             }))
        .Done();
}

void Dump(const char* path)
{
    const auto view = xlsx::OpenLook(path);
    const book::WorkbookLook& workbook = view->Workbook();
    Writer sheets('[');
    Writer others('['); // sheets that are no worksheets
    for (std::size_t index = 0; index < workbook.sheets.size(); ++index) {
        if (workbook.sheets[index].kind == book::SheetKind::Worksheet)
            sheets.Add(SheetJson(view->Sheet(index)));
        else
            others.Add(Json(workbook.sheets[index].name));
    }
    std::cout << Writer('{')
                     .Add("file", Json(path))
                     .Add("normalFont", FontJson(workbook.normalFont))
                     .Add("from1904", Json(workbook.dateSystem == book::DateSystem::From1904))
                     .Add("names",
                          List(workbook.names,
                               [](const book::DefinedName& one) { return Json(one.name); }))
                     .Add("others", others.Done())
                     .Add("sheets", sheets.Done())
                     .Done()
              << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    for (int at = 1; at < argc; ++at) {
        try {
            Dump(argv[at]);
        }
        catch (const util::Error& error) {
            std::cout
                << Writer('{').Add("file", Json(argv[at])).Add("error", Json(error.what())).Done()
                << '\n';
        }
    }
}
