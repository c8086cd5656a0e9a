#include "exchange/error.h"

#include "util/sentence.h"

namespace orrery::exchange {

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details)
{
    switch (kind) {
    case ErrorKind::TooManyRules:
        return "The events would become " + details.subject +
               " rules, and a list holds 1,025. Take fewer years, such as 2027-2028 (--years "
               "2027-2028 on the command line).";
    case ErrorKind::FileTooLarge:
        return util::Quoted(details.subject) +
               " is larger than 100 MB. Save fewer rows of the table in it.";
    case ErrorKind::NotAText:
        return util::QuotedOr(details.subject, "The clipboard") +
               " is not a text. Save the table as CSV, or the calendar as iCalendar (.ics).";
    case ErrorKind::NoDates:
        return util::QuotedOr(details.subject, "The clipboard") +
               " has no dates with names beside them. Write each date with its year, such as "
               "2027-05-01, and its name behind it.";
    case ErrorKind::NoSuchSection:
        return "The file has no section " + util::Quoted(details.subject) + util::Because(details) +
               ". Name another one, or none for all.";
    }
    return {};
}

} // namespace orrery::exchange
