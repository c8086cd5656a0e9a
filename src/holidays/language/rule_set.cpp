#include "holidays/language/rule_set.h"

#include "holidays/error.h"
#include "holidays/language/kind_parser.h"
#include "holidays/language/statement_parser.h"
#include "holidays/language/words.h"
#include "util/numbers.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <iterator>
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

constexpr std::string_view kFurtherFile = "FURTHER FILE";
constexpr std::array<std::string_view, 7> kWords = {
    "COUNTRY", "ESTIMATED", kFurtherFile, "LANGUAGE", "OBSERVED", "REGIONS", "WEEKEND"};

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

/// The file of a rule and its index there.
std::pair<const RuleSet*, std::size_t> Locate(const RuleSet& set, std::size_t index)
{
    const RuleSet* file = &set;
    for (auto next = set.further.begin(); index >= file->rules.size(); ++next) {
        index -= file->rules.size();
        file = &*next;
    }
    return {file, index};
}

/// The regions of "only in" and "not in".
std::vector<std::string> NamedRegionsOf(const Rule& rule)
{
    std::vector<std::string> codes = rule.refinements.onlyIn;
    codes.insert(codes.end(), rule.refinements.notIn.begin(), rule.refinements.notIn.end());
    return codes;
}

bool ListsRegion(const std::vector<Region>& regions, std::string_view code)
{
    return std::any_of(regions.begin(), regions.end(),
                       [code](const Region& region) { return region.code == code; });
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
    else if (capitals == kFurtherFile) {
        FinishFile();
        set_.name = value;
    }
    return std::nullopt;
}

void RuleSetBuilder::FinishFile()
{
    for (std::size_t i = 0; i < set_.rules.size(); ++i) {
        Refinements& own = set_.rules[i].refinements;
        own = Merge(std::move(own), common_[i]);
    }
    common_.clear();
    commonBelow_ = {};
    finished_.push_back(std::exchange(set_, {}));
}

RuleSet RuleSetBuilder::Take()
{
    FinishFile();
    RuleSet first = std::move(finished_.front());
    std::move(finished_.begin() + 1, finished_.end(), std::back_inserter(first.further));
    finished_.clear();
    return first;
}

RuleSet RulesOf(const HolidayList& list)
{
    RuleSetBuilder builder;
    std::size_t place = 0;
    for (const ListEntry& entry : EntriesOf(list)) {
        ++place;
        if (const auto* const rule = std::get_if<HolidayDef>(&entry))
            builder.Add(*rule, place);
        else
            static_cast<void>(builder.AddExtra(std::get<std::string>(entry), place));
    }
    return builder.Take();
}

std::vector<const RuleSet*> FilesOf(const RuleSet& set)
{
    std::vector<const RuleSet*> files = {&set};
    for (const RuleSet& further : set.further)
        files.push_back(&further);
    return files;
}

const Rule& RuleAt(const RuleSet& set, std::size_t index)
{
    const auto [file, place] = Locate(set, index);
    return file->rules[place];
}

const RuleSet& FileAt(const RuleSet& set, std::size_t index)
{
    return *Locate(set, index).first;
}

std::vector<Region> RegionsOf(const RuleSet& set)
{
    std::vector<Region> regions;
    for (const RuleSet* const file : FilesOf(set))
        regions.insert(regions.end(), file->regions.begin(), file->regions.end());
    for (const RuleSet* const file : FilesOf(set)) {
        for (const Rule& rule : file->rules) {
            for (const std::string& code : NamedRegionsOf(rule)) {
                if (!ListsRegion(regions, code))
                    regions.push_back({code, ""});
            }
        }
    }
    return regions;
}

bool HasRegion(const RuleSet& set, std::string_view code)
{
    return ListsRegion(RegionsOf(set), code);
}

std::optional<std::string> UnlistedRegionOf(const Rule& rule, const RuleSet& file)
{
    for (const std::string& code : NamedRegionsOf(rule)) {
        if (!file.regions.empty() && !ListsRegion(file.regions, code))
            return code;
    }
    return std::nullopt;
}

std::string FurtherFileLine(std::string_view name)
{
    return "# Further file: " + std::string(name);
}

std::optional<std::string> FurtherFileOf(std::string_view line)
{
    const auto word = SplitWord(line);
    if (!word || util::ToUpperAscii(word->word) != kFurtherFile)
        return std::nullopt;
    return std::string(word->value);
}

} // namespace orrery::holidays
