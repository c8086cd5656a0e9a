#include "look/evaluate/values/number_text.h"

#include "look/evaluate/values/dates.h"
#include "util/numbers.h"
#include "util/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <vector>

namespace orrery::formula {
namespace {

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

/// Removes commas between groups of three digits; nothing if one stands elsewhere.
std::optional<std::string> WithoutGroups(std::string_view text)
{
    std::string plain;
    const std::size_t end = std::min(text.find_first_of(".eE"), text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != ',') {
            plain += text[at];
            continue;
        }
        const std::size_t next = std::min(text.find(',', at + 1), end);
        if (at == 0 || at >= end || next != at + 4)
            return std::nullopt;
    }
    return plain;
}

std::optional<double> PlainNumber(std::string_view text)
{
    if (text.empty() || (!IsDigit(text.front()) && text.front() != '.'))
        return std::nullopt;
    const auto plain = WithoutGroups(text);
    return plain ? util::ReadNumber(*plain) : std::nullopt;
}

/// With a sign, a currency, per cent.
std::optional<double> DecoratedNumber(std::string_view text)
{
    double factor = 1;
    if (text.size() > 2 && text.front() == '(' && text.back() == ')') {
        factor = -1;
        text = util::Trim(text.substr(1, text.size() - 2));
    }
    for (int signs = 0;
         !text.empty() && (text.front() == '-' || text.front() == '+' || text.front() == '$');
         text = util::Trim(text.substr(1))) {
        signs += text.front() != '$' ? 1 : 0;
        if (signs > 1)
            return std::nullopt;
        factor *= text.front() == '-' ? -1 : 1;
    }
    if (text.ends_with('%')) {
        factor /= 100;
        text = util::Trim(text.substr(0, text.size() - 1));
    }
    const auto number = PlainNumber(text);
    return number ? std::optional(*number * factor) : std::nullopt;
}

/// A date or a time in pieces: digits, letters, and the characters between.
struct Piece {
    bool isNumber = false;
    std::string text;
    double number = 0;
};

std::vector<Piece> Pieces(std::string_view text)
{
    std::vector<Piece> pieces;
    for (std::size_t at = 0; at < text.size() && pieces.size() < 24;) {
        const auto isLetter = [](char byte) {
            return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        };
        std::size_t end = at + 1;
        Piece piece;
        piece.isNumber = IsDigit(text[at]);
        if (piece.isNumber || isLetter(text[at])) {
            while (end < text.size() && (piece.isNumber ? IsDigit(text[end]) : isLetter(text[end])))
                ++end;
        }
        piece.text = text.substr(at, end - at);
        if (piece.isNumber)
            std::from_chars(text.data() + at, text.data() + end, piece.number);
        if (piece.text != " ")
            pieces.push_back(piece);
        at = end;
    }
    return pieces;
}

int MonthOfName(std::string_view name)
{
    static constexpr std::array<std::string_view, 12> kMonths = {
        "january", "february", "march",     "april",   "may",      "june",
        "july",    "august",   "september", "october", "november", "december"};
    for (std::size_t month = 0; month < kMonths.size(); ++month) {
        if (util::EqualIgnoringCase(name, kMonths[month]) ||
            util::EqualIgnoringCase(name, kMonths[month].substr(0, 3)))
            return static_cast<int>(month) + 1;
    }
    return 0;
}

double FullYear(const Piece& piece)
{
    if (piece.text.size() > 2)
        return piece.number;
    return piece.number + (piece.number < 30 ? 2000 : 1900);
}

std::optional<double> CheckedDay(double year, double month, double day, const TextRules& rules)
{
    if (month < 1 || month > 12 || day < 1 || year < 1900 || year > 9999 ||
        day > DaysInMonthOf(static_cast<std::int32_t>(year), static_cast<std::int32_t>(month),
                            rules.system))
        return std::nullopt;
    return SerialOfDay(year, month, day, rules.system);
}

/// Reads pieces from the front.
class DateReader {
public:
    DateReader(std::string_view text, const TextRules& rules) : pieces_(Pieces(text)), rules_(rules)
    {
    }
    std::optional<double> Date();
    std::optional<double> Time();
    bool IsAtEnd() const { return at_ == pieces_.size(); }

private:
    std::optional<double> NamedMonthFirst(int month);
    std::optional<double> NumberFirst();
    double CurrentYear() const
    {
        const auto today = DayOfSerial(rules_.now, rules_.system);
        return today ? today->year : 1900;
    }
    const Piece* Number(std::size_t ahead = 0) const
    {
        const std::size_t at = at_ + ahead;
        return at < pieces_.size() && pieces_[at].isNumber && pieces_[at].text.size() <= 4
                   ? &pieces_[at]
                   : nullptr;
    }
    bool Is(std::size_t ahead, std::string_view text) const
    {
        return at_ + ahead < pieces_.size() && pieces_[at_ + ahead].text == text;
    }
    int Month(std::size_t ahead) const
    {
        return at_ + ahead < pieces_.size() ? MonthOfName(pieces_[at_ + ahead].text) : 0;
    }
    bool TakeSeparator()
    {
        const bool is = Is(0, "-") || Is(0, "/") || Is(0, ",") || Is(0, ".");
        at_ += is ? 1 : 0;
        return is;
    }

