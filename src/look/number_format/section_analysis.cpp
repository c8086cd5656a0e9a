// What the marks of a section mean depends on what stands around them: "m" is a minute beside hours
// and seconds, "," groups digits or scales, "/" makes a fraction.

#include "look/number_format/format_code.h"

#include <algorithm>
#include <utility>

namespace orrery::look {
namespace {

constexpr int kLargestDenominator = 99'999;

bool Has(const Section& section, TokenKind kind)
{
    return std::any_of(section.tokens.begin(), section.tokens.end(),
                       [=](const Token& token) { return token.kind == kind; });
}

bool HasDatePart(const Section& section)
{
    return std::any_of(section.tokens.begin(), section.tokens.end(),
                       [](const Token& token) { return IsDatePart(token.kind); });
}

void MakeLiteral(Token& token, std::string text)
{
    token = {TokenKind::Literal, 0, 1, std::move(text)};
}

/// Makes a literal of a mark that means nothing in its section; others stay.
void MakeMarkLiteral(Token& token)
{
    switch (token.kind) {
    case TokenKind::Point:
        return MakeLiteral(token, ".");
    case TokenKind::Comma:
        return MakeLiteral(token, ",");
    case TokenKind::Percent:
        return MakeLiteral(token, "%");
    case TokenKind::Slash:
        return MakeLiteral(token, "/");
    case TokenKind::FixedDigit:
        return MakeLiteral(token, std::string(1, token.symbol));
    default:
        return;
    }
}

void MakeMarksLiteral(Section& section)
{
    std::for_each(section.tokens.begin(), section.tokens.end(), MakeMarkLiteral);
}

/// Reads the digits of a number from left to right.
class NumberAnalysis {
public:
    explicit NumberAnalysis(Section& section) : section_(section) {}

    void Run(std::size_t end)
    {
        for (std::size_t i = 0; i < end; ++i) {
            Take(i);
        }
        EndPart();
    }

private:
    enum class Part : std::uint8_t { Whole, Fraction, Exponent };

    void Take(std::size_t i)
    {
        Token& token = section_.tokens[i];
        const bool followsDigit = std::exchange(followsDigit_, false);
        switch (token.kind) {
        case TokenKind::Digit:
            TakeDigit();
            break;
        case TokenKind::Comma:
            TakeComma(token, followsDigit);
            break;
        case TokenKind::Point:
            TakePoint(token);
            break;
        case TokenKind::Exponent:
            EndPart();
            section_.hasExponent = true;
            part_ = Part::Exponent;
            break;
        case TokenKind::Percent:
            section_.scale += hasPercent_ ? 0 : 2;
            hasPercent_ = true;
            break;
        default:
            MakeMarkLiteral(token);
        }
    }

    void TakeDigit()
    {
        section_.isGrouped = section_.isGrouped || commas_ > 0;
        commas_ = 0;
        followsDigit_ = true;
        int& count = part_ == Part::Whole      ? section_.wholeDigits
                     : part_ == Part::Fraction ? section_.fractionDigits
                                               : section_.exponentDigits;
        ++count;
    }

    void TakeComma(Token& token, bool followsDigit)
    {
        if (!followsDigit || part_ == Part::Exponent) {
            return MakeMarkLiteral(token);
        }
        followsDigit_ = true;
        ++commas_;
        MakeLiteral(token, {});
    }

    void TakePoint(Token& token)
    {
        if (part_ != Part::Whole) {
            return MakeMarkLiteral(token);
        }
        EndPart();
        section_.hasPoint = true;
        part_ = Part::Fraction;
    }

    /// Commas that no digit follows divide by a thousand each.
    void EndPart()
    {
        section_.scale -= 3 * commas_;
        commas_ = 0;
    }

