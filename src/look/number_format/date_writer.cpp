#include "look/number_format/locale_names.h"
#include "look/number_format/serial_date.h"
#include "look/number_format/writer.h"
#include "util/text.h"
#include "util/unicode.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>

namespace orrery::look {
namespace {

constexpr int kYearsToBuddha = 543;
constexpr int kYearsToDangun = 2333;

/// Windows' identifiers of calendars that count years differently. [MS-LCID] 2.2
constexpr std::uint8_t kTaiwanCalendar = 4;
constexpr std::uint8_t kKoreanCalendar = 5;
constexpr std::uint8_t kThaiCalendar = 7;

/// "[$-FC19]": a Slavic language's names as behind a day, whatever else the section has.
constexpr std::uint16_t kInflected = 0xFC00;

/// A year as a calendar of eras counts it.
struct EraYear {
    std::string_view shortest; ///< "R"
    std::string_view brief;    ///< "令"
    std::string_view name;     ///< "令和"; empty where years have no era
    int year = 1;
};

constexpr int kYearsToRepublic = 1911;

struct JapaneseEra {
    int year, month, day; ///< the first day
    std::string_view shortest, brief, name;
};

/// The newest first.
constexpr std::array<JapaneseEra, 5> kJapaneseEras{{{2019, 5, 1, "R", "令", "令和"},
                                                    {1989, 1, 8, "H", "平", "平成"},
                                                    {1926, 12, 25, "S", "昭", "昭和"},
                                                    {1912, 7, 30, "T", "大", "大正"},
                                                    {1868, 1, 1, "M", "明", "明治"}}};

/// Japan's eras for Japanese, the Republic's for Chinese as in Taiwan, else the plain year.
EraYear EraYearOf(const SerialDate& date, std::uint16_t language)
{
    if (language == kChineseOfTaiwan && date.year > kYearsToRepublic) {
        return {"民國", "民國", "中華民國", date.year - kYearsToRepublic};
    }
    if ((language & kPrimaryLanguage) == kJapanese) {
        for (const auto& era : kJapaneseEras) {
            if (std::tie(date.year, date.month, date.day) >=
                std::tie(era.year, era.month, era.day)) {
                return {era.shortest, era.brief, era.name, date.year - era.year + 1};
            }
        }
    }
    return {{}, {}, {}, date.year};
}

std::string_view FirstCharacter(std::string_view text)
{
    std::size_t at = 0;
    if (!text.empty()) {
        util::NextCharacter(text, at);
    }
    return text.substr(0, at);
}

class DateWriter {
public:
    DateWriter(const Section& section, const SerialDate& date, std::uint16_t language,
               Writer& writer)
        : section_(section), date_(date), language_(language), names_(NamesOf(language)),
          writer_(writer)
    {
    }

