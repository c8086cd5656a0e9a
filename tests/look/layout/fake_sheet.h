#pragma once

#include "look/layout/lay_out.h"
#include "look/text/characters.h"

#include <map>
#include <string>
#include <utility>

namespace orrery::look {

/// Each of the user's characters is as wide as the font's size says, in pixels; lines are as high.
class FakeMeasure final : public TextMeasure {
public:
    double Width(std::string_view text, const book::Font& font) const override
    {
        double count = 0;
        for (std::size_t at = 0; at < text.size(); ++count)
            at = ClusterEnd(text, at);
        return count * font.size;
    }
    LineMetrics Metrics(const book::Font& font) const override
    {
        return {0.8 * font.size, 0.2 * font.size, font.size, font.size + 2};
    }
};

/// A sheet of which the cells show what the test says: texts of size 10, columns of 100 pixels,
/// rows of 20 pixels.
class FakeSheet : public CellSource {
public:
    FakeSheet()
    {
        workbook.normalFont.size = 10;
        sheet.styles.emplace_back();
        sheet.styles[0].font.size = 10;
        sheet.standardWidth = 10; // digits of ten pixels
        sheet.defaultRowHeight = 15;
    }

    CellDisplay Display(book::CellAddress address) override
    {
        const auto found = displays.find(address);
        CellDisplay display;
        display.style = SharedStyle(sheet.Style(address));
        return found != displays.end() ? found->second : display;
    }

    /// Puts a text into a cell; what it returns may be changed until the sheet is laid out.
    CellDisplay& Put(book::CellAddress address, std::string text)
    {
        CellDisplay& display = displays[address];
        display.text = std::move(text);
        display.style = SharedStyle(sheet.styles[0]);
        return display;
    }

    Layout LayOut(const LayoutOptions& options = {})
    {
        sheet.cells.clear();
        for (const auto& [address, display] : displays) {
            book::Cell cell;
            cell.address = address;
            if (!display.text.empty())
                cell.content = display.text;
            cell.style = static_cast<std::uint32_t>(sheet.styles.size());
            sheet.styles.push_back(*display.style);
            sheet.cells.push_back(std::move(cell));
        }
        return look::LayOut(sheet, workbook, *this, measure, options);
    }

    book::SheetLook sheet;
    book::WorkbookLook workbook;
    FakeMeasure measure;
    std::map<book::CellAddress, CellDisplay> displays;
};

inline const CellBox* FindBox(const Layout& layout, book::CellAddress address)
{
    for (const CellBox& cell : layout.cells) {
        if (cell.range.first == address)
            return &cell;
    }
    return nullptr;
}

/// The lines of a cell as text, each ended by "|".
inline std::string LinesOf(const Layout& layout, book::CellAddress address)
{
    std::string lines;
    if (const CellBox* cell = FindBox(layout, address)) {
        for (const TextLine& line : cell->lines) {
            for (const TextPiece& piece : line.pieces)
                lines += piece.text;
            lines += '|';
        }
    }
    return lines;
}

} // namespace orrery::look
