#pragma once

namespace orrery::util {

/// Every program calls this first. From then on a write beyond the file size limit fails instead of
/// ending the program, and a newly opened file never takes the number of a closed standard stream:
/// writing to that stream fails. Up to 16 MiB of freed memory stay with the program.
void PrepareProcess();

} // namespace orrery::util
