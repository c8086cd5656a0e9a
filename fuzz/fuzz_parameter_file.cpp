// Whatever a parameter file contains, the resulting sets can be written, reading the written file
// gives the same sets, and what was not read stays.

#include "require.h"

#include "model/parameter_file.h"
#include "model/parameter_text.h"
#include "util/text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace orrery;

struct State {
    model::ParameterSets sets;
    model::NameTables names;
};

State Defaults()
{
    State state;
    for (model::CalendarParameters* set :
         {static_cast<model::CalendarParameters*>(&state.sets.Monthly),
          static_cast<model::CalendarParameters*>(&state.sets.Yearly)}) {
        set->SheetName = "Sheet";
        set->FirstCellOfDay = set->FirstCellOfWeekday = set->FirstCellOfMonth =
            set->FirstCellOfYear = set->FirstCellOfHoliday = {5, 2};
    }
    state.names.Weekdays.Add(*model::SplitNames<7>("a,b,c,d,e,f,g"));
    state.names.Months.Add(*model::SplitNames<12>("a,b,c,d,e,f,g,h,i,j,k,l"));
    return state;
}

/// A text that begins like an operator joins the "=" in front of it, and its line is then ignored.
bool JoinsTheEquals(std::string_view value)
{
    return value.starts_with('=') || value.starts_with('<') || value.starts_with('>');
}

bool SurvivesWriting(const State& state, const model::CalendarParameters& set)
{
    return !JoinsTheEquals(set.SheetName) &&
           !JoinsTheEquals(state.names.Weekdays.Name(set.WeekdayName, 0)) &&
           !JoinsTheEquals(state.names.Months.Name(set.MonthName, 0));
}

/// What was not read is there again after it was written, however often.
void RequireKept(const model::ParameterExtras& extras, const State& state)
{
    const std::string once = model::FormatParameterText(state.names, state.sets, extras);
    model::NameTables names = state.names;
    model::ParameterSets sets;
    const auto again = model::ApplyParameterText(once, names, sets).extras;
    fuzz::Require(again.unread.starts_with(extras.unread));
    fuzz::Require(again.sections.starts_with(extras.sections));
    fuzz::Require(again.monthlyRules == extras.monthlyRules);
    fuzz::Require(again.yearlyRules == extras.yearlyRules);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    State state = Defaults();
    const auto text = util::DecodeTextFile({reinterpret_cast<const char*>(data), size});
    const auto extras = model::ApplyParameterText(text, state.names, state.sets).extras;
    RequireKept(extras, state);
    const std::string written = model::FormatParameterText(state.names, state.sets);
    if (!SurvivesWriting(state, state.sets.Monthly) || !SurvivesWriting(state, state.sets.Yearly))
        return 0;
    State again = Defaults();
    again.names = state.names;
    model::ApplyParameterText(util::DecodeTextFile(util::EncodeTextFile(written)), again.names,
                              again.sets);
    fuzz::Require(again.sets.Monthly == state.sets.Monthly);
    fuzz::Require(again.sets.Yearly == state.sets.Yearly);
    fuzz::Require(model::FormatParameterText(again.names, again.sets) == written);
    return 0;
}
