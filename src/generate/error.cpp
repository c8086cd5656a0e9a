#include "generate/error.h"

#include "util/sentence.h"

namespace orrery::generate {

std::string Sentence(ErrorKind /*kind*/, const util::ErrorDetails& details)
{
    return util::QuotedOr(details.subject, "A file") +
           " is the file that the template's name leads to and would be replaced. Choose "
           "another output folder.";
}

} // namespace orrery::generate
