#include "util/error.h"

#include <utility>

namespace orrery::util {

namespace {

std::string LogText(const AnyErrorKind& kind, const ErrorDetails& details)
{
    std::string text = "error " + std::to_string(kind.Value());
    for (const std::string* part : {&details.subject, &details.cause}) {
        if (!part->empty())
            text += ": " + *part;
    }
    return text;
}

} // namespace

Error::Error(AnyErrorKind kind, std::string subject, std::string cause)
    : kind_(kind), details_{std::move(subject), std::move(cause)}, what_(LogText(kind_, details_))
{
}

} // namespace orrery::util
