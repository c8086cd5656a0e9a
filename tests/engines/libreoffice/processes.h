#pragma once

#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orrery::libreoffice::test {

/// The descendants of this process that have not ended.
std::vector<pid_t> Descendants();
/// Sends the signal to LibreOffice's own processes among them. Returns how many there were.
int SignalOffice(int signal);
bool IsAlive(pid_t process);
/// Whether the condition becomes true within a minute.
bool Eventually(const std::function<bool()>& condition);

} // namespace orrery::libreoffice::test
