#include "book/error.h"

#include "util/sentence.h"

namespace orrery::book {

using util::Because;
using util::Quoted;
using util::QuotedOr;

namespace {

std::string WorkbookSentence(ErrorKind kind, const util::ErrorDetails& details)
{
    const std::string path = QuotedOr(details.subject, "The workbook");
    switch (kind) {
    case ErrorKind::NotAWorkbook:
        return path + " is not a workbook" + Because(details) + ". Choose an .xlsx or .xls file.";
    case ErrorKind::DamagedWorkbook:
        return path + " is damaged" + Because(details) +
               ". Repair it in the spreadsheet program or use another copy.";
    case ErrorKind::PasswordProtected:
        return path + " is protected by a password. Remove the password in the spreadsheet program "
                      "and try again.";
    case ErrorKind::BinaryWorkbook:
        return path + " is a binary workbook (.xlsb). Save it as .xlsx in the spreadsheet program "
                      "and use that file.";
    case ErrorKind::OldBinaryFormat:
        return path +
               " was saved by an old version of the spreadsheet program. Open it there and save it "
               "again as .xls or .xlsx.";
    case ErrorKind::WrongExtension:
        return path + " is a workbook of another kind than its name says" + Because(details) +
               ". Give it the right ending, or choose the engine \"builtin\".";
    case ErrorKind::PathTooLong:
        return path + " is too long a path" + Because(details) +
               ". Use folders with shorter names, or choose the engine \"builtin\".";
    case ErrorKind::TooLargeUnpacked:
        return path + " becomes too large when it is unpacked" + Because(details) +
               ". Make it smaller in the spreadsheet program.";
    case ErrorKind::TooLargeOutput:
        return path + " would become too large" + Because(details) +
               ". Use a smaller sheet, or fewer objects on it, in the template.";
    case ErrorKind::MacrosNotCopied:
        return path + " has macros that cannot be copied" + Because(details) +
               ". The copied sheets have none. Save the template again in the spreadsheet program "
               "and generate the calendar again.";
    case ErrorKind::SignatureNotKept:
        return path + " has signed macros, and the calendar is not signed because its copied "
                      "sheets have macros of their own. Sign it in the spreadsheet program.";
    case ErrorKind::TooDeeplyNested:
        return path + " is nested too deeply to be read" + Because(details) +
               ". Save it again in the spreadsheet program.";
    default:
        return {};
    }
}

std::string SheetSentence(ErrorKind kind, const util::ErrorDetails& details)
{
    const std::string name = Quoted(details.subject);
    switch (kind) {
    case ErrorKind::InvalidSheetName:
        return name +
               " cannot be the name of a sheet. Use 1 to 31 characters without "
               ": \\ / ? * [ ] and without an apostrophe at either end, and not \"History\".";
    case ErrorKind::SheetNameTaken:
        return "Another sheet is named " + name + " already. Rename that sheet in the template.";
    case ErrorKind::SheetNotCopied:
        return "The sheet " + name + " cannot be copied" + Because(details) +
               ". Check the sheet in the template.";
    case ErrorKind::StructureProtected:
        return "The sheet " + name +
               " cannot be renamed or copied because the structure of the workbook is protected. "
               "Remove that protection in the template.";
    case ErrorKind::CellOutsideSheet:
        return "The cell " + name +
               " lies outside the sheet. Check the cells and intervals of the parameters.";
    case ErrorKind::CellLocked:
        return "The cell " + name +
               " is locked on a protected sheet. Unlock the cell or remove the "
               "protection in the template.";
    case ErrorKind::PartOfArray:
        return "The cell " + name +
               " is part of an array formula and cannot be changed alone. "
               "Remove the array formula in the template.";
    case ErrorKind::TextTooLong:
        return "The text that begins with " + name +
               " is longer than the 32,767 characters that a cell can hold. Shorten it.";
    case ErrorKind::NotAWorksheet:
        return name + " is not a worksheet" + Because(details) +
               ". Choose a sheet that has cells in the parameters.";
    default:
        return {};
    }
}

std::string ApplicationSentence(ErrorKind kind, const util::ErrorDetails& details)
{
    switch (kind) {
    case ErrorKind::EngineMissing:
        return "The engine " + Quoted(details.subject) +
               " is not available here; choose the engine \"builtin\", which needs no other "
               "program.";
    case ErrorKind::PdfNotAvailable:
        if (details.subject == "builtin")
            return "A PDF by Orrery itself needs a library of Orrery that is not here. Install "
                   "Orrery again, or generate the calendar without a PDF.";
        return "A PDF needs Excel on Windows or LibreOffice on Linux, which is not available here. "
               "Install it, let Orrery make the PDF (--pdf-by builtin), or generate the calendar "
               "without a PDF.";
    case ErrorKind::NothingToPrint:
        return "The workbook has no calendar sheet that can be seen. Switch a calendar on in the "
               "parameters, and do not hide its sheet in the template.";
    case ErrorKind::ApplicationFailure:
        return details.cause;
    case ErrorKind::ApplicationLost:
        return Quoted(details.subject) + " does not answer any more" + Because(details) +
               ". Generate the calendar again.";
    default:
        return {};
    }
}

} // namespace

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details)
{
    if (kind <= ErrorKind::TooDeeplyNested)
        return WorkbookSentence(kind, details);
    if (kind <= ErrorKind::NotAWorksheet)
        return SheetSentence(kind, details);
    return ApplicationSentence(kind, details);
}

} // namespace orrery::book
