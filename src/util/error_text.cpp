#include "util/error_text.h"

#include "util/error.h"
#include "util/paths.h"
#include "util/system_message.h"
#include "util/unicode.h"

#include <filesystem>
#include <new>

namespace orrery::util {

namespace {

std::string Quoted(const std::string& subject)
{
    return '"' + subject + '"';
}

/// The subject in quotes, or what stands for one that is not known.
std::string QuotedOr(const std::string& subject, const char* unknown)
{
    return subject.empty() ? unknown : Quoted(subject);
}

/// ": cause" or nothing, for the end of a sentence that goes on with its own full stop.
std::string Because(const Error& error)
{
    std::string cause = error.Cause();
    while (cause.ends_with('.'))
        cause.pop_back();
    return cause.empty() ? cause : ": " + cause;
}

/// Other programs say in lines what failed.
std::string PrintableCause(const Error& error)
{
    const bool isTheirs =
        error.Kind() == ErrorKind::ApplicationFailure || error.Kind() == ErrorKind::ShellFailure;
    return isTheirs ? error.Cause() : Printable(error.Cause());
}

std::string FileErrorText(const Error& error)
{
    const std::string path = QuotedOr(error.Subject(), "A file");
    switch (error.Kind()) {
    case ErrorKind::FileNotFound:
        return path + " was not found. Check the name and the folder.";
    case ErrorKind::FileNotReadable:
        return path + " cannot be read" + Because(error) +
               ". Close it in other programs and check its permissions.";
    case ErrorKind::FileNotWritable:
        return path + " cannot be written" + Because(error) +
               ". Close it in other programs and check the permissions of the file and its folder.";
    case ErrorKind::NotARegularFile:
        return path + " is not a regular file" + Because(error) +
               ". Only regular files are read and replaced: use another name, or put a file "
               "in its place.";
    case ErrorKind::TextFileTooLarge:
        return path +
               " is larger than 16 MiB, which no text file of this program is. Check that it "
               "is the right file.";
    case ErrorKind::FolderNotCreated:
        return "The folder " + Quoted(error.Subject()) + " cannot be created" + Because(error) +
               ". Check the permissions of the folder above it.";
    case ErrorKind::DiskFull:
        return path + " was not written because the disk is full. Make room and try again.";
    case ErrorKind::FileSizeLimit:
        return path + " was not written because it would pass the limit on the size of files that "
                      "is set for you. Raise the limit (ulimit -f) and try again.";
    case ErrorKind::OutputIsTemplate:
        return path +
               " is the file that the template's name leads to and would be replaced. Choose "
               "another output folder.";
    default:
        return {};
    }
}

std::string WorkbookErrorText(const Error& error)
{
    const std::string path = QuotedOr(error.Subject(), "The workbook");
    switch (error.Kind()) {
    case ErrorKind::NotAWorkbook:
        return path + " is not a workbook" + Because(error) + ". Choose an .xlsx or .xls file.";
    case ErrorKind::DamagedWorkbook:
        return path + " is damaged" + Because(error) +
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
    case ErrorKind::TooLargeUnpacked:
        return path + " becomes too large when it is unpacked" + Because(error) +
               ". Make it smaller in the spreadsheet program.";
    case ErrorKind::TooLargeOutput:
        return path + " would become too large" + Because(error) +
               ". Use a smaller sheet, or fewer objects on it, in the template.";
    case ErrorKind::TooDeeplyNested:
        return path + " is nested too deeply to be read" + Because(error) +
               ". Save it again in the spreadsheet program.";
    default:
        return {};
    }
}

std::string SheetErrorText(const Error& error)
{
    const std::string name = Quoted(error.Subject());
    switch (error.Kind()) {
    case ErrorKind::InvalidSheetName:
        return name +
               " cannot be the name of a sheet. Use 1 to 31 characters without "
               ": \\ / ? * [ ] and without an apostrophe at either end, and not \"History\".";
    case ErrorKind::SheetNameTaken:
        return "Another sheet is named " + name + " already. Rename that sheet in the template.";
    case ErrorKind::SheetNotCopied:
        return "The sheet " + name + " cannot be copied" + Because(error) +
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
        return name + " is not a worksheet" + Because(error) +
               ". Choose a sheet that has cells in the parameters.";
    default:
        return {};
    }
}

std::string KindText(const Error& error)
{
    switch (error.Kind()) {
    case ErrorKind::Overflow:
        return error.Subject().empty() ? "Overflow: a number is too large for its place."
                                       : "Overflow: " + Quoted(error.Subject()) +
                                             " leads to a number that is too large for its place.";
    case ErrorKind::OutOfRange:
        return "Out of range: an entry beyond the end of a list was asked for.";
    case ErrorKind::NotNumeric:
        return Quoted(error.Subject()) + " is not a number. Write digits only.";
    case ErrorKind::FileNotFound:
    case ErrorKind::FileNotReadable:
    case ErrorKind::FileNotWritable:
    case ErrorKind::NotARegularFile:
    case ErrorKind::TextFileTooLarge:
    case ErrorKind::FolderNotCreated:
    case ErrorKind::DiskFull:
    case ErrorKind::FileSizeLimit:
    case ErrorKind::OutputIsTemplate:
        return FileErrorText(error);
    case ErrorKind::NotAWorkbook:
    case ErrorKind::DamagedWorkbook:
    case ErrorKind::PasswordProtected:
    case ErrorKind::BinaryWorkbook:
    case ErrorKind::OldBinaryFormat:
    case ErrorKind::TooLargeUnpacked:
    case ErrorKind::TooLargeOutput:
    case ErrorKind::TooDeeplyNested:
        return WorkbookErrorText(error);
    case ErrorKind::InvalidSheetName:
    case ErrorKind::SheetNameTaken:
    case ErrorKind::SheetNotCopied:
    case ErrorKind::StructureProtected:
    case ErrorKind::CellOutsideSheet:
    case ErrorKind::CellLocked:
    case ErrorKind::PartOfArray:
    case ErrorKind::TextTooLong:
    case ErrorKind::NotAWorksheet:
        return SheetErrorText(error);
    case ErrorKind::EngineMissing:
        return "The engine " + Quoted(error.Subject()) +
               " is not available here; choose the engine \"builtin\", which needs no other "
               "program.";
    case ErrorKind::PdfNotAvailable:
        return "A PDF needs LibreOffice on Linux, which is not available here. Install it, or "
               "generate the calendar without a PDF.";
    case ErrorKind::NothingToPrint:
        return "The workbook has no calendar sheet that can be seen. Switch a calendar on in the "
               "parameters, and do not hide its sheet in the template.";
    case ErrorKind::ApplicationLost:
        return Quoted(error.Subject()) + " does not answer any more" + Because(error) +
               ". Generate the calendar again.";
    case ErrorKind::ApplicationFailure:
    case ErrorKind::ShellFailure:
        return error.Cause();
    case ErrorKind::WrongUsage:
        return "The command is not understood" + Because(error) + ". See --help.";
    }
    return {};
}

} // namespace

std::string Printable(std::string_view text)
{
    std::string printable;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const char32_t character = NextCharacter(text, at);
        if (character < 0x20 || (character >= 0x7F && character < 0xA0))
            AppendUtf8(printable, 0xFFFD);
        else
            printable += text.substr(begin, at - begin);
    }
    return printable;
}

std::string ErrorText(const std::exception& error)
{
    if (const auto* own = dynamic_cast<const Error*>(&error))
        return KindText(Error(own->Kind(), Printable(own->Subject()), PrintableCause(*own)));
    if (const auto* file = dynamic_cast<const std::filesystem::filesystem_error*>(&error))
        return QuotedOr(FromPath(file->path1()), "The current folder") +
               " cannot be used: " + SystemMessage(file->code()) + '.';
    if (dynamic_cast<const std::bad_alloc*>(&error))
        return "Out of memory. Close other programs and try again.";
    return error.what();
}

} // namespace orrery::util
