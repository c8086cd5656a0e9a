#include "look/evaluate/functions/text/text.h"

#include "book/names.h"
#include "look/evaluate/values/compare.h"

#include <array>
#include <cmath>
#include <map>

namespace orrery::formula {
namespace {

/// The characters 0x80 to 0x9F of Windows-1252; 0 where there is none.
constexpr std::array<char32_t, 32> kWindows1252 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

Value Char(Call& call)
{
    const double code = call.Whole(0);
    if (!(code >= 1 && code <= 255))
        return CellError::Value;
    auto character = static_cast<char32_t>(code);
    if (character >= 0x80 && character <= 0x9F && kWindows1252[character - 0x80] != 0)
        character = kWindows1252[character - 0x80];
    return FromCharacters(std::u32string(1, character));
}

Value Code(Call& call)
{
    const std::u32string text = ToCharacters(call.Text(0));
    if (text.empty())
        return CellError::Value;
    const char32_t character = text.front();
    for (std::size_t at = 0; at < kWindows1252.size(); ++at)
        if (kWindows1252[at] == character)
            return static_cast<double>(at + 0x80);
    return character <= 0xFF ? static_cast<double>(character) : 63.0; // "?"
}

Value UniChar(Call& call)
{
    const double code = call.Whole(0);
    const bool isSurrogate = code >= 0xD800 && code < 0xE000;
    if (!(code >= 1 && code <= 0x10FFFF) || isSurrogate)
        return isSurrogate ? CellError::NotAvailable : CellError::Value;
    return FromCharacters(std::u32string(1, static_cast<char32_t>(code)));
}

Value UniCode(Call& call)
{
    const std::u32string text = ToCharacters(call.Text(0));
    return text.empty() ? Value(CellError::Value) : Value(static_cast<double>(text.front()));
}

/// The capital of each small letter, from the folding of names.
const std::map<char32_t, char32_t>& Capitals()
{
    static const auto kCapitals = [] {
        std::map<char32_t, char32_t> capitals;
        const auto add = [&](char32_t first, char32_t last) {
            for (char32_t character = first; character <= last; ++character) {
                const std::u32string folded =
                    ToCharacters(book::FoldCase(FromCharacters(std::u32string(1, character))));
                if (folded.size() == 1 && folded.front() != character)
                    capitals.try_emplace(folded.front(), character);
            }
        };
        add('A', 'Z');
        add(0xC0, 0x17D); // the long s has no capital of its own
        add(0x1A0, 0x556);
        add(0x1E00, 0x1EFE);
        add(0xFF21, 0xFF3A);
        return capitals;
    }();
    return kCapitals;
}

char32_t ToCapital(char32_t character)
{
    const auto found = Capitals().find(character);
    return found == Capitals().end() ? character : found->second;
}

char32_t ToSmall(char32_t character)
{
    const auto& capitals = Capitals();
    if (capitals.count(character) != 0 || character == 0xB5 || character == 0x17F ||
        character == 0x3C2)
        return character;
    const std::u32string folded =
        ToCharacters(book::FoldCase(FromCharacters(std::u32string(1, character))));
    return folded.size() == 1 ? folded.front() : character;
}

Value ChangeCase(Call& call, char32_t (*change)(char32_t))
{
    std::u32string text = ToCharacters(call.Text(0));
    for (char32_t& character : text)
        character = change(character);
    return FromCharacters(text);
}

bool IsLetter(char32_t character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= 0xC0 && character != 0xD7 && character != 0xF7 &&
            (character < 0x2000 || character > 0x2BFF));
}

Value Proper(Call& call)
{
    std::u32string text = ToCharacters(call.Text(0));
    bool isInWord = false;
    for (char32_t& character : text) {
        character = isInWord ? ToSmall(character) : ToCapital(character);
        isInWord = IsLetter(character);
    }
    return FromCharacters(text);
}

/// Removes blanks at both ends, and leaves one of several in a row.
Value TrimBlanks(Call& call)
{
    std::string trimmed;
    for (const char byte : call.Text(0)) {
        if (byte != ' ' || (!trimmed.empty() && trimmed.back() != ' '))
            trimmed += byte;
    }
    if (trimmed.ends_with(' '))
        trimmed.pop_back();
    return trimmed;
}

Value Clean(Call& call)
{
    std::string clean;
    for (const char byte : call.Text(0)) {
        if (static_cast<unsigned char>(byte) >= 0x20)
            clean += byte;
    }
    return clean;
}

} // namespace

const FunctionList& CharacterFunctions()
{
    static const FunctionList kFunctions = {
        {"CHAR", "v", Char},
        {"CODE", "v", Code},
        {"UNICHAR", "v", UniChar},
        {"UNICODE", "v", UniCode},
        {"UPPER", "v", [](Call& call) { return ChangeCase(call, ToCapital); }},
        {"LOWER", "v", [](Call& call) { return ChangeCase(call, ToSmall); }},
        {"PROPER", "v", Proper},
        {"TRIM", "v", TrimBlanks},
        {"CLEAN", "v", Clean},
    };
    return kFunctions;
}

} // namespace orrery::formula
