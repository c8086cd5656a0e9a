#include "engines/excel/typed_text.h"

#include "util/text.h"
#include "util/unicode.h"
#include "util/wide.h"

#include <windows.h>

#include <algorithm>
#include <array>

namespace orrery::excel {
namespace {

/// The logical values in the languages that have words of their own for them. Words for errors
/// begin with a number sign in all of them.
constexpr auto kLogicalWords = std::to_array<std::string_view>(
    {"TRUE",    "FALSE",    "WAHR",    "FALSCH",  "VRAI",       "FAUX",      "VERDADERO",
     "FALSO",   "VERO",     "WAAR",    "ONWAAR",  "VERDADEIRO", "SANT",      "FALSKT",
     "SANN",    "USANN",    "SAND",    "FALSK",   "TOSI",       "EPÄTOSI",   "TÕENE",
     "VÄÄR",    "PRAWDA",   "FAŁSZ",   "PRAVDA",  "NEPRAVDA",   "IGAZ",      "HAMIS",
     "CERT",    "FALS",     "EGIA",    "GEZURRA", "ADEVĂRAT",   "ISTINA",    "NEISTINA",
     "RESNICA", "LAŽ",      "PATIESS", "APLAMS",  "TEISINGA",   "KLAIDINGA", "DOĞRU",
     "YANLIŞ",  "yanlış",   "BENAR",   "SALAH",   "PALSU",      "ИСТИНА",    "ЛОЖЬ",
     "ІСТИНА",  "ХИБНІСТЬ", "АҚИҚАТ",  "ЖАЛҒАН",  "ВЯРНО",      "ΑΛΗΘΗΣ",    "ΨΕΥΔΗΣ"});

bool IsSameWord(const std::wstring& left, const std::wstring& right)
{
    return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_EQUAL;
}

bool IsLogicalWord(std::string_view text)
{
    const std::wstring word = util::ToWide(util::Trim(text));
    return std::any_of(kLogicalWords.begin(), kLogicalWords.end(), [&](std::string_view known) {
        return IsSameWord(word, util::ToWide(known));
    });
}

bool IsBetween(char32_t character, char32_t first, char32_t last)
{
    return first <= character && character <= last;
}

/// A letter of the Latin, Greek or Cyrillic script. Other scripts have digits, and some of them
/// letters that are numbers, too.
bool IsLetter(char32_t character)
{
    if (character == U'\u00D7' || character == U'\u00F7') // signs for multiplication and division
        return false;
    return IsBetween(character, U'A', U'Z') || IsBetween(character, U'a', U'z') ||
           IsBetween(character, 0xC0, 0x52F) || IsBetween(character, 0x1E00, 0x1FFF);
}

/// Whether a text of letters stays a text when this character follows them.
bool IsHarmless(char32_t character)
{
    constexpr std::u32string_view signs = U" .,;:!?'\"()&/-\u00A0";
    return IsLetter(character) || signs.find(character) != std::u32string_view::npos ||
           IsBetween(character, 0x2010, 0x2026); // dashes, quotation marks, an ellipsis
}

/// Whether the text is a text in every language of the application. When in doubt, it is not.
bool IsPlainText(std::string_view text)
{
    std::size_t at = 0;
    if (!IsLetter(util::NextCharacter(text, at)))
        return false;
    while (at < text.size()) {
        if (!IsHarmless(util::NextCharacter(text, at)))
            return false;
    }
    return !IsLogicalWord(text);
}

} // namespace

std::string TypedAsText(std::string_view text)
{
    if (text.empty() || IsPlainText(text))
        return std::string(text);
    return '\'' + std::string(text);
}

} // namespace orrery::excel
