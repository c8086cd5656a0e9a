#pragma once

#include "book/error.h"
#include "book/look/sheet_look.h"
#include "util/error.h"

#include <string>

namespace orrery::xls {

/// Notes what is not in the look of a sheet; the same thing once in a row, and after very many
/// notes no more.
void LeaveOut(book::SheetLook& look, std::string what, std::string where, std::string reason);

/// Runs the action; if it finds damage, what it would have read is left out.
template <typename Action>
void ReadOrLeaveOut(book::SheetLook& look, const char* what, Action action)
{
    try {
        action();
    }
    catch (const util::Error& error) {
        if (!(error.Kind() == book::ErrorKind::DamagedWorkbook))
            throw;
        LeaveOut(look, what, {}, error.Cause());
    }
}

} // namespace orrery::xls
