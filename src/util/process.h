#pragma once

namespace orrery::util {

/// To be called first by every program. From then on a write beyond the limit on the size of files
/// fails like others, instead of ending the program, and no file that is opened takes the place of
/// a standard stream that was closed: writing there fails. Up to 16 MiB of freed memory stay with
/// the program.
void PrepareProcess();

} // namespace orrery::util
