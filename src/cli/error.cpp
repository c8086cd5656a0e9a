#include "cli/error.h"

#include "util/sentence.h"

namespace orrery::cli {

std::string Sentence(ErrorKind /*kind*/, const util::ErrorDetails& details)
{
    return "The command is not understood" + util::Because(details) + ". See --help.";
}

} // namespace orrery::cli
