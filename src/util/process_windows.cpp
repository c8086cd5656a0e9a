#include "util/process.h"

namespace orrery::util {

// Windows has no such limit, and a file cannot take the place of a standard stream.
void PrepareProcess() {}

} // namespace orrery::util
