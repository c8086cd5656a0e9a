#include "look/advisor/title_words.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <string>
#include <string_view>

namespace orrery::look {
namespace {

// The words for a month and a year that labels and placeholders use, folded.
constexpr std::array kMonthWords = {"month",   "monat", "mois",   "mes",   "mês",    "mese",
                                    "miesiąc", "měsíc", "mesiac", "mesec", "mjesec", "месяц",
                                    "月",      "월",    "maand",  "måned", "månad",  "kuukausi",
                                    "hónap",   "ay",    "μήνασ",  "lună",  "luna",   "mánuður",
                                    "kuu",     "mí",    "חודש",   "الشهر", "شهر",    "mánaður"};
constexpr std::array kYearWords = {"year", "jahr",  "année", "año",    "ano",   "anno", "rok",
                                   "год",  "年",    "년",    "år",     "any",   "leto", "godina",
                                   "jaar", "an",    "ár",    "bliain", "vuosi", "év",   "yıl",
                                   "έτοσ", "aasta", "שנה",   "السنة",  "سنة",   "연도", "年份"};

template <typename Words> bool IsWord(const Words& words, const std::string& text)
{
    return std::ranges::any_of(words, [&](const char* word) { return text == word; });
}

constexpr std::string_view kMarks = "[]<>{}():_";

/// Whether a text is a placeholder as "[Month]" or a label as "Month:".
bool HasMarks(const std::string& text)
{
    return text.find_first_of(kMarks) != std::string::npos ||
           text.find("\xEF\xBC\x9A") != std::string::npos; // a wide colon
}

bool IsPlaceholder(const std::string& text)
{
    return text.find_first_of("[<{") != std::string::npos;
}

std::string WithoutMarks(std::string text)
{
    if (const std::size_t at = text.find("\xEF\xBC\x9A"); at != std::string::npos)
        text.erase(at, 3);
    std::erase_if(text, [](char c) { return kMarks.find(c) != std::string_view::npos; });
    return FoldName(text);
}

TitleKind KindOfWord(const std::string& text)
{
    const bool isPlaceholder = IsPlaceholder(text) || !HasMarks(text);
    const std::string word = WithoutMarks(text);
    if (IsWord(kMonthWords, word))
        return isPlaceholder ? TitleKind::Month : TitleKind::MonthLabel;
    if (IsWord(kYearWords, word))
        return isPlaceholder ? TitleKind::Year : TitleKind::YearLabel;
    const std::size_t blank = word.find(' ');
    if (isPlaceholder && blank != std::string::npos) {
        const std::string first = word.substr(0, blank);
        const std::string last = word.substr(word.rfind(' ') + 1);
        if ((IsWord(kMonthWords, first) && IsWord(kYearWords, last)) ||
            (IsWord(kYearWords, first) && IsWord(kMonthWords, last)))
            return TitleKind::Both;
    }
    return TitleKind::None;
}

/// The marks of a format code, without literal texts, colours and locales.
std::string MarksOf(const std::string& code)
{
    std::string marks;
    char until = '\0';
    for (const char c : code) {
        if (until != '\0') {
            until = c == until ? '\0' : until;
            continue;
        }
        if (c == '"' || c == '[')
            until = c == '"' ? '"' : ']';
        else
            marks += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return marks;
}

TitleKind KindOfNumber(double number, const std::string& format)
{
    constexpr double firstYear = 1900;
    constexpr double lastYear = 2199;
    const std::string marks = MarksOf(format);
    if (marks != "general") {
        if (marks.find_first_of("dhs") != std::string::npos)
            return TitleKind::None;
        const bool hasMonth = marks.find("mmm") != std::string::npos;
        const bool hasYear = marks.find('y') != std::string::npos;
        if (hasMonth || hasYear)
            return hasMonth ? (hasYear ? TitleKind::Both : TitleKind::Month) : TitleKind::Year;
    }
    const bool isYear = number >= firstYear && number <= lastYear && number == std::floor(number) &&
                        marks.find_first_of(".,%") == std::string::npos;
    return isYear ? TitleKind::Year : TitleKind::None;
}

} // namespace

TitleKind KindOfTitle(const SeenSheet& sheet, book::CellAddress cell, const KnownNames& names)
{
    const SeenContent* const content = sheet.Content(cell.row, cell.column);
    if (content == nullptr)
        return TitleKind::None;
    if (content->number)
        return KindOfNumber(*content->number, sheet.Style(cell.row, cell.column).numberFormat);
    const bool hasYear = FindYear(content->text).has_value();
    if (names.MonthOf(content->text) != 0)
        return hasYear ? TitleKind::Both : TitleKind::Month;
    const std::string rest = WithoutYear(content->text);
    if (hasYear && (rest.empty() || IsWord(kYearWords, rest)))
        return TitleKind::Year;
    return KindOfWord(content->text);
}

} // namespace orrery::look
