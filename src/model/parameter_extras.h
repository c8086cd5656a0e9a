#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orrery::model {

/// Content of a parameter file that the reader does not use, written by people or newer versions.
/// It is kept when the file is saved.
struct ParameterExtras {
    // Lines of holiday rules that cannot be parsed.
    std::vector<std::string> monthlyRules;
    std::vector<std::string> yearlyRules;
    std::string sections; ///< all other sections, unchanged
};

/// Finds the extras in the text of a parameter file.
ParameterExtras FindExtras(std::string_view text);

} // namespace orrery::model
