#pragma once

#include "look/advisor/propose.h"
#include "ui/parameter_tab.h"

#include <string>
#include <vector>

namespace orrery::ui {

/// A proposal for the fields of one tab, for the user to read.
struct ProposedFields {
    std::vector<std::string> sentences; ///< what the user has to choose or click first
    const Control* missing = nullptr;   ///< the first field that is not proposed
};

/// Fills the fields of a tab with the calendar that was found for it. Without one the fields stay,
/// and the only sentence says so.
ProposedFields FillWithProposal(ParameterTab& tab, const look::Proposal& proposal);

} // namespace orrery::ui
