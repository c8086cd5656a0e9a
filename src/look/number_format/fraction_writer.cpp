#include "look/number_format/decimal.h"
#include "look/number_format/writer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace orrery::look {
namespace {

struct Ratio {
    double numerator = 0;
    double denominator = 1;
};

constexpr double kEqual = 5e-8; // Excel takes a remainder this small for nothing

/// The last convergent of the continued fraction whose denominator is not larger than `largest`.
Ratio Approximate(double fraction, double largest)
{
    Ratio before{1, 0};
    Ratio last{0, 1};
    double rest = fraction;
    while (rest > kEqual) {
        rest = 1 / rest;
        const double term = std::floor(rest);
        const Ratio next{term * last.numerator + before.numerator,
                         term * last.denominator + before.denominator};
        if (next.denominator > largest) {
            break;
        }
        before = last;
        last = next;
        rest -= term;
    }
    return last;
}

std::size_t Places(const Section& section, std::size_t begin, std::size_t end)
{
    const auto first = section.tokens.begin();
    return static_cast<std::size_t>(std::count_if(
        first + static_cast<std::ptrdiff_t>(begin), first + static_cast<std::ptrdiff_t>(end),
        [](const Token& token) { return token.kind == TokenKind::Digit; }));
}

class FractionWriter {
public:
    FractionWriter(const Section& section, double magnitude, Writer& writer)
        : section_(section), writer_(writer), whole_(std::floor(magnitude)),
          ratio_(Reduce(magnitude - whole_))
    {
        if (section.wholeDigits == 0) {
            ratio_.numerator += whole_ * ratio_.denominator;
        }
        else if (ratio_.numerator >= ratio_.denominator) {
            whole_ += 1;
            ratio_ = {0, 1};
        }
    }

    void Write()
    {
        const bool isBlank =
            section_.wholeDigits > 0 && ratio_.numerator == 0 && !HasSymbol('0', Part::Numerator);
        const bool isWholeShown = whole_ > 0 || isBlank || HasSymbol('0', Part::Whole);
        const bool isFlush = section_.tokens[section_.numeratorBegin].symbol == '#' &&
                             (isBlank ? !HasSymbol('?', Part::Fraction) : !isWholeShown);
        if (section_.wholeDigits > 0 || section_.numeratorBegin > 0) {
            WriteWhole(section_, whole_, isBlank,
                       isFlush ? SeparatorBegin() : section_.numeratorBegin, writer_);
        }
        if (!isBlank) {
            WriteNumerator();
            WriteDenominator();
        }
        else if (!isFlush) {
            WriteBlank();
        }
        for (std::size_t i = section_.denominatorEnd; i < section_.tokens.size(); ++i) {
            writer_.Fixed(section_.tokens[i]);
        }
    }

    bool IsZero() const
    {
        return (section_.wholeDigits == 0 || whole_ == 0) && ratio_.numerator == 0;
    }

private:
    Ratio Reduce(double fraction) const
    {
        if (section_.denominator > 0) {
            const double denominator = section_.denominator;
            return {std::round(fraction * denominator), denominator};
        }
        const auto places = Places(section_, section_.slash, section_.denominatorEnd);
        return Approximate(fraction, std::pow(10, std::min<std::size_t>(places, 7)) - 1);
    }

    enum class Part : std::uint8_t { Whole, Numerator, Fraction };

    bool HasSymbol(char symbol, Part part) const
    {
        const auto first = section_.tokens.begin();
        const auto at = [&](std::size_t i) { return first + static_cast<std::ptrdiff_t>(i); };
        const auto begin = part == Part::Whole ? first : at(section_.numeratorBegin);
        const auto end = part == Part::Whole       ? at(section_.numeratorBegin)
                         : part == Part::Numerator ? at(section_.slash)
                                                   : at(section_.denominatorEnd);
        return std::any_of(begin, end, [=](const Token& token) { return token.symbol == symbol; });
    }

    /// Behind the last digit before the numerator.
    std::size_t SeparatorBegin() const
    {
        std::size_t begin = section_.numeratorBegin;
        while (begin > 0 && section_.tokens[begin - 1].kind != TokenKind::Digit) {
            --begin;
        }
        return begin;
    }

    /// A whole number leaves the room of the fraction empty.
    void WriteBlank()
    {
        for (std::size_t i = section_.numeratorBegin; i < section_.denominatorEnd; ++i) {
            const Token& token = section_.tokens[i];
            writer_.Text(token.kind == TokenKind::Digit && token.symbol == '#' ? "" : " ");
        }
    }

    void WriteNumerator()
    {
        const std::string digits = Digits(ratio_.numerator);
        auto places = Places(section_, section_.numeratorBegin, section_.slash);
        bool hasStarted = false;
        for (std::size_t i = section_.numeratorBegin; i < section_.slash; ++i) {
            const Token& token = section_.tokens[i];
            if (token.kind != TokenKind::Digit) {
                writer_.Fixed(token);
                continue;
            }
            if (!hasStarted && digits.size() > places) {
                writer_.Digits(digits.substr(0, digits.size() - places));
            }
            hasStarted = true;
            if (digits.size() >= places) {
                writer_.Digit(digits[digits.size() - places]);
            }
            else {
                writer_.Text(token.symbol == '?' ? " " : token.symbol == '0' ? "0" : "");
            }
            --places;
        }
        writer_.Text("/");
    }

    void WriteDenominator()
    {
        const std::string digits = Digits(ratio_.denominator);
        auto places = Places(section_, section_.slash, section_.denominatorEnd);
        std::size_t at = 0;
        bool hasDigits = false;
        for (std::size_t i = section_.slash + 1; i < section_.denominatorEnd; ++i) {
            const Token& token = section_.tokens[i];
            const bool isDigit =
                token.kind == TokenKind::Digit || token.kind == TokenKind::FixedDigit;
            if (!isDigit) {
                writer_.Fixed(token);
            }
            else if (section_.denominator > 0) {
                writer_.Text(hasDigits ? "" : digits);
            }
            else if (token.symbol == '0' && at == 0 && digits.size() < places) {
                writer_.Digit('0');
                --places;
            }
            else if (at < digits.size()) {
                writer_.Digit(digits[at++]);
            }
            else {
                writer_.Text(token.symbol == '?' ? " " : "");
            }
            hasDigits = hasDigits || isDigit;
        }
    }

    /// The digits of a whole number; of the largest one if it is none any more.
    static std::string Digits(double number)
    {
        const std::string digits =
            ToDecimal(std::min(number, std::numeric_limits<double>::max())).Whole();
        return digits.empty() ? "0" : digits;
    }

    const Section& section_;
    Writer& writer_;
    double whole_;
    Ratio ratio_;
};

} // namespace

void WriteFraction(const Section& section, double magnitude, Writer& writer)
{
    FractionWriter(section, magnitude, writer).Write();
}

bool FractionRoundsToZero(const Section& section, double magnitude)
{
    FormattedValue nothing;
    Writer writer(nothing, section.locale);
    return FractionWriter(section, magnitude, writer).IsZero();
}

} // namespace orrery::look
