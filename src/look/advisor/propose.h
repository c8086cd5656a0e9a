#pragma once

#include "book/look/workbook_view.h"
#include "model/name_lists.h"
#include "model/parameters.h"

#include <set>
#include <string>
#include <vector>

namespace orrery::look {

/// Why a parameter is proposed so.
struct Reason {
    std::string parameter; ///< "monthly.FirstCellOfDay"
    std::string because;   ///< a sentence
};

/// Parameters for a template.
struct Proposal {
    model::ParameterSets sets;     ///< a calendar that is not there has no `Output`
    std::set<std::string> unknown; ///< "monthly.MonthName": its value is not proposed
    std::vector<Reason> reasons;   ///< in the order of a parameter file
};

/// Finds the calendars of a workbook from its looks and says what parameters fit. What is not
/// found keeps its value of `initial`. `now` is a serial number, for formulas. Throws as
/// `WorkbookView::Sheet`.
Proposal Propose(book::WorkbookView& view, const model::NameTables& names,
                 const model::ParameterSets& initial, double now);

} // namespace orrery::look
