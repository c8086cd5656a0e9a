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
    case ErrorKind::ParametersExist:
        return "The parameter file " + util::Quoted(details.subject) +
               " is there already. Remove it first, or change it in the window.";
    case ErrorKind::NothingToWrite:
        return "No calendar was found in " + util::Quoted(details.subject) +
               ", so no parameter file was written.";
    case ErrorKind::NoSuchRegion:
        return "The holidays know no region " + util::Quoted(details.subject) +
               util::Because(details) + ". Choose another region, or none.";
    case ErrorKind::AmbiguousDates:
        return "The dates of " + util::Quoted(details.subject) + " can be read in several orders" +
               util::Because(details) + ". Choose one with --date-order.";
    case ErrorKind::OutputExists:
        return "The holiday file " + util::Quoted(details.subject) +
               " is there already. Replace it with --replace, or name another one with --output.";
    case ErrorKind::NothingToImport:
        return util::Quoted(details.subject) +
               " has no events that can be holidays, so no holiday file was written.";
    case ErrorKind::WouldReplaceInput:
        return "The picture would replace " + util::Quoted(details.subject) +
               util::Because(details) + ". Save it under another name.";
    case ErrorKind::WouldReplaceHolidays:
        return "The calendar would replace the holiday file " + util::Quoted(details.subject) +
               util::Because(details) + ". Save it under another name.";
    }
    return {};
}

} // namespace orrery::cli
