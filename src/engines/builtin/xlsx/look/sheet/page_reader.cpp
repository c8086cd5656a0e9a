#include "engines/builtin/xlsx/look/sheet/page_reader.h"

#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orrery::xlsx {
namespace {

using book::PageSetup;

constexpr double kMaxMargin = 49; // inches, of Excel

/// "210mm", "8.5in" in inches. ECMA-376 22.9.2.12
std::optional<double> ParseLength(std::string_view text)
{
    constexpr std::array<std::pair<std::string_view, double>, 6> kUnits = {{{"mm", 1 / 25.4},
                                                                            {"cm", 1 / 2.54},
                                                                            {"in", 1},
                                                                            {"pt", 1 / 72.0},
                                                                            {"pc", 1 / 6.0},
                                                                            {"pi", 1 / 6.0}}};
    for (const auto& [unit, inches] : kUnits) {
        if (!text.ends_with(unit))
            continue;
        const auto number = ParseNumber(text.substr(0, text.size() - unit.size()));
        const bool isPaper = number && *number * inches > 0.1 && *number * inches < 1000;
        return isPaper ? std::optional(*number * inches) : std::nullopt;
    }
    return std::nullopt;
}

void SetLength(const xml::Scanner& scanner, std::string_view name, double& margin)
{
    const auto value = NumberAttribute(scanner, name);
    if (value && *value >= 0 && *value <= kMaxMargin)
        margin = *value;
}

void ReadMargins(const xml::Scanner& scanner, PageSetup& page)
{
    SetLength(scanner, "left", page.left);
    SetLength(scanner, "right", page.right);
    SetLength(scanner, "top", page.top);
    SetLength(scanner, "bottom", page.bottom);
    SetLength(scanner, "header", page.headerMargin);
    SetLength(scanner, "footer", page.footerMargin);
}

void ReadSetup(const xml::Scanner& scanner, PageSetup& page)
{
    page.paper = IntegerAttribute(scanner, "paperSize", 1, 65535).value_or(1);
    page.paperWidth = ParseLength(scanner.AttributeText("paperWidth").value_or(""));
    page.paperHeight = ParseLength(scanner.AttributeText("paperHeight").value_or(""));
    const auto orientation = scanner.Attribute("orientation");
    page.isLandscape = orientation && orientation->raw == "landscape";
    page.scale = IntegerAttribute(scanner, "scale", 10, 400).value_or(100);
    page.pagesWide = IntegerAttribute(scanner, "fitToWidth", 0, 32767).value_or(1);
    page.pagesHigh = IntegerAttribute(scanner, "fitToHeight", 0, 32767).value_or(1);
    const auto order = scanner.Attribute("pageOrder");
    page.isOverThenDown = order && order->raw == "overThenDown";
    if (FlagAttribute(scanner, "useFirstPageNumber", false)) {
        page.firstPageNumber =
            IntegerAttribute(scanner, "firstPageNumber", -32768, 65535).value_or(1);
    }
}

void ReadOptions(const xml::Scanner& scanner, PageSetup& page)
{
    page.centersHorizontally = FlagAttribute(scanner, "horizontalCentered", false);
    page.centersVertically = FlagAttribute(scanner, "verticalCentered", false);
    page.printsGridLines = FlagAttribute(scanner, "gridLines", false);
    page.printsHeadings = FlagAttribute(scanner, "headings", false);
}

void ReadHeaderFooter(xml::Scanner& scanner, PageSetup& page)
{
    constexpr std::size_t kMaxText = std::size_t{4} * 255; // of Excel, in bytes
    const bool hasFirst = FlagAttribute(scanner, "differentFirst", false);
    const bool hasEven = FlagAttribute(scanner, "differentOddEven", false);
    page.scalesHeaders = FlagAttribute(scanner, "scaleWithDoc", true);
    xml::ForEachChild(scanner, [&] {
        const std::string_view name = scanner.LocalName();
        std::string text = scanner.ElementText();
        if (text.size() > kMaxText)
            return;
        if (name == "oddHeader")
            page.header = std::move(text);
        else if (name == "oddFooter")
            page.footer = std::move(text);
        else if (name == "firstHeader" && hasFirst)
            page.firstHeader = std::move(text);
        else if (name == "firstFooter" && hasFirst)
            page.firstFooter = std::move(text);
        else if (name == "evenHeader" && hasEven)
            page.evenHeader = std::move(text);
        else if (name == "evenFooter" && hasEven)
            page.evenFooter = std::move(text);
    });
    // Pages of their own without a text have an empty one.
    if (hasFirst) {
        page.firstHeader = page.firstHeader.value_or("");
        page.firstFooter = page.firstFooter.value_or("");
    }
    if (hasEven) {
        page.evenHeader = page.evenHeader.value_or("");
        page.evenFooter = page.evenFooter.value_or("");
    }
}

/// A break counts rows or columns from 0 and lies before the one that it names, so its number is
/// that of the last one before it, from 1.
void ReadBreaks(xml::Scanner& scanner, std::int32_t limit, std::vector<std::int32_t>& breaks)
{
    xml::ForEachChild(scanner, [&] {
        const auto id = IntegerAttribute(scanner, "id", 1, limit - 1);
        if (scanner.LocalName() == "brk" && id && breaks.size() < kMaxBreaks)
            breaks.push_back(*id + 1);
        scanner.SkipElement();
    });
    std::sort(breaks.begin(), breaks.end());
    breaks.erase(std::unique(breaks.begin(), breaks.end()), breaks.end());
}

} // namespace

bool ReadPageElement(xml::Scanner& scanner, PageSetup& page)
{
    const std::string_view name = scanner.LocalName();
    if (name == "headerFooter") {
        ReadHeaderFooter(scanner, page);
        return true;
    }
    if (name == "rowBreaks" || name == "colBreaks") {
        const bool isRow = name == "rowBreaks";
        ReadBreaks(scanner, isRow ? kSheetRows : kSheetColumns,
                   isRow ? page.rowBreaks : page.columnBreaks);
        return true;
    }
    if (name == "pageMargins")
        ReadMargins(scanner, page);
    else if (name == "pageSetup")
        ReadSetup(scanner, page);
    else if (name == "printOptions")
        ReadOptions(scanner, page);
    else
        return false;
    scanner.SkipElement();
    return true;
}

void ReadPageProperties(const xml::Scanner& scanner, PageSetup& page)
{
    page.fitsPages = FlagAttribute(scanner, "fitToPage", false);
}

} // namespace orrery::xlsx
