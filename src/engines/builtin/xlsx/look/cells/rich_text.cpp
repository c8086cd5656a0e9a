#include "engines/builtin/xlsx/look/cells/rich_text.h"

#include "engines/builtin/xlsx/formula/escaped_text.h"
#include "engines/builtin/xlsx/look/cells/element_text.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/style/font_reader.h"
#include "engines/builtin/xml/reading.h"

namespace orrery::xlsx {
namespace {

constexpr std::size_t kMaxRunsOfText = 4096;

void AppendText(xml::Scanner& scanner, std::string& text)
{
    std::string buffer;
    const std::string_view piece = ReadElementText(scanner, buffer);
    if (text.size() + piece.size() > kMaxCellText)
        return;
    if (piece.find("_x") == piece.npos)
        text += piece;
    else
        text += UnescapeText(piece);
}

/// The font of a run. A name or a size that it does not tell is as in the cell. A colour that it
/// does not tell is automatic: Excel writes that of the cell, too, where a run has it.
book::Font RunFont(xml::Scanner& scanner, const ColorScheme& colors, const book::Font& cell)
{
    book::Font base;
    base.name = cell.name;
    base.size = cell.size;
    return ReadFont(scanner, colors, base);
}

void ReadRun(xml::Scanner& scanner, const ColorScheme& colors, const book::Font* font,
             RichText& rich)
{
    const std::size_t begin = rich.text.size();
    std::optional<book::Font> own;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "t")
            return AppendText(scanner, rich.text);
        if (scanner.LocalName() == "rPr" && font != nullptr) {
            own = RunFont(scanner, colors, *font);
            return;
        }
        scanner.SkipElement();
    });
    if (font != nullptr && rich.text.size() > begin && rich.runs.size() < kMaxRunsOfText)
        rich.runs.push_back({begin, own.value_or(*font)});
}

} // namespace

RichText ReadRichText(xml::Scanner& scanner, const ColorScheme& colors, const book::Font* font)
{
    RichText rich;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "t")
            return AppendText(scanner, rich.text);
        if (scanner.LocalName() == "r")
            return ReadRun(scanner, colors, font, rich);
        scanner.SkipElement(); // phonetic texts
    });
    if (rich.runs.size() == 1 && rich.runs.front().begin == 0 && rich.runs.front().font == *font)
        rich.runs.clear();
    return rich;
}

} // namespace orrery::xlsx
