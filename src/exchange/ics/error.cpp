#include "exchange/ics/error.h"

#include "util/sentence.h"

namespace orrery::exchange {

std::string Sentence(IcsErrorKind kind, const util::ErrorDetails& details)
{
    switch (kind) {
    case IcsErrorKind::NotIcs:
        return util::QuotedOr(details.subject, "The file") +
               " is not a calendar. Export it again as an iCalendar file (.ics).";
    case IcsErrorKind::IcsTooLarge:
        return util::QuotedOr(details.subject, "The file") +
               " is larger than 100 MB. Export fewer years or fewer calendars at a time.";
    case IcsErrorKind::IcsNotAvailable:
        return "Calendars of other programs (.ics) are read by a library of Orrery that is not "
               "here. Install Orrery again.";
    case IcsErrorKind::IcsLibraryFailure:
        return "The library " + util::QuotedOr(details.subject, "for .ics files") +
               " cannot be used" + util::Because(details) + ". Install Orrery again.";
    }
    return {};
}

} // namespace orrery::exchange