    std::vector<Piece> pieces_;
    TextRules rules_;
    std::size_t at_ = 0;
};

/// "January 31, 2027", "Jan 31", "Jan-27", "January 2027"
std::optional<double> DateReader::NamedMonthFirst(int month)
{
    ++at_;
    TakeSeparator();
    const Piece* first = Number();
    if (first == nullptr)
        return std::nullopt;
    ++at_;
    const std::size_t before = at_;
    TakeSeparator();
    const Piece* second = Number();
    if (second != nullptr && !Is(1, ":")) {
        ++at_;
        return CheckedDay(FullYear(*second), month, first->number, rules_);
    }
    at_ = before;
    if (first->text.size() == 4 || first->number > 31)
        return CheckedDay(FullYear(*first), month, 1, rules_);
    return CheckedDay(CurrentYear(), month, first->number, rules_);
}

/// "2027-01-31", "1/31/2027", "1/31", "31-Jan-2027", "31 Jan"
std::optional<double> DateReader::NumberFirst()
{
    const Piece* first = Number();
    if (first == nullptr)
        return std::nullopt;
    ++at_;
    const std::string separator = at_ < pieces_.size() ? pieces_[at_].text : "";
    const bool hasSeparator = TakeSeparator();
    if (const int month = Month(0)) {
        ++at_;
        const std::size_t before = at_;
        TakeSeparator();
        const Piece* year = Number();
        if (year == nullptr || Is(1, ":")) {
            at_ = before;
            return CheckedDay(CurrentYear(), month, first->number, rules_);
        }
        ++at_;
        return CheckedDay(FullYear(*year), month, first->number, rules_);
    }
    const Piece* second = Number();
    if (!hasSeparator || (separator != "-" && separator != "/") || second == nullptr)
        return std::nullopt;
    ++at_;
    const Piece* third = Is(0, separator) ? Number(1) : nullptr;
    if (third == nullptr) // "1/31", "1/2027"
        return second->number > 31
                   ? CheckedDay(FullYear(*second), first->number, 1, rules_)
                   : CheckedDay(CurrentYear(), first->number, second->number, rules_);
    at_ += 2;
    if (first->text.size() == 4)
        return CheckedDay(first->number, second->number, third->number, rules_);
    return CheckedDay(FullYear(*third), first->number, second->number, rules_);
}

std::optional<double> DateReader::Date()
{
    const int month = Month(0);
    return month != 0 ? NamedMonthFirst(month) : NumberFirst();
}

/// "13:45", "1:45:30.5 PM", "1 PM"
std::optional<double> DateReader::Time()
{
    const Piece* hours = Number();
    if (hours == nullptr)
        return std::nullopt;
    double seconds = hours->number * 3600;
    ++at_;
    bool isTime = false;
    for (const double unit : {60.0, 1.0}) {
        if (!Is(0, ":") || Number(1) == nullptr)
            break;
        seconds += pieces_[at_ + 1].number * unit;
        if (pieces_[at_ + 1].number >= 60)
            return std::nullopt;
        at_ += 2;
        isTime = true;
    }
    if (isTime && Is(0, ".") && at_ + 1 < pieces_.size() && pieces_[at_ + 1].isNumber) {
        const Piece& fraction = pieces_[at_ + 1];
        seconds += fraction.number * std::pow(10.0, -static_cast<double>(fraction.text.size()));
        at_ += 2;
    }
    if (at_ < pieces_.size() && (util::EqualIgnoringCase(pieces_[at_].text, "AM") ||
                                 util::EqualIgnoringCase(pieces_[at_].text, "PM"))) {
        if (hours->number < 1 || hours->number > 12)
            return std::nullopt;
        const bool isAfternoon = util::EqualIgnoringCase(pieces_[at_].text, "PM");
        seconds += ((hours->number == 12 ? -12 : 0) + (isAfternoon ? 12 : 0)) * 3600.0;
        ++at_;
        isTime = true;
    }
    return isTime ? std::optional(seconds / 86'400) : std::nullopt;
}

} // namespace

std::optional<double> DateOfText(std::string_view text, const TextRules& rules)
{
    if (text.size() > 64)
        return std::nullopt;
    DateReader reader(text, rules);
    auto date = reader.Date();
    if (!date)
        return std::nullopt;
    if (!reader.IsAtEnd()) {
        const auto time = reader.Time();
        if (!time || *time >= 1)
            return std::nullopt;
        *date += *time;
    }
    return reader.IsAtEnd() ? date : std::nullopt;
}

std::optional<double> NumberOfText(std::string_view text, const TextRules& rules)
{
    text = util::Trim(text);
    if (text.empty() || text.size() > 512)
        return std::nullopt;
    if (const auto number = DecoratedNumber(text))
        return number;
    if (text.size() <= 64) {
        DateReader reader(text, rules);
        const auto time = reader.Time();
        if (time && reader.IsAtEnd())
            return time;
    }
    return DateOfText(text, rules);
}

} // namespace orrery::formula
