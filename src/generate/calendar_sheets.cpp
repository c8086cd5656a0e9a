#include "generate/calendar_sheets.h"

#include "book/error.h"
#include "generate/block_cells.h"
#include "generate/failure.h"
#include "generate/month_block.h"
#include "holidays/language/evaluation.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/sentence.h"

#include <exception>
#include <string>

namespace orrery::generate {
namespace {

constexpr std::int16_t kFallbackList = 0;

/// The model sheet, or nullptr after reporting that it does not exist.
book::Worksheet* FindModelSheet(book::Workbook& workbook, const std::string& name, Context& context)
{
    book::Worksheet* const sheet = workbook.FindWorksheet(name);
    if (sheet == nullptr)
        context.observer.Report("The sheet " + util::Printable(name) + " does not exist.");
    return sheet;
}

void PrepareHolidays(std::int16_t year, const model::CalendarParameters& parameters,
                     Context& context)
{
    if (parameters.OutHoliday)
        holidays::FillHolidayDates(year, parameters.Holidays, parameters.ShownHolidays,
                                   context.easter, context.holidayDates);
}

void FillAndNotify(book::Worksheet& sheet, std::int16_t year, std::int16_t month, CalendarKind kind,
                   const model::CalendarParameters& parameters, Context& context)
{
    FillMonth(sheet, year, month, parameters, context);
    context.observer.MonthDone(kind, month);
}

void RecordSheet(const book::Worksheet& sheet, const Context& context)
{
    if (context.filledSheets != nullptr)
        context.filledSheets->push_back(sheet.Name());
}

/// Names a sheet after a month in a list. False if the list or the name is not usable.
bool NameAfterMonth(book::Worksheet& sheet, std::int16_t list, std::int16_t month, Context& context)
{
    try {
        sheet.SetName(context.names.Months.Name(list, static_cast<std::int16_t>(month - 1)));
        return true;
    }
    catch (const std::exception& error) {
        if (IsApplicationLost(error))
            throw;
        context.observer.FailureIgnored(
            "The sheet of month " + std::to_string(month) + " is not named after it.", error);
        return false; // not reported on purpose: the sheet keeps its name
    }
}

/// The description of an error that becomes the cause of another.
std::string CauseOf(const std::exception& error)
{
    const auto* const own = dynamic_cast<const Error*>(&error);
    return own != nullptr && !own->Cause().empty() ? own->Cause() : util::ErrorText(error);
}

/// Copies the sheet and returns the copy, placed directly after it, or nullptr if that fails;
/// `reason` then says why.
book::Worksheet* CopyAfterItself(book::Worksheet& sheet, std::string& reason, Context& context)
{
    try {
        sheet.CopyAfter(sheet);
        return sheet.Next();
    }
    catch (const std::exception& error) {
        if (IsApplicationLost(error))
            throw;
        // Not reported on purpose: the months then use the sheets that exist.
        context.observer.FailureIgnored("The sheet of a month is not made.", error);
        reason = CauseOf(error);
        return nullptr;
    }
}

/// Copies the model sheet for the other months. Returns why a copy failed; empty if none did.
std::string MakeMonthSheets(book::Worksheet& model, std::int16_t list, Context& context)
{
    std::string reason;
    NameAfterMonth(model, list, 1, context); // the model sheet does not fall back to the first list
    book::Worksheet* current = &model;
    for (std::int16_t month = 2; month <= kMonthsPerYear; ++month) {
        book::Worksheet* const copy = CopyAfterItself(*current, reason, context);
        if (copy == nullptr)
            continue;
        current = copy;
        if (!NameAfterMonth(*current, list, month, context))
            NameAfterMonth(*current, kFallbackList, month, context);
    }
    return reason;
}

/// The next sheet. If there is none, copying failed for the given reason.
book::Worksheet& NextSheet(book::Worksheet& sheet, const std::string& reason)
{
    book::Worksheet* const next = sheet.Next();
    if (next == nullptr)
        throw Error(book::ErrorKind::SheetNotCopied, sheet.Name(), reason);
    return *next;
}

void FillMonthSheets(book::Worksheet& first, std::int16_t year,
                     const model::MonthlyParameters& parameters, const std::string& reason,
                     Context& context)
{
    book::Worksheet* sheet = &first;
    for (std::int16_t month = 1; month <= kMonthsPerYear; ++month) {
        if (month > 1)
            sheet = &NextSheet(*sheet, reason);
        FillAndNotify(*sheet, year, month, CalendarKind::Monthly, parameters, context);
        RecordSheet(*sheet, context);
    }
}

void FillMonthBlocks(book::Worksheet& sheet, std::int16_t year, model::YearlyParameters& parameters,
                     Context& context)
{
    const BlockOrigins origins = OriginsOf(parameters);
    for (std::int16_t month = 1; month <= kMonthsPerYear; ++month) {
        ShiftToBlock(origins, month, parameters);
        FillAndNotify(sheet, year, month, CalendarKind::Yearly, parameters, context);
    }
    RestoreOrigins(origins, parameters);
    RecordSheet(sheet, context);
}

} // namespace

void MakeMonthlyCalendar(book::Workbook& workbook, std::int16_t year,
                         const model::MonthlyParameters& parameters, Context& context)
{
    if (!parameters.Output)
        return;
    try {
        book::Worksheet* const sheet = FindModelSheet(workbook, parameters.SheetName, context);
        if (sheet == nullptr)
            return;
        const auto reason = MakeMonthSheets(*sheet, parameters.MonthName, context);
        PrepareHolidays(year, parameters, context);
        FillMonthSheets(*sheet, year, parameters, reason, context);
    }
    catch (const std::exception& error) {
        ReportFailure("Error in making monthly calendar.", error, context);
    }
}

void MakeYearlyCalendar(book::Workbook& workbook, std::int16_t year,
                        model::YearlyParameters& parameters, Context& context)
{
    if (!parameters.Output)
        return;
    try {
        book::Worksheet* const sheet = FindModelSheet(workbook, parameters.SheetName, context);
        if (sheet == nullptr)
            return;
        sheet->SetName(std::to_string(year));
        PrepareHolidays(year, parameters, context);
        FillMonthBlocks(*sheet, year, parameters, context);
    }
    catch (const std::exception& error) {
        ReportFailure("Error in making yearly calendar.", error, context);
    }
}

} // namespace orrery::generate
