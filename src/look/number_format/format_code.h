#pragma once

#include "book/look/color.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::look {

enum class TokenKind : std::uint8_t {
    Literal,    ///< `text` as it stands
    Blank,      ///< as wide as `text`, "_x"
    Fill,       ///< `text` over the rest of the cell, "*x"
    Text,       ///< "@"
    General,    ///< the number as General shows it
    Digit,      ///< `symbol` is 0, # or ?
    FixedDigit, ///< `symbol` is 1 to 9: of a fraction's denominator, else a literal
    Point,
    Comma,    ///< between digits or behind them
    Percent,  ///< also a literal
    Exponent, ///< `symbol` is the sign: + or -
    Slash,    ///< of a fraction, or a literal
    Year,     ///< from here to `AmPm` parts of dates and times, of `count` letters
    Month,
    Day, ///< from three letters the weekday
    Hour,
    Minute,
    Second,
    SecondFraction, ///< ".000"
    ElapsedHours,   ///< "[h]"
    ElapsedMinutes,
    ElapsedSeconds,
    BuddhistYear, ///< "bb", "bbbb"
    EraName,      ///< "g", "gg", "ggg"
    EraYear,      ///< "e", "ee"; without eras the year
    AmPm          ///< `text` is "AM/PM" or "A/P" as written, or another language's pair
};

struct Token {
    TokenKind kind = TokenKind::Literal;
    char symbol = 0;
    std::size_t count = 1;
    std::string text;
};

constexpr bool IsDatePart(TokenKind kind)
{
    return kind >= TokenKind::Year;
}

enum class Comparison : std::uint8_t {
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual
};

/// "[>=100]"
struct SectionCondition {
    Comparison comparison = Comparison::Equal;
    double limit = 0;
};

/// What "[$-D07041E]" says. Language 0: the one of the display.
struct SectionLocale {
    std::uint16_t language = 0;  ///< Windows' language identifier
    std::uint8_t calendar = 0;   ///< Windows' calendar identifier: 7 is the Buddhist one
    std::uint8_t numerals = 0;   ///< 0x0D: Thai digits
    std::uint8_t ideographs = 0; ///< 1 to 3: "[DBNum1]" to "[DBNum3]"
    bool isSystemDate = false;   ///< "[$-F800]"
    bool isSystemTime = false;   ///< "[$-F400]"
};

enum class SectionKind : std::uint8_t { Literal, General, Number, Fraction, Date, Text };

/// The part of a code between semicolons.
struct Section {
    std::vector<Token> tokens;
    SectionKind kind = SectionKind::Literal;
    std::optional<SectionCondition> condition;
    std::optional<book::Color> color;
    SectionLocale locale;

    // Of a number
    int wholeDigits = 0;
    int fractionDigits = 0;
    int exponentDigits = 0;
    bool hasPoint = false;
    bool hasExponent = false;
    bool isGrouped = false;
    int scale = 0; ///< power of ten that the number is multiplied by: 2 for "%", -3 for each ","

    // Of a fraction, as offsets in `tokens`
    std::size_t numeratorBegin = 0;
    std::size_t slash = 0;
    std::size_t denominatorEnd = 0;
    int denominator = 0; ///< 0: as many digits as it has places

    // Of a date
    int secondDigits = 0; ///< behind the point
    bool hasTime = false;
    bool hasAmPm = false;
    bool hasDayOfMonth = false;
};

/// A whole code.
struct FormatCode {
    std::vector<Section> numbers; ///< at most three; none: General
    std::optional<Section> text;
};

/// Damaged codes give `std::nullopt`. An empty code has no sections for numbers.
std::optional<FormatCode> ParseFormatCode(std::string_view code);

/// The section that shows a number.
struct SectionChoice {
    const Section* section = nullptr;
    bool dropsSign = false; ///< it is for negative numbers alone, and says so itself
};

/// No section: no condition holds. The code has sections for numbers.
SectionChoice ChooseSection(const FormatCode& code, double number);

/// The sections as they are written, with what stands in their brackets; `std::nullopt` if the code
/// is damaged.
std::optional<std::vector<Section>> ReadSections(std::string_view code);

/// Finds out what a section shows and what its marks mean there; false if they contradict each
/// other.
bool AnalyzeSection(Section& section);

/// Takes what stands in brackets, without them: a colour, a condition, a language with a currency,
/// an elapsed time. What is unknown is left out.
void ReadBracket(std::string_view text, Section& section);

} // namespace orrery::look
