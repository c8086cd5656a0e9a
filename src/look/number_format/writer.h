#pragma once

#include "book/date_system.h"
#include "look/number_format/format_code.h"
#include "look/number_format/formatted_value.h"
#include "look/number_format/numerals.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orrery::look {

/// Appends what tokens show to a value's text.
class Writer {
public:
    Writer(FormattedValue& value, const SectionLocale& locale) : value_(value), numerals_(locale) {}

    void Text(std::string_view text) { value_.text += text; }
    /// Writes "0" to "9" in the digits that the section asks for, other characters unchanged.
    void Digit(char digit) { numerals_.AppendDigit(value_.text, digit); }
    void Digits(std::string_view digits);
    /// `number` in at least `width` digits.
    void Padded(std::int64_t number, std::size_t width);
    /// The same, in words where the section asks for them.
    void DatePart(std::int64_t number, std::size_t width);
    /// A number as General shows it, in words where the section asks for them.
    void General(std::string_view number);
    /// A token that shows the same for every value; others are left out.
    void Fixed(const Token& token);

private:
    FormattedValue& value_;
    Numerals numerals_;
};

/// Each writes the tokens of one kind of section for a number that is not negative.
void WriteNumber(const Section& section, double magnitude, Writer& writer);
/// A fraction's tokens before `end`, which is not behind its numerator's begin; `showsZero`: also
/// where "#" stands.
void WriteWhole(const Section& section, double whole, bool showsZero, std::size_t end,
                Writer& writer);
void WriteFraction(const Section& section, double magnitude, Writer& writer);
/// False for a date outside of the calendar.
bool WriteDate(const Section& section, double serial, book::DateSystem dates,
               std::uint16_t language, Writer& writer);
/// Whether a number section shows no digit but 0.
bool NumberRoundsToZero(const Section& section, double magnitude);
bool FractionRoundsToZero(const Section& section, double magnitude);

} // namespace orrery::look
