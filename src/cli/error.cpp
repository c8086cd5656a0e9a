#include "cli/error.h"

#include "util/sentence.h"

namespace orrery::cli {

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details)
{
    switch (kind) {
    case ErrorKind::WrongUsage:
        return "The command is not understood" + util::Because(details) + ". See --help.";
    case ErrorKind::NoSuchSheet:
        return "The workbook has no sheet " + util::Quoted(details.subject) +
               util::Because(details) + ". Name another sheet.";
    case ErrorKind::NoSuchPage:
        return "The template makes no page for " + details.subject + util::Because(details) +
               ". Look at its parameters, or use the command check.";
    case ErrorKind::WouldReplaceInput:
        return "The picture would replace " + util::Quoted(details.subject) +
               util::Because(details) + ". Save it under another name.";
    }
    return {};
}

} // namespace orrery::cli
