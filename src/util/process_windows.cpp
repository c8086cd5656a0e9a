#include "util/process.h"

namespace orrery::util {

// Windows has no such limit, and standard streams are no numbers that files take.
void PrepareProcess() {}

} // namespace orrery::util
