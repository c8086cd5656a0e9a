#include "generate/failure.h"

#include "book/error.h"
#include "util/error.h"
#include "util/error_text.h"

namespace orrery::generate {

bool IsApplicationLost(const std::exception& error)
{
    const auto* const own = dynamic_cast<const Error*>(&error);
    return own != nullptr && own->Kind() == book::ErrorKind::ApplicationLost;
}

void ReportFailure(const std::string& sentence, const std::exception& error, Context& context)
{
    context.observer.Report(sentence + "\r\n" + util::ErrorText(error));
    if (IsApplicationLost(error))
        throw RunEnded();
}

} // namespace orrery::generate
