#pragma once

#include <exception>
#include <string>

namespace orrery::util {

/// What went wrong. `ErrorText` has one sentence for every kind.
enum class ErrorKind {
    // numbers and tables
    Overflow,   ///< a result does not fit its width
    OutOfRange, ///< an index beyond its table
    NotNumeric, ///< a text that had to be a number
    // files; the subject is the path
    FileNotFound,
    FileNotReadable,
    FileNotWritable,
    NotARegularFile,  ///< a folder, a device, a pipe; the cause says which
    TextFileTooLarge, ///< beyond what is read of a text file
    FolderNotCreated,
    DiskFull,
    FileSizeLimit,    ///< the system's limit on the size of the user's files
    OutputIsTemplate, ///< a calendar would replace the template that it is made from
    // workbooks; the subject is the path
    NotAWorkbook,
    DamagedWorkbook, ///< cause says what and in which part
    PasswordProtected,
    BinaryWorkbook,  ///< .xlsb
    OldBinaryFormat, ///< .xls of the versions before BIFF8
    TooLargeUnpacked,
    TooLargeOutput, ///< the cause says what would grow beyond which limit
    TooDeeplyNested,
    // sheets and cells; the subject is the name or the cell
    InvalidSheetName,
    SheetNameTaken,
    SheetNotCopied,
    StructureProtected, ///< sheets of a protected workbook cannot be renamed or copied
    CellOutsideSheet,
    CellLocked,
    PartOfArray,
    TextTooLong, ///< for a cell; the subject is its beginning
    NotAWorksheet,
    // applications
    EngineMissing,      ///< the subject is the engine's name
    PdfNotAvailable,    ///< nothing here makes PDF files
    NothingToPrint,     ///< a workbook without a sheet of a calendar that can be seen
    ApplicationFailure, ///< the cause is the application's own description
    ApplicationLost,    ///< it does not answer any more; the subject is its name
    // the shell; the cause is the message of the result table
    ShellFailure,
    WrongUsage,
};

/// The base of everything that the program throws: data, not prose. Sentences are made by
/// `ErrorText` alone.
class Error : public std::exception {
public:
    explicit Error(ErrorKind kind, std::string subject = {}, std::string cause = {});

    ErrorKind Kind() const noexcept { return kind_; }
    const std::string& Subject() const noexcept
    {
        return subject_;
    } ///< path, sheet, cell; may be empty
    const std::string& Cause() const noexcept
    {
        return cause_;
    } ///< what lies beneath; may be empty
    const char* what() const noexcept override
    {
        return what_.c_str();
    } ///< for logs, not for users

private:
    ErrorKind kind_;
    std::string subject_;
    std::string cause_;
    std::string what_;
};

/// A result that does not fit its width.
class OverflowError : public Error {
public:
    OverflowError() : Error(ErrorKind::Overflow) {}
};

/// An index beyond its table.
class OutOfRangeError : public Error {
public:
    OutOfRangeError() : Error(ErrorKind::OutOfRange) {}
};

} // namespace orrery::util

namespace orrery {
using util::Error;
}
