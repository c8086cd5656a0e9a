#include "model/parameters.h"

namespace orrery::model {

ParameterSets CopyDefaults(const DefaultParameters& defaults)
{
    ParameterSets sets{defaults.Monthly, defaults.Yearly};
    // Templates in the field rely on this pairing; a parameter file states its own interval.
    sets.Monthly.RowIntervalOfDay = defaults.Monthly.FirstCellOfDay.row;
    return sets;
}

} // namespace orrery::model
