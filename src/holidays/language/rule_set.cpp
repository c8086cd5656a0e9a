#include "holidays/language/rule_set.h"

#include "holidays/error.h"
#include "holidays/language/kind_parser.h"
#include "holidays/language/statement_parser.h"
#include "holidays/language/words.h"
#include "util/numbers.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orrery::holidays {
namespace {

struct WordAbout {
    std::string_view word;
    std::string_view value;
};

/// "# Weekend: Fri Sat".
std::optional<WordAbout> SplitWord(std::string_view line)
{
    const std::size_t colon = line.find(':');
    if (!line.starts_with('#') || colon == std::string_view::npos)
        return std::nullopt;
    return WordAbout{util::Trim(line.substr(1, colon - 1)), util::Trim(line.substr(colon + 1))};
}

constexpr std::array<std::string_view, 6> kWords = {"COUNTRY",  "ESTIMATED", "LANGUAGE",
                                                    "OBSERVED", "REGIONS",   "WEEKEND"};

bool IsKnownWord(std::string_view word)
{
    const std::string capitals = util::ToUpperAscii(word);
    return std::find(kWords.begin(), kWords.end(), capitals) != kWords.end();
}

/// The date, the kind and the name of a rule; later commas stay in the name.
struct RuleFields {
    std::string_view date;
    std::string_view kind;
    std::string_view name;
};

std::optional<RuleFields> SplitRule(std::string_view line)
{
    const std::size_t first = line.find(',');
    const std::size_t second = first == std::string_view::npos ? first : line.find(',', first + 1);
    if (second == std::string_view::npos)
        return std::nullopt;
    return RuleFields{util::Trim(line.substr(0, first)),
                      util::Trim(line.substr(first + 1, second - first - 1)),
                      line.substr(second + 1)};
}

/// Whether the kind is one of ours, rightly written or not far from it.
bool IsKindLike(const RuleFields& fields)
{
    const auto parsed = ParseRuleDay(fields.date, fields.kind);
    const auto* const error = std::get_if<util::Error>(&parsed);
    return error == nullptr || error->Kind() != ErrorKind::UnknownRuleKind ||
           !error->Cause().empty();
}

std::vector<Region> ParseRegions(std::string_view text)
{
    std::vector<Region> regions;
    for (const std::string& piece : util::Split(text, ';')) {
        const std::string_view region = util::Trim(piece);
        const std::size_t blank = std::min(region.find(' '), region.size());
        if (!region.empty())
            regions.push_back({util::ToUpperAscii(region.substr(0, blank)),
                               std::string(util::Trim(region.substr(blank)))});
    }
    return regions;
}

std::optional<WeekdaySet> ParseWeekend(std::string_view text)
{
    WeekdaySet weekend = 0;
    for (const std::string& word : WordsOf(text)) {
        const auto weekday = WeekdayOfWord(word);
        if (!weekday)
            return std::nullopt;
        weekend |= 1U << static_cast<unsigned>(*weekday);
    }
    return weekend == kEveryWeekday ? std::nullopt : std::optional(weekend);
}

} // namespace

bool IsExtraLine(std::string_view line)
{
    if (line.starts_with('>'))
        return true;
    if (const auto word = SplitWord(line))
        return IsKnownWord(word->word);
    const auto fields = SplitRule(line);
    return fields && !line.starts_with('#') && IsKindLike(*fields);
}

void RuleSetBuilder::Add(const HolidayDef& rule, std::size_t line)
{
    set_.rules.push_back({{PlainDay{rule.DateCode, rule.Kind}, 0}, rule.Name, {}, line});
    common_.push_back(commonBelow_);
}

std::optional<util::Error> RuleSetBuilder::AddExtra(std::string_view text, std::size_t line)
{
    if (text.starts_with(">>"))
        return RefineAllBelow(text.substr(2));
    if (text.starts_with('>'))
        return Refine(text.substr(1));
    return text.starts_with('#') ? AddWord(text) : AddRule(text, line);
}

std::optional<util::Error> RuleSetBuilder::AddRule(std::string_view text, std::size_t line)
{
    const auto fields = SplitRule(text);
    if (!fields)
        return util::Error(ErrorKind::RuleWithoutFields, std::string(text));
    auto parsed = ParseRuleDay(fields->date, fields->kind);
    if (auto* const error = std::get_if<util::Error>(&parsed))
        return std::move(*error);
    set_.rules.push_back(
        {std::get<RuleDay>(std::move(parsed)), std::string(fields->name), {}, line});
    common_.push_back(commonBelow_);
    return std::nullopt;
}

std::optional<util::Error> RuleSetBuilder::Refine(std::string_view statements)
{
    if (set_.rules.empty())
        return util::Error(ErrorKind::RefinementWithoutRule, std::string(util::Trim(statements)));
    Refinements refined = set_.rules.back().refinements;
    if (auto error = ParseStatements(statements, refined))
        return error;
    set_.rules.back().refinements = std::move(refined);
    return std::nullopt;
}

std::optional<util::Error> RuleSetBuilder::RefineAllBelow(std::string_view statements)
{
    Refinements common;
    if (auto error = ParseStatements(statements, common))
        return error;
    commonBelow_ = std::move(common);
    return std::nullopt;
}

std::optional<util::Error> RuleSetBuilder::AddWord(std::string_view line)
{
    const auto [word, value] = SplitWord(line).value_or(WordAbout());
    const std::string capitals = util::ToUpperAscii(word);
    if (capitals == "WEEKEND") {
        const auto weekend = ParseWeekend(value);
        if (!weekend)
            return util::Error(ErrorKind::WrongRefinement, std::string(line),
                               "Write weekdays behind it, such as Fri Sat.");
        set_.weekend = *weekend;
    }
    else if (capitals == "OBSERVED")
        set_.observed = value;
    else if (capitals == "ESTIMATED")
        set_.estimated = value;
    else if (capitals == "REGIONS")
        set_.regions = ParseRegions(value);
    else if (capitals == "COUNTRY")
        set_.country = value;
    else if (capitals == "LANGUAGE")
        set_.language = value;
    return std::nullopt;
}

RuleSet RuleSetBuilder::Take()
{
    for (std::size_t i = 0; i < set_.rules.size(); ++i) {
        Refinements& own = set_.rules[i].refinements;
        own = Merge(std::move(own), common_[i]);
    }
    common_.clear();
    return std::exchange(set_, {});
}

RuleSet RulesOf(const HolidayList& list)
{
    RuleSetBuilder builder;
    auto extra = list.Extras().begin();
    for (std::int16_t rule = 0; rule <= list.Count(); ++rule) {
        for (; extra != list.Extras().end() && extra->place == rule; ++extra)
            static_cast<void>(builder.AddExtra(extra->text));
        if (rule < list.Count())
            builder.Add(list[static_cast<std::size_t>(rule)]);
    }
    return builder.Take();
}

} // namespace orrery::holidays
