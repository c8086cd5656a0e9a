#include "util/error_text.h"

#include "util/error.h"
#include "util/paths.h"
#include "util/sentence.h"
#include "util/system_message.h"

#include <filesystem>
#include <new>

namespace orrery::util {

std::string ErrorText(const std::exception& error)
{
    if (const auto* own = dynamic_cast<const Error*>(&error))
        return own->Kind().SentenceFor({Printable(own->Subject()), own->Cause()});
    if (const auto* file = dynamic_cast<const std::filesystem::filesystem_error*>(&error))
        return QuotedOr(FromPath(file->path1()), "The current folder") +
               " cannot be used: " + SystemMessage(file->code()) + '.';
    if (dynamic_cast<const std::bad_alloc*>(&error))
        return "Out of memory. Close other programs and try again.";
    return error.what();
}

} // namespace orrery::util
