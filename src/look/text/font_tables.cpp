#include "look/text/font_tables.h"

#include "look/text/characters.h"
#include "look/text/font_data.h"
#include "look/text/font_name.h"
#include "look/values/geometry.h"
#include "util/unicode.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orrery::look {
namespace {

/// What no table has, in shares of an em.
constexpr double kWideAdvance = 1;
constexpr double kHalfAdvance = 0.5;
constexpr double kOtherAdvance = 0.6;
/// More than any sheet shows; a damaged file may say anything.
constexpr double kLargestSize = 1000;

struct Face {
    const FontFace* face = nullptr;
    const FontFace* fallback = nullptr; ///< has the characters that the face has not
    FontMatch match;
};

Face FaceOf(const book::Font& font)
{
    const FontMatch match = MatchFont(font.name);
    const std::size_t style = (font.bold ? 1U : 0U) + (font.italic ? 2U : 0U);
    const auto face = [style](OpenFont open) {
        return kFontFamilies[static_cast<std::size_t>(open)].styles[style];
    };
    return {face(match.font), face(OpenFont::DejaVuSans), match};
}

double SizeInPixels(const book::Font& font)
{
    const double size = font.size > 0 ? std::min(font.size, kLargestSize) : 0;
    return size * kPixelsPerPoint *
           (font.position == book::TextPosition::Baseline ? 1 : kScriptSize);
}

/// The advance in shares of an em, or less than 0 if the face has no such character.
double Advance(const FontFace& face, char32_t character)
{
    const FontRun& latin = face.runs.front();
    const FontRun* run = &latin;
    if (character < latin.first || character - latin.first >= latin.count) {
        const auto after = std::upper_bound(
            face.runs.begin(), face.runs.end(), character,
            [](char32_t wanted, const FontRun& each) { return wanted < each.first; });
        if (after == face.runs.begin() || character - (after - 1)->first >= (after - 1)->count)
            return -1;
        run = &*(after - 1);
    }
    return static_cast<double>(face.widths[run->offset + (character - run->first)]) /
           face.unitsPerEm;
}

bool IsHalfWidthForm(char32_t character)
{
    return character >= 0xFF61 && character <= 0xFFDC;
}

double Advance(const Face& face, char32_t character)
{
    if (character == '\t')
        character = ' ';
    if (IsZeroWidth(character))
        return 0;
    if (IsWide(character))
        return kWideAdvance;
    if (const double advance = Advance(*face.face, character); advance >= 0)
        return advance;
    if (const double advance = Advance(*face.fallback, character); advance >= 0)
        return advance;
    const bool isFlagLetter = character >= 0x1F1E6 && character <= 0x1F1FF; // two make a flag
    return isFlagLetter || IsHalfWidthForm(character) ? kHalfAdvance : kOtherAdvance;
}

/// Parts of one emoji: what is joined to the one before, and shades of skin.
bool ContinuesEmoji(char32_t before, char32_t character)
{
    constexpr char32_t kJoiner = 0x200D;
    return before >= 0x200D && IsWide(character) &&
           (before == kJoiner || (character >= 0x1F3FB && character <= 0x1F3FF));
}

/// Spreadsheet programs round the two heights that a font has for clipping, and leave a pixel above
/// and below: 20 pixels or 15 points for Calibri 11, 12.75 points for Arial 10. East Asian fonts
/// are as high as their em, and get three: 13.5 points for MS PGothic 11.
double RowHeight(const Face& face, double size)
{
    if (size <= 0)
        return 0;
    if (face.match.isEastAsian)
        return std::round(size) + 3;
    const double unit = size / face.face->unitsPerEm;
    return std::round(face.face->top * unit) + std::round(face.face->bottom * unit) + 2;
}

} // namespace

double FontTables::Width(std::string_view text, const book::Font& font) const
{
    const Face face = FaceOf(font);
    double width = 0;
    char32_t before = 0;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t character = util::NextCharacter(text, at);
        if (!ContinuesEmoji(before, character))
            width += Advance(face, character);
        before = character;
    }
    return width * SizeInPixels(font);
}

LineMetrics FontTables::Metrics(const book::Font& font) const
{
    const Face face = FaceOf(font);
    const double size = SizeInPixels(font);
    const double unit = size / face.face->unitsPerEm;
    const double ascent = face.face->ascent * unit;
    const double descent = face.face->descent * unit;
    return {ascent, descent, ascent + descent, RowHeight(face, size)};
}

} // namespace orrery::look
