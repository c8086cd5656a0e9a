#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace orrery::ui::wx {

// The windows live on the main thread, inside its event loop; a test acts as the user on its own
// thread. It queries windows on the main thread, where every event loop answers, also that of a
// modal dialog or a message box.

/// What a test waited for did not happen in time.
class TimedOut : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// How long any step may take; more than needed, even with sanitizers on a busy machine.
inline constexpr std::chrono::seconds kPatience{ORRERY_PATIENCE};

/// Posts a function to the main thread and returns. It may show a modal dialog only if the caller
/// does not wait for the main thread's current command.
void PostToMain(std::function<void()> function);

/// Runs a function on the main thread and returns or throws what it does. The function must own
/// what it uses, or the caller's frame must outlive it: it may still run after TimedOut.
template <typename Function> auto OnMain(Function function) -> std::invoke_result_t<Function>
{
    using Result = std::invoke_result_t<Function>;
    const auto task = std::make_shared<std::packaged_task<Result()>>(std::move(function));
    std::future<Result> result = task->get_future();
    PostToMain([task] { (*task)(); });
    if (result.wait_for(kPatience) != std::future_status::ready)
        throw TimedOut("The main thread does not answer.");
    return result.get();
}

/// Whether the condition becomes true on the main thread within that time.
bool HappensWithin(std::chrono::milliseconds time, const std::function<bool()>& happened);

/// Evaluates the condition on the main thread until it is true; TimedOut names the event.
void WaitFor(const std::string& event, const std::function<bool()>& happened);

/// Waits until the main thread has handled everything in its queues.
void Settle();

} // namespace orrery::ui::wx
