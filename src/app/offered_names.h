#pragma once

#include "model/name_lists.h"
#include "model/parameters.h"

#include <string>

namespace orrery::app {

/// The user's lists of names and, behind them, those of the languages that the program ships:
/// long, short and narrow ("Kiswahili, short"). A list whose title the user's tables have is left
/// out. `installed` is the folder of the shipped data, as in `SystemFolders`; without it, and for
/// what does not fit into a table, there are the user's lists alone.
model::NameTables OfferedNames(const model::NameTables& own, const std::string& installed);

/// Makes the lists that the sets have chosen from `offered` lists of `own`, and the sets refer to
/// those.
void AdoptNames(const model::NameTables& offered, model::NameTables& own,
                model::ParameterSets& sets);

} // namespace orrery::app
