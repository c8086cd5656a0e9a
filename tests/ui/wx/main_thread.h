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

// The windows live on the main thread, inside its event loop; a test acts as the user on a thread
// of its own. What a test wants to know of a window it asks on the main thread: every event loop
// answers, that of a modal dialog or a message box, too.

/// The main thread did not do what a test waited for.
class TookTooLong : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// How long anything may take; more than any step needs, sanitizers and busy processors included.
inline constexpr std::chrono::seconds kPatience{ORRERY_PATIENCE};

/// Hands a function to the main thread and goes on. It must not show anything modal unless the
/// caller never waits for the main thread's current command.
void PostToMain(std::function<void()> function);

/// Runs a function on the main thread and gives what it returns or throws. The function owns what
/// it uses, or the caller's frame must outlive it: it may run after TookTooLong.
template <typename Function> auto OnMain(Function function) -> std::invoke_result_t<Function>
{
    using Result = std::invoke_result_t<Function>;
    const auto task = std::make_shared<std::packaged_task<Result()>>(std::move(function));
    std::future<Result> result = task->get_future();
    PostToMain([task] { (*task)(); });
    if (result.wait_for(kPatience) != std::future_status::ready)
        throw TookTooLong("The main thread does not answer.");
    return result.get();
}

/// Whether the main thread sees it happen within that time.
bool HappensWithin(std::chrono::milliseconds time, const std::function<bool()>& happened);

/// Asks the main thread again and again until the answer is yes; TookTooLong names the event.
void WaitFor(const std::string& event, const std::function<bool()>& happened);

/// Waits until the main thread has handled what lies in its queues.
void Settle();

} // namespace orrery::ui::wx
