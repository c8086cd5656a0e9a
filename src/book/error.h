#pragma once

#include "util/error.h"

#include <string>

namespace orrery::book {

/// What can go wrong with workbooks and spreadsheet applications.
enum class ErrorKind {
    // workbooks; the subject is the path
    NotAWorkbook,
    DamagedWorkbook, ///< cause says what and in which part
    PasswordProtected,
    BinaryWorkbook,  ///< .xlsb
    OldBinaryFormat, ///< .xls of the versions before BIFF8
    WrongExtension,  ///< the cause is the extension that fits the content
    PathTooLong,     ///< for an application; the cause says what it takes
    TooLargeUnpacked,
    TooLargeOutput,   ///< the cause says what would exceed which limit
    MacrosNotCopied,  ///< copied sheets have none; the cause says why
    SignatureNotKept, ///< of the macros, because copied sheets have macros of their own
    TooDeeplyNested,
    // sheets and cells; the subject is the name or the cell
    InvalidSheetName,
    SheetNameTaken,
    SheetNotCopied,
    StructureProtected, ///< sheets of a protected workbook cannot be renamed or copied
    CellOutsideSheet,
    CellLocked,
    PartOfArray,
    TextTooLong, ///< for a cell; the subject is the start of the text
    NotAWorksheet,
    // applications
    EngineMissing,      ///< the subject is the engine's name
    PdfNotAvailable,    ///< nothing makes PDF files; the subject is "builtin" if that was asked for
    NothingToPrint,     ///< the workbook has no visible calendar sheet
    ApplicationFailure, ///< the cause is the application's own description
    ApplicationLost,    ///< it no longer answers; the subject is its name
};

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details);

} // namespace orrery::book
