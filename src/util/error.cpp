#include "util/error.h"

#include <utility>

namespace orrery::util {

namespace {

std::string LogText(ErrorKind kind, const std::string& subject, const std::string& cause)
{
    std::string text = "error " + std::to_string(static_cast<int>(kind));
    for (const std::string* part : {&subject, &cause}) {
        if (!part->empty())
            text += ": " + *part;
    }
    return text;
}

} // namespace

Error::Error(ErrorKind kind, std::string subject, std::string cause)
    : kind_(kind), subject_(std::move(subject)), cause_(std::move(cause)),
      what_(LogText(kind_, subject_, cause_))
{
}

} // namespace orrery::util
