#pragma once

#include "holidays/holiday_rule.h"
#include "holidays/language/rule.h"
#include "util/error.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::holidays {

struct Region {
    std::string code; ///< in capitals
    std::string name;
    friend bool operator==(const Region&, const Region&) = default;
};

/// The rules of a calendar with what a holiday file says of all of them. A list can hold several
/// files, each below a line "# Further file: NAME" but the first.
struct RuleSet {
    std::string name; ///< of a further file; empty for the first
    std::vector<Rule> rules;
    WeekdaySet weekend = 1U << 1U | 1U << 7U;
    std::string observed = "{name} (observed)"; ///< the name of a substitute
    std::string estimated = "{name}";           ///< of a day that is computed, not announced
    std::vector<Region> regions;
    std::string country;
    std::string language;         ///< of the names that need none
    std::vector<RuleSet> further; ///< what the first file says does not hold for them
};

/// The set itself and the further ones. All rules are counted in this order.
std::vector<const RuleSet*> FilesOf(const RuleSet& set);
/// The rule of an index among all rules, which must exist, and its file.
const Rule& RuleAt(const RuleSet& set, std::size_t index);
const RuleSet& FileAt(const RuleSet& set, std::size_t index);

/// The regions that the files list, then those that rules name all the same.
std::vector<Region> RegionsOf(const RuleSet& set);
/// Whether one of them has that code.
bool HasRegion(const RuleSet& set, std::string_view code);
/// The first region that a rule of a file names, and the file does not list although it lists some.
std::optional<std::string> UnlistedRegionOf(const Rule& rule, const RuleSet& file);

/// The line above the rules of a further file.
std::string FurtherFileLine(std::string_view name);
/// The name that such a line gives to a further file.
std::optional<std::string> FurtherFileOf(std::string_view line);

/// Makes a set of rules of lines, in their order.
class RuleSetBuilder {
public:
    /// `line` is kept as the rule's.
    void Add(const HolidayDef& rule, std::size_t line = 0);
    /// Adds a line for which `IsExtraLine` holds: a rule of a kind of its own; with ">", statements
    /// about the rule above; with ">>", about all rules below; with "#", a word about the file. If
    /// it is not understood, gives the reason and adds nothing.
    std::optional<util::Error> AddExtra(std::string_view text, std::size_t line = 0);

    /// The rules, each with what holds for all.
    RuleSet Take();

private:
    std::optional<util::Error> AddRule(std::string_view text, std::size_t line);
    std::optional<util::Error> Refine(std::string_view statements);
    std::optional<util::Error> RefineAllBelow(std::string_view statements);
    std::optional<util::Error> AddWord(std::string_view line);
    void FinishFile();

    std::vector<RuleSet> finished_;
    RuleSet set_;                     ///< the file that is being read
    std::vector<Refinements> common_; ///< for each rule
    Refinements commonBelow_;
};

/// Whether a line that is no plain rule is meant to be read: it begins with ">", is a word about
/// the file such as "# Weekend: Fri Sat", or has two commas and looks like a rule. Blanks around it
/// are gone.
bool IsExtraLine(std::string_view line);

/// The rules of a list; their lines are the places of its entries, counted from 1. Extra lines that
/// are not understood are left out.
RuleSet RulesOf(const HolidayList& list);

} // namespace orrery::holidays
