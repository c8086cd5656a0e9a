#include "look/number_format/number_format.h"

#include "look/number_format/format_code.h"
#include "look/number_format/locale_names.h"
#include "look/number_format/writer.h"

#include <cmath>
#include <utility>
#include <variant>

namespace orrery::look {
namespace {

/// The system's long date or time takes the place of a section that asks for it.
void UseSystemDates(std::vector<Section>& sections, std::uint16_t language)
{
    for (auto& section : sections) {
        if (!section.locale.isSystemDate && !section.locale.isSystemTime) {
            continue;
        }
        const auto names = NamesOf(language);
        auto system =
            ParseFormatCode(section.locale.isSystemDate ? names.LongDate() : names.LongTime());
        if (!system || system->numbers.empty()) {
            continue;
        }
        system->numbers[0].color = section.color;
        system->numbers[0].condition = section.condition;
        section = std::move(system->numbers[0]);
    }
}

/// A number alone, in European digits.
bool IsPlainGeneral(const Section& section)
{
    return section.kind == SectionKind::General && section.tokens.size() == 1 &&
           section.locale.numerals == 0 && section.locale.ideographs == 0;
}

FormattedValue GeneralNumber(double number)
{
    FormattedValue value;
    value.text = FormatGeneral(number);
    value.isGeneral = true;
    return value;
}

FormattedValue TooWide()
{
    FormattedValue value;
    value.text = "########";
    value.isTooWide = true;
    return value;
}

/// Writes `text` where the section asks for it, at most as often as a cell could hold.
void WriteText(const Section& section, std::string_view text, Writer& writer)
{
    constexpr std::size_t kLongestText = 1'048'576;
    std::size_t written = 0;
    for (const auto& token : section.tokens) {
        if (token.kind == TokenKind::Text || token.kind == TokenKind::General) {
            writer.Text(written > kLongestText ? "" : text);
            written += text.size();
        }
        else {
            writer.Fixed(token);
        }
    }
}

void WriteGeneral(const Section& section, double magnitude, Writer& writer)
{
    const std::string text = FormatGeneral(magnitude);
    for (const auto& token : section.tokens) {
        if (token.kind == TokenKind::Text || token.kind == TokenKind::General) {
            writer.General(text);
        }
        else {
            writer.Fixed(token);
        }
    }
}

FormattedValue FormatText(const FormatCode& code, const std::string& text)
{
    FormattedValue value;
    if (!code.text) {
        value.text = text;
        return value;
    }
    Writer writer(value, code.text->locale);
    WriteText(*code.text, text, writer);
    value.color = code.text->color;
    return value;
}

/// What General, number and fraction sections show of a number that is not negative.
void WriteMagnitude(const Section& section, double magnitude, Writer& writer)
{
    switch (section.kind) {
    case SectionKind::Number:
        return WriteNumber(section, magnitude, writer);
    case SectionKind::Fraction:
        return WriteFraction(section, magnitude, writer);
    default:
        return WriteGeneral(section, magnitude, writer);
    }
}

bool RoundsToZero(const Section& section, double magnitude)
{
    switch (section.kind) {
    case SectionKind::Number:
        return NumberRoundsToZero(section, magnitude);
    case SectionKind::Fraction:
        return FractionRoundsToZero(section, magnitude);
    default:
        return false;
    }
}

/// Days before the calendar begins are dates only where it begins in 1904: "-1/2/1904".
FormattedValue FormatDate(const Section& section, double number, bool dropsSign,
                          book::DateSystem dates, std::uint16_t language)
{
    FormattedValue value;
    value.color = section.color;
    Writer writer(value, section.locale);
    if (number < 0 && dates == book::DateSystem::From1900) {
        return TooWide();
    }
    writer.Text(number < 0 && !dropsSign ? "-" : "");
    return WriteDate(section, std::abs(number), dates, language, writer) ? value : TooWide();
}

FormattedValue FormatNumber(const FormatCode& code, double number, book::DateSystem dates,
                            std::uint16_t language)
{
    if (code.numbers.empty()) {
        return GeneralNumber(number);
    }
    const auto [section, dropsSign] = ChooseSection(code, number);
    if (section == nullptr) {
        return code.numbers.size() == 1 ? GeneralNumber(number) : TooWide();
    }
    if (section->kind == SectionKind::Date) {
        return FormatDate(*section, number, dropsSign, dates, language);
    }
    FormattedValue value;
    value.color = section->color;
    value.isGeneral = IsPlainGeneral(*section);
    Writer writer(value, section->locale);
    const double magnitude = std::abs(number);
    writer.Text(number < 0 && !dropsSign && !RoundsToZero(*section, magnitude) ? "-" : "");
    WriteMagnitude(*section, magnitude, writer);
    return value;
}

} // namespace

NumberFormat::NumberFormat(std::string_view code, std::uint16_t language) : language_(language)
{
    auto parsed = ParseFormatCode(code).value_or(FormatCode{});
    UseSystemDates(parsed.numbers, language);
    code_ = std::make_shared<const FormatCode>(std::move(parsed));
}

FormattedValue NumberFormat::Format(const book::CellContent& content, book::DateSystem dates) const
{
    FormattedValue value;
    if (const auto* number = std::get_if<double>(&content)) {
        if (!std::isfinite(*number)) {
            value.text = ErrorText(book::CellError::Number);
            return value;
        }
        return FormatNumber(*code_, *number, dates, language_);
    }
    if (const auto* text = std::get_if<std::string>(&content)) {
        return FormatText(*code_, *text);
    }
    if (const auto* truth = std::get_if<bool>(&content)) {
        return FormatText(*code_, *truth ? "TRUE" : "FALSE");
    }
    if (const auto* error = std::get_if<book::CellError>(&content)) {
        value.text = ErrorText(*error);
    }
    return value;
}

bool NumberFormat::IsDate() const
{
    return !code_->numbers.empty() && code_->numbers[0].kind == SectionKind::Date;
}

bool NumberFormat::IsGeneral() const
{
    if (code_->numbers.empty()) {
        return !code_->text;
    }
    return IsPlainGeneral(code_->numbers[0]);
}

bool NumberFormat::IsText() const
{
    return code_->numbers.empty() && code_->text;
}

} // namespace orrery::look