    Section& section_;
    Part part_ = Part::Whole;
    bool hasPercent_ = false;
    bool followsDigit_ = false; ///< the last token was a digit, or a comma behind one
    int commas_ = 0;            ///< since the last digit
};

bool IsPlaceholder(const Token& token)
{
    return token.kind == TokenKind::Digit;
}

/// The first token at or after `at` that is not a literal or blank.
std::size_t SkipLiterals(const Section& section, std::size_t at)
{
    const auto& tokens = section.tokens;
    while (at < tokens.size() &&
           (tokens[at].kind == TokenKind::Literal || tokens[at].kind == TokenKind::Blank)) {
        ++at;
    }
    return at;
}

/// Takes the digits behind the slash: a number, or places.
bool TakeDenominator(Section& section)
{
    const auto& tokens = section.tokens;
    auto at = SkipLiterals(section, section.slash + 1);
    const bool isFixed = at < tokens.size() && tokens[at].kind == TokenKind::FixedDigit;
    const auto begin = at;
    while (at < tokens.size() &&
           (IsPlaceholder(tokens[at]) || (isFixed && tokens[at].kind == TokenKind::FixedDigit))) {
        if (isFixed) {
            const char digit = tokens[at].kind == TokenKind::Digit ? '0' : tokens[at].symbol;
            section.denominator =
                std::min(section.denominator * 10 + (digit - '0'), kLargestDenominator);
        }
        ++at;
    }
    section.denominatorEnd = at;
    return at > begin;
}

/// Finds a slash with digits on both sides.
bool FindFraction(Section& section)
{
    auto& tokens = section.tokens;
    const auto slash = std::find_if(tokens.begin(), tokens.end(), [](const Token& token) {
        return token.kind == TokenKind::Slash;
    });
    if (slash == tokens.end() || Has(section, TokenKind::Point) ||
        Has(section, TokenKind::Exponent)) {
        return false;
    }
    section.slash = static_cast<std::size_t>(slash - tokens.begin());
    std::size_t begin = section.slash;
    while (begin > 0 && tokens[begin - 1].kind == TokenKind::Literal) {
        --begin;
    }
    const std::size_t end = begin;
    while (begin > 0 && IsPlaceholder(tokens[begin - 1])) {
        --begin;
    }
    section.numeratorBegin = begin;
    return begin < end && TakeDenominator(section);
}

void AnalyzeFraction(Section& section)
{
    section.kind = SectionKind::Fraction;
    NumberAnalysis(section).Run(section.numeratorBegin);
    section.scale = 0;
    for (std::size_t i = section.denominatorEnd; i < section.tokens.size(); ++i) {
        MakeMarkLiteral(section.tokens[i]);
    }
}

bool IsHour(TokenKind kind)
{
    return kind == TokenKind::Hour || kind == TokenKind::ElapsedHours;
}

bool IsSecond(TokenKind kind)
{
    return kind == TokenKind::Second || kind == TokenKind::ElapsedSeconds;
}

/// "m" and "mm" are minutes behind hours and before seconds. ECMA-376 18.8.31
void FindMinutes(Section& section)
{
    Token* previous = nullptr;
    for (auto& token : section.tokens) {
        if (!IsDatePart(token.kind) || token.kind == TokenKind::AmPm) {
            continue;
        }
        if (token.kind == TokenKind::Month && token.count <= 2 && previous &&
            IsHour(previous->kind)) {
            token.kind = TokenKind::Minute;
        }
        if (IsSecond(token.kind) && previous && previous->kind == TokenKind::Month &&
            previous->count <= 2) {
            previous->kind = TokenKind::Minute;
        }
        previous = &token;
    }
}

void TakeDatePart(const Token& token, Section& section)
{
    const auto kind = token.kind;
    if (kind == TokenKind::SecondFraction) {
        section.secondDigits = static_cast<int>(std::min<std::size_t>(token.count, 3));
    }
    section.hasAmPm = section.hasAmPm || kind == TokenKind::AmPm;
    section.hasDayOfMonth = section.hasDayOfMonth || (kind == TokenKind::Day && token.count <= 2);
    section.hasTime = section.hasTime || IsHour(kind) || IsSecond(kind) ||
                      kind == TokenKind::Minute || kind == TokenKind::ElapsedMinutes ||
                      kind == TokenKind::AmPm;
}

bool AnalyzeDate(Section& section)
{
    section.kind = SectionKind::Date;
    FindMinutes(section);
    MakeMarksLiteral(section);
    for (const auto& token : section.tokens) {
        TakeDatePart(token, section);
    }
    return !Has(section, TokenKind::Digit) && !Has(section, TokenKind::General) &&
           !Has(section, TokenKind::Text);
}

} // namespace

bool AnalyzeSection(Section& section)
{
    if (HasDatePart(section)) {
        return AnalyzeDate(section);
    }
    if (section.tokens.empty() && (section.color || section.condition)) {
        section.tokens.push_back({TokenKind::General, 0, 1, {}}); // "[Red]"
    }
    const bool hasDigits = Has(section, TokenKind::Digit);
    const bool isGeneral = Has(section, TokenKind::General);
    const bool isText = Has(section, TokenKind::Text);
    if (hasDigits && (isGeneral || isText)) {
        return false;
    }
    if (hasDigits && FindFraction(section)) {
        AnalyzeFraction(section);
    }
    else if (hasDigits) {
        section.kind = SectionKind::Number;
        NumberAnalysis(section).Run(section.tokens.size());
    }
    else {
        section.kind = isText      ? SectionKind::Text
                       : isGeneral ? SectionKind::General
                                   : SectionKind::Literal;
        MakeMarksLiteral(section);
    }
    return true;
}

} // namespace orrery::look
