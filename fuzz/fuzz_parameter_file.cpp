// Whatever a parameter file contains, the resulting sets can be written, and reading the written
// file gives the same sets.

#include "require.h"

#include "model/parameter_file.h"
#include "model/parameter_text.h"
#include "util/error.h"
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

void Apply(std::string_view text, State& state)
{
    try {
        model::ApplyParameterText(text, state.names, state.sets);
    }
    catch (const util::OverflowError&) {
    }
    catch (const util::OutOfRangeError&) {
    }
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    State state = Defaults();
    Apply(util::DecodeTextFile({reinterpret_cast<const char*>(data), size}), state);
    const std::string written = model::FormatParameterText(state.names, state.sets);
    if (!SurvivesWriting(state, state.sets.Monthly) || !SurvivesWriting(state, state.sets.Yearly))
        return 0;
    State again = Defaults();
    again.names = state.names;
    Apply(util::DecodeTextFile(util::EncodeTextFile(written)), again);
    fuzz::Require(again.sets.Monthly == state.sets.Monthly);
    fuzz::Require(again.sets.Yearly == state.sets.Yearly);
    fuzz::Require(model::FormatParameterText(again.names, again.sets) == written);
    return 0;
}
