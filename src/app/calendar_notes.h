#pragma once

#include "app/calendar_view.h"
#include "look/display/sheet_picture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orrery::app {

/// What a reader of a filled sheet would miss, one line each with the day: names of holidays that
/// their cells cut, those that merged cells hide, and those that no printed page shows. `picture`
/// is that of the sheet.
std::vector<std::string> FindHiddenNames(const generate::TrialSheet& sheet, std::int16_t year,
                                         const look::SheetPicture& picture);

} // namespace orrery::app
