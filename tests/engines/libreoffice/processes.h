#pragma once

#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orrery::libreoffice::test {

/// The processes below this one, however deep, but for those that have ended.
std::vector<pid_t> Descendants();
/// Sends the signal to LibreOffice's own processes below this one. How many there were.
int SignalOffice(int signal);
bool IsAlive(pid_t process);
/// Whether the condition comes true within a minute.
bool Soon(const std::function<bool()>& condition);

} // namespace orrery::libreoffice::test
