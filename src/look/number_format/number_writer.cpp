#include "look/number_format/decimal.h"
#include "look/number_format/writer.h"

#include <cstdlib>

namespace orrery::look {
namespace {

/// The power of ten of a mantissa with so many places before its point. More than one place:
/// multiples of their number, "##0.0E+0".
int ExponentOf(const Decimal& number, int places)
{
    if (number.IsZero()) {
        return 0;
    }
    if (places == 0) {
        return number.point;
    }
    const int exponent = number.point - 1;
    const int rest = ((exponent % places) + places) % places;
    return exponent - rest;
}

/// Writes the tokens of a number from left to right.
class NumberWriter {
public:
    NumberWriter(const Section& section, double magnitude, Writer& writer)
        : section_(section), writer_(writer), number_(ToDecimal(magnitude))
    {
        number_.Shift(section.scale);
        if (section.hasExponent) {
            TakeExponent();
        }
        number_.Round(section.fractionDigits);
        whole_ = number_.Whole();
        if (section.hasExponent && section.wholeDigits > 0) {
            ShowZero();
        }
        exponentText_ = std::to_string(std::abs(exponent_));
        if (exponent_ == 0) {
            exponentText_.clear();
        }
        FindLastZero();
    }

    void ShowZero() { whole_ = whole_.empty() ? "0" : whole_; }

    void Write(std::size_t end)
    {
        for (std::size_t i = 0; i < end; ++i) {
            WriteToken(section_.tokens[i]);
        }
    }

private:
    /// A mantissa that is rounded up to one more digit has the next exponent.
    void TakeExponent()
    {
        exponent_ = ExponentOf(number_, section_.wholeDigits);
        Decimal rounded = number_;
        rounded.Round(section_.fractionDigits - exponent_);
        exponent_ = ExponentOf(rounded.IsZero() ? number_ : rounded, section_.wholeDigits);
        number_.Shift(-exponent_);
    }

    void WriteToken(const Token& token)
    {
        switch (token.kind) {
        case TokenKind::Digit:
            return WriteDigit(token.symbol);
        case TokenKind::Point:
            WriteWholeBeforePoint();
            part_ = Part::Fraction;
            return writer_.Text(".");
        case TokenKind::Exponent:
            WriteWholeBeforePoint();
            part_ = Part::Exponent;
            place_ = section_.exponentDigits;
            hasStarted_ = false;
            return WriteExponentSign(token.symbol);
        default:
            return writer_.Fixed(token);
        }
    }

    void WriteExponentSign(char symbol)
    {
        writer_.Text("E");
        if (exponent_ < 0) {
            writer_.Text("-");
        }
        else if (symbol == '+') {
            writer_.Text("+");
        }
    }

    void WriteDigit(char symbol)
    {
        if (part_ == Part::Fraction) {
            return WriteFractionDigit(symbol);
        }
        const bool isExponent = part_ == Part::Exponent;
        const std::string& digits = isExponent ? exponentText_ : whole_;
        const int places = isExponent ? section_.exponentDigits : section_.wholeDigits;
        if (place_ < 0) {
            place_ = places;
        }
        --place_;
        if (!hasStarted_) { // the first place takes all digits before it
            for (auto at = static_cast<int>(digits.size()) - 1; at > place_; --at) {
                WriteWholeDigit(digits, at, symbol);
            }
        }
        WriteWholeDigit(digits, place_, symbol);
        hasStarted_ = true;
    }

    /// The digit at `place` before the point, counted from 0 at the point.
    void WriteWholeDigit(const std::string& digits, int place, char symbol)
    {
        const bool isSeparated =
            part_ == Part::Whole && section_.isGrouped && place > 0 && place % 3 == 0;
        const auto size = static_cast<int>(digits.size());
        if (place < size) {
            writer_.Digit(digits[static_cast<std::size_t>(size - 1 - place)]);
        }
        else if (symbol == '0') {
            writer_.Digit('0');
        }
        else if (symbol == '?') {
            writer_.Text(" ");
            return writer_.Text(isSeparated ? " " : "");
        }
        else {
            return;
        }
        writer_.Text(isSeparated ? "," : "");
    }

    void WriteFractionDigit(char symbol)
    {
        const int place = fractionPlace_++;
        const auto digits = static_cast<int>(number_.digits.size()) - number_.point;
        if (place < digits || place <= lastZero_) {
            writer_.Digit(number_.FractionDigit(place));
        }
        else if (symbol == '?') {
            writer_.Text(" ");
        }
    }

    /// ".00" has no place for the digits before its point.
    void WriteWholeBeforePoint()
    {
        if (part_ == Part::Whole && section_.wholeDigits == 0) {
            writer_.Digits(whole_);
        }
    }

    /// Up to the last "0" behind the point every place shows a digit.
    void FindLastZero()
    {
        int place = 0;
        bool isFraction = false;
        for (const auto& token : section_.tokens) {
            if (token.kind == TokenKind::Exponent) {
                return;
            }
            isFraction = isFraction || token.kind == TokenKind::Point;
            if (token.kind == TokenKind::Digit && isFraction) {
                lastZero_ = token.symbol == '0' ? place : lastZero_;
                ++place;
            }
        }
    }

    enum class Part : std::uint8_t { Whole, Fraction, Exponent };

    const Section& section_;
    Writer& writer_;
    Decimal number_; ///< scaled and rounded; of an exponent's number the mantissa
    std::string whole_;
    int exponent_ = 0;
    std::string exponentText_;
    Part part_ = Part::Whole;
    int place_ = -1; ///< of the next digit plus one; -1: none yet
    bool hasStarted_ = false;
    int fractionPlace_ = 0;
    int lastZero_ = -1;
};

} // namespace

void WriteNumber(const Section& section, double magnitude, Writer& writer)
{
    NumberWriter(section, magnitude, writer).Write(section.tokens.size());
}

void WriteWhole(const Section& section, double whole, bool showsZero, std::size_t end,
                Writer& writer)
{
    NumberWriter number(section, whole, writer);
    if (showsZero) {
        number.ShowZero();
    }
    number.Write(end);
}

bool NumberRoundsToZero(const Section& section, double magnitude)
{
    Decimal number = ToDecimal(magnitude);
    number.Shift(section.scale);
    if (!section.hasExponent) {
        number.Round(section.fractionDigits);
    }
    return number.IsZero();
}

} // namespace orrery::look