    void Write()
    {
        for (const auto& token : section_.tokens) {
            WriteToken(token);
        }
    }

private:
    void WriteToken(const Token& token)
    {
        const std::size_t two = std::min<std::size_t>(token.count, 2);
        switch (token.kind) {
        case TokenKind::Year:
            return WriteYear(token.count, YearOfCalendar());
        case TokenKind::BuddhistYear:
            return WriteYear(token.count, date_.year + kYearsToBuddha);
        case TokenKind::Month:
            return WriteMonth(token.count);
        case TokenKind::Day:
            return WriteDay(token.count);
        case TokenKind::Hour:
            return writer_.DatePart(section_.hasAmPm ? (date_.hour + 11) % 12 + 1 : date_.hour,
                                    two);
        case TokenKind::Minute:
            return writer_.DatePart(date_.minute, two);
        case TokenKind::Second:
            return writer_.DatePart(date_.second, two);
        case TokenKind::SecondFraction:
            return WriteSecondFraction(token.count);
        case TokenKind::ElapsedHours:
            return writer_.Padded(date_.totalSeconds / 3'600, token.count);
        case TokenKind::ElapsedMinutes:
            return writer_.Padded(date_.totalSeconds / 60, token.count);
        case TokenKind::ElapsedSeconds:
            return writer_.Padded(date_.totalSeconds, token.count);
        case TokenKind::EraName:
            return WriteEraName(token.count);
        case TokenKind::EraYear:
            return WriteEraYear(two);
        case TokenKind::AmPm:
            return WriteHalfOfDay(token.text);
        default:
            return writer_.Fixed(token);
        }
    }

    int YearOfCalendar() const
    {
        switch (section_.locale.calendar) {
        case kTaiwanCalendar:
            return EraYearOf(date_, kChineseOfTaiwan).year;
        case kKoreanCalendar:
            return date_.year + kYearsToDangun;
        case kThaiCalendar:
            return date_.year + kYearsToBuddha;
        default:
            return date_.year;
        }
    }

    void WriteYear(std::size_t count, int year)
    {
        if (count <= 2) {
            writer_.Padded(year % 100, 2);
        }
        else {
            writer_.Padded(year, 4);
        }
    }

    void WriteMonth(std::size_t count)
    {
        const auto month = static_cast<std::size_t>(date_.month - 1);
        if (count <= 2) {
            writer_.DatePart(date_.month, count);
        }
        else if (count == 3) {
            writer_.Text(names_.ShortMonth(month));
        }
        else if (count == 5) {
            writer_.Text(FirstCharacter(names_.Month(month)));
        }
        else {
            const bool isInflected = (language_ & kInflected) == kInflected;
            writer_.Text(section_.hasDayOfMonth || isInflected ? names_.MonthOfDate(month)
                                                               : names_.Month(month));
        }
    }

    void WriteDay(std::size_t count)
    {
        const auto weekday = static_cast<std::size_t>(date_.weekday);
        if (count <= 2) {
            writer_.DatePart(date_.day, count);
        }
        else {
            writer_.Text(count == 3 ? names_.ShortDay(weekday) : names_.Day(weekday));
        }
    }

    void WriteSecondFraction(std::size_t count)
    {
        constexpr std::size_t kMostDigits = 3;
        writer_.Text(".");
        writer_.Padded(date_.fraction, std::min(count, kMostDigits));
        for (std::size_t i = kMostDigits; i < count; ++i) {
            writer_.Digit('0');
        }
    }

    /// 十二 of a short year, but 一〇九.
    void WriteEraYear(std::size_t width)
    {
        const auto year = EraYearOf(date_, language_).year;
        if (year < 100) {
            writer_.DatePart(year, width);
        }
        else {
            writer_.Padded(year, width);
        }
    }

    void WriteEraName(std::size_t count)
    {
        const auto era = EraYearOf(date_, language_);
        writer_.Text(count == 1 ? era.shortest : count == 2 ? era.brief : era.name);
    }

    /// "A/P" is written as it stands; the names of the halves are the language's.
    void WriteHalfOfDay(std::string_view halves)
    {
        const std::size_t half = date_.hour < 12 ? 0 : 1;
        if (util::EqualIgnoringCase(halves, "AM/PM")) {
            return writer_.Text(names_.HalfOfDay(half));
        }
        const auto slash = halves.find('/');
        writer_.Text(half == 0 ? halves.substr(0, slash) : halves.substr(slash + 1));
    }

    const Section& section_;
    const SerialDate& date_;
    std::uint16_t language_;
    LocaleNames names_;
    Writer& writer_;
};

} // namespace

bool WriteDate(const Section& section, double serial, book::DateSystem dates,
               std::uint16_t language, Writer& writer)
{
    // A time that is not shown does not round the date up.
    const auto date =
        ToSerialDate(section.hasTime ? serial : std::floor(serial), section.secondDigits, dates);
    if (!date) {
        return false;
    }
    const auto own = section.locale.language;
    DateWriter(section, *date, own != 0 ? own : language, writer).Write();
    return true;
}

} // namespace orrery::look
