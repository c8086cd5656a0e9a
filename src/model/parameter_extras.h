#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orrery::model {

/// What a parameter file holds beside what its reader takes from it, written by people or by newer
/// programs. It is kept when the file is saved.
struct ParameterExtras {
    // Lines of holiday rules that are not understood.
    std::vector<std::string> monthlyRules;
    std::vector<std::string> yearlyRules;
    std::string sections; ///< those of other names, as they are
};

/// Looks through the text of a parameter file.
ParameterExtras FindExtras(std::string_view text);

} // namespace orrery::model
