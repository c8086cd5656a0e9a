#include "util/shell.h"
#include "util/error.h"
#include "util/error_text.h"

namespace orrery::util {

std::string ShellErrorMessage(int result)
{
    // The doubled word and the two blanks after a full stop are kept on purpose.
    switch (result) {
    case 0:
    case 8:
        return "Out of memory";
    case 2:
        return "File not found";
    case 3:
        return "Path not found";
    case 5:
        return "Path/file access error";
    case 11:
        return "The executable file is invalid or corrupt";
    case 26:
        return "A sharing violation occurred.";
    case 27:
        return "This file type does not have a valid file association.";
    case 28:
        return "The file could not be opened due to time out.  Please try again in a moment.";
    case 29:
        return "The file could not be opened because the DDE transaction failed.  "
               "Please try again in a moment.";
    case 30:
        return "The file could not be opened because the target application is busy.  "
               "Please try again in a moment.";
    case 31:
        return "No application is associated with this file type.";
    case 32:
        return "The specified dynamic-link library was not found.";
    default:
        return "An error occurred occurred whilst trying to open or print the selected file.";
    }
}

bool ShellOpen(const std::string& file, ErrorReporter& reporter)
{
    try {
        ShellExecute(file, {}, {}, "open");
        return true;
    }
    catch (const Error& error) {
        reporter.Report(ErrorText(error));
        return false;
    }
}

} // namespace orrery::util
