// The templates that are shipped are one design in two formats: their looks are equal, but for
// - what is rounded: widths to 1/256 of a digit or to hundredths, margins to twips or to tenths of
//   millimetres;
// - columns right of the design and margins of headers, which the writer of the .xls files states;
// - grid lines and frozen rows, which that writer does not keep;
// - the font of a footer, which it leaves out where it is the default one;
// - the results of formulas, which the .xlsx files do not have.

#include "engines/builtin/xls/look/look.h"
#include "engines/builtin/xlsx/look/look.h"
#include "places/places.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace orrery::builtin {
namespace {

using book::CellAddress;
using book::SheetLook;

constexpr std::int32_t kLastColumn = 256; // .xls ends there
constexpr std::int32_t kLastRow = 65536;

struct Design {
    const char* name;
};
void PrintTo(const Design& design, std::ostream* out)
{
    *out << design.name;
}

class EqualLooksTest : public testing::TestWithParam<Design> {
protected:
    void SetUp() override
    {
        const auto folder = places::SourceFolder() / "data" / "template";
        const std::string name = GetParam().name;
        old_ = xls::OpenLook(folder / (name + ".xls"));
        new_ = xlsx::OpenLook(folder / (name + ".xlsx"));
        ASSERT_EQ(old_->Workbook().sheets.size(), new_->Workbook().sheets.size());
    }

    template <typename Compare> void ForEachSheet(Compare compare)
    {
        for (std::size_t i = 0; i < old_->Workbook().sheets.size(); ++i) {
            SCOPED_TRACE(old_->Workbook().sheets[i].name);
            compare(old_->Sheet(i), new_->Sheet(i));
        }
    }

