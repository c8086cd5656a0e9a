#include "model/error.h"

#include "util/sentence.h"

namespace orrery::model {

std::string Sentence(ErrorKind /*kind*/, const util::ErrorDetails& details)
{
    return "The names " + util::QuotedBeginning(details.subject) +
           " are a new list, and there are already 257. Remove lists from the settings file. "
           "Nothing after this line is read.";
}

} // namespace orrery::model