    std::unique_ptr<book::WorkbookView> old_;
    std::unique_ptr<book::WorkbookView> new_;
};

INSTANTIATE_TEST_SUITE_P(Designs, EqualLooksTest,
                         testing::Values(Design{"Desk"}, Design{"Family"}, Design{"Notes"},
                                         Design{"Wall"}, Design{"Year"}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(EqualLooksTest, Workbooks)
{
    const auto& left = old_->Workbook();
    const auto& right = new_->Workbook();
    EXPECT_EQ(left.normalFont, right.normalFont);
    EXPECT_EQ(left.dateSystem, right.dateSystem);
    EXPECT_EQ(left.activeSheet, right.activeSheet);
    for (std::size_t i = 0; i < left.sheets.size(); ++i) {
        EXPECT_EQ(left.sheets[i].name, right.sheets[i].name);
        EXPECT_EQ(left.sheets[i].kind, right.sheets[i].kind);
        EXPECT_EQ(left.sheets[i].state, right.sheets[i].state);
    }
    const auto names = [](const book::WorkbookLook& look) {
        std::multiset<std::string> found;
        for (const auto& name : look.names)
            found.insert(name.name + "=" + name.formula);
        return found;
    };
    EXPECT_EQ(names(left), names(right));
}

std::int32_t LastColumn(const SheetLook& look)
{
    std::int32_t last = 0;
    for (const auto& cell : look.cells)
        last = std::max(last, cell.address.column);
    return last;
}

TEST_P(EqualLooksTest, Sizes)
{
    ForEachSheet([](const SheetLook& left, const SheetLook& right) {
        EXPECT_EQ(left.defaultRowHeight, right.defaultRowHeight);
        for (std::int32_t column = 1; column <= kLastColumn; ++column) {
            const auto* a = left.FindColumn(column);
            const auto* b = right.FindColumn(column);
            if (b == nullptr) {
                EXPECT_GT(column, LastColumn(right));
                continue;
            }
            ASSERT_TRUE(a != nullptr && a->width && b->width) << column;
            EXPECT_NEAR(*a->width, *b->width, 0.02) << column;
            EXPECT_EQ(a->isHidden, b->isHidden) << column;
        }
        ASSERT_EQ(left.rows.size(), right.rows.size());
        for (std::size_t i = 0; i < left.rows.size(); ++i) {
            EXPECT_EQ(left.rows[i].row, right.rows[i].row);
            EXPECT_EQ(left.rows[i].height, right.rows[i].height) << left.rows[i].row;
            EXPECT_EQ(left.rows[i].isHidden, right.rows[i].isHidden);
            EXPECT_EQ(left.rows[i].isCustomHeight, right.rows[i].isCustomHeight);
        }
    });
}

TEST_P(EqualLooksTest, Views)
{
    ForEachSheet([](const SheetLook& left, const SheetLook& right) {
        EXPECT_EQ(left.view.isRightToLeft, right.view.isRightToLeft);
        EXPECT_EQ(left.view.gridColor, right.view.gridColor);
        EXPECT_EQ(left.view.showsZeros, right.view.showsZeros);
        EXPECT_EQ(left.view.showsFormulas, right.view.showsFormulas);
    });
}

std::string Text(const std::optional<book::Color>& color)
{
    if (!color)
        return "automatic";
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", color->red, color->green, color->blue);
    return text;
}

void ExpectSame(const book::CellStyle& left, const book::CellStyle& right)
{
    EXPECT_EQ(left.numberFormat, right.numberFormat);
    EXPECT_EQ(left.font.name, right.font.name);
    EXPECT_EQ(left.font.size, right.font.size);
    EXPECT_EQ(Text(left.font.color), Text(right.font.color));
    EXPECT_EQ(left.font, right.font);
    EXPECT_EQ(left.fill.pattern, right.fill.pattern);
    EXPECT_EQ(Text(left.fill.foreground), Text(right.fill.foreground));
    if (left.fill.pattern != book::FillPattern::Solid) { // where the background does not count
        EXPECT_EQ(left.fill, right.fill);
    }
    EXPECT_EQ(left.border, right.border);
    EXPECT_EQ(left.alignment, right.alignment);
}

TEST_P(EqualLooksTest, Cells)
{
    ForEachSheet([](const SheetLook& left, const SheetLook& right) {
        ASSERT_EQ(left.cells.size(), right.cells.size());
        for (std::size_t i = 0; i < left.cells.size(); ++i) {
            const auto& a = left.cells[i];
            const auto& b = right.cells[i];
            SCOPED_TRACE(book::FormatCellAddress(a.address));
            ASSERT_EQ(a.address, b.address);
            if (b.formula < 0 || !std::holds_alternative<std::monostate>(b.content)) {
                EXPECT_EQ(a.content, b.content);
            }
            ExpectSame(left.styles[a.style], right.styles[b.style]);
            const auto formula = [](const SheetLook& look, const book::Cell& cell) {
                return cell.formula < 0
                           ? std::string()
                           : look.formulas[static_cast<std::size_t>(cell.formula)].text;
            };
            EXPECT_EQ(formula(left, a), formula(right, b));
            EXPECT_EQ(a.richText < 0, b.richText < 0);
        }
    });
}

TEST_P(EqualLooksTest, StylesOfCellsThatAreNotThere)
{
    ForEachSheet([](const SheetLook& left, const SheetLook& right) {
        ExpectSame(left.styles[0], right.styles[0]);
        for (std::int32_t column = 1; column <= kLastColumn; column += 5)
            ExpectSame(left.Style({1000, column}), right.Style({1000, column}));
    });
}

TEST_P(EqualLooksTest, Merges)
{
    ForEachSheet([](const SheetLook& left, const SheetLook& right) {
        EXPECT_EQ(left.merges, right.merges);
    });
}

/// A range that ends where .xls ends.
std::optional<book::CellRange> Cut(std::optional<book::CellRange> range)
{
    if (range) {
        range->last.row = std::min(range->last.row, kLastRow);
        range->last.column = std::min(range->last.column, kLastColumn);
    }
    return range;
}

std::string WithoutDefaultFont(std::string text)
{
    const std::string font = "&\"Calibri,Regular\"";
    for (auto at = text.find(font); at != text.npos; at = text.find(font))
        text.erase(at, font.size());
    return text;
}

TEST_P(EqualLooksTest, Pages)
{
    ForEachSheet([](const SheetLook& left, const SheetLook& right) {
        const auto& a = left.page;
        const auto& b = right.page;
        EXPECT_EQ(a.paper, b.paper);
        EXPECT_EQ(a.isLandscape, b.isLandscape);
        EXPECT_EQ(a.fitsPages, b.fitsPages);
        if (a.fitsPages) {
            EXPECT_EQ(a.pagesWide, b.pagesWide);
            EXPECT_EQ(a.pagesHigh, b.pagesHigh);
        }
        else {
            EXPECT_EQ(a.scale, b.scale);
        }
        for (const auto margin : {&book::PageSetup::left, &book::PageSetup::right,
                                  &book::PageSetup::top, &book::PageSetup::bottom})
            EXPECT_NEAR(a.*margin, b.*margin, 1.0 / 1000);
        EXPECT_EQ(a.centersHorizontally, b.centersHorizontally);
        EXPECT_EQ(a.centersVertically, b.centersVertically);
        EXPECT_EQ(a.printsGridLines, b.printsGridLines);
        EXPECT_EQ(a.printsHeadings, b.printsHeadings);
        EXPECT_EQ(a.header, b.header);
        EXPECT_EQ(a.footer, WithoutDefaultFont(b.footer));
        EXPECT_EQ(a.printAreas, b.printAreas);
        EXPECT_EQ(Cut(a.titleRows), Cut(b.titleRows));
        EXPECT_EQ(Cut(a.titleColumns), Cut(b.titleColumns));
        EXPECT_EQ(a.rowBreaks, b.rowBreaks);
        EXPECT_EQ(a.columnBreaks, b.columnBreaks);
    });
}

/// Rules with the cells that they are for, by formula: the formats group and number them
/// differently.
std::multiset<std::string> RulesOf(const SheetLook& look)
{
    std::multiset<std::string> rules;
    for (const auto& format : look.conditions) {
        for (const auto& rule : format.rules) {
            const auto& style = rule.style;
            std::string text = std::to_string(static_cast<int>(rule.kind));
            for (const auto& formula : rule.formulas)
                text += " " + formula;
            text += " font " + (style.fontColor ? Text(style.fontColor) : "-");
            text += style.fill ? " fill " + Text(style.fill->foreground) : "";
            text += style.bold ? (*style.bold ? " bold" : " light") : "";
            for (const auto* line : {&style.left, &style.right, &style.top, &style.bottom}) {
                text += *line ? " line " + std::to_string(static_cast<int>((*line)->style)) +
                                    Text((*line)->color)
                              : " -";
            }
            for (const auto& range : format.ranges)
                text += " " + book::FormatCellRange(range);
            rules.insert(text);
        }
    }
    return rules;
}

TEST_P(EqualLooksTest, Conditions)
{
    ForEachSheet([](const SheetLook& left, const SheetLook& right) {
        EXPECT_EQ(RulesOf(left), RulesOf(right));
    });
}

TEST_P(EqualLooksTest, NothingIsLeftOut)
{
    ForEachSheet([](const SheetLook& left, const SheetLook& right) {
        EXPECT_EQ(left.leftOut, std::vector<book::LeftOut>());
        EXPECT_EQ(right.leftOut, std::vector<book::LeftOut>());
    });
}

} // namespace
} // namespace orrery::builtin
