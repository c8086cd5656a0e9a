#include <windows.h>

#include <shellapi.h>
#undef ShellExecute // a macro of <windows.h>; here it is our own function

#include "util/code_page.h"
#include "util/error.h"
#include "util/shell.h"
#include "util/text.h"
#include "util/wide.h"

#include <chrono>
#include <cstdint>
#include <future>
#include <objbase.h>
#include <optional>
#include <thread>
#include <utility>

namespace orrery::util {
namespace {

constexpr int kLastFailure = 32;

/// A program is started hidden, unless it is opened like a document.
int ShowMode(const std::string& file, bool asDocument)
{
    if (asDocument)
        return SW_SHOWNORMAL;
    const bool program = ToUpperAscii(file).find(".EXE") != std::string::npos;
    return program ? SW_HIDE : SW_SHOWDEFAULT;
}

int ResultOf(HINSTANCE instance)
{
    const auto result = reinterpret_cast<std::intptr_t>(instance);
    return result > kLastFailure ? kLastFailure + 1 : static_cast<int>(result);
}

void Execute(HWND owner, const std::string& file, const std::string& parameters,
             const std::string& directory, const std::string& verb)
{
    const int mode = ShowMode(file, parameters.empty() && directory.empty());
    const auto ansiFile = EncodeCodePage(file);
    const auto ansiParameters = EncodeCodePage(parameters);
    const auto ansiDirectory = EncodeCodePage(directory);
    // Names with characters outside the code page need the wide call.
    const int result =
        ansiFile && ansiParameters && ansiDirectory
            ? ResultOf(ShellExecuteA(owner, verb.c_str(), ansiFile->c_str(),
                                     ansiParameters->c_str(), ansiDirectory->c_str(), mode))
            : ResultOf(ShellExecuteW(owner, ToWide(verb).c_str(), ToWide(file).c_str(),
                                     ToWide(parameters).c_str(), ToWide(directory).c_str(), mode));
    if (result <= kLastFailure)
        throw Error(ErrorKind::ShellFailure, file, ShellErrorMessage(result));
}

/// The shell may use extensions, which want an apartment of their own on the thread.
class ShellApartment {
public:
    ShellApartment()
        : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))
    {
    }
    ~ShellApartment()
    {
        if (SUCCEEDED(result_))
            CoUninitialize();
    }
    ShellApartment(const ShellApartment&) = delete;
    ShellApartment& operator=(const ShellApartment&) = delete;

private:
    HRESULT result_;
};

void DispatchMessages()
{
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;)
        DispatchMessageW(&message);
}

/// A call of the shell on a thread of its own. If this object goes first, as when the program ends,
/// it waits for the call for a while: what was asked for is opened, but a call that never returns
/// keeps no program alive. Its failure is not told then.
class ShellCall : public ShellOpening {
public:
    /// Throws std::system_error if there is no thread to be had.
    explicit ShellCall(const std::string& file)
    {
        HWND const owner = GetAncestor(GetActiveWindow(), GA_ROOTOWNER); // a dialog may close
        std::packaged_task<void()> task([owner, file] {
            const ShellApartment apartment;
            Execute(owner, file, {}, {}, "open");
        });
        call_ = task.get_future();
        std::thread(std::move(task)).detach();
    }
    ~ShellCall() override
    {
        constexpr auto kStep = std::chrono::milliseconds(10);
        constexpr int kSteps = 500;
        for (int i = 0; i < kSteps && !IsReady(kStep); ++i)
            DispatchMessages(); // the call may send some to this thread's windows
    }
    ShellCall(const ShellCall&) = delete;
    ShellCall& operator=(const ShellCall&) = delete;

    bool HasEnded() override
    {
        if (!IsReady(std::chrono::milliseconds(0)))
            return false;
        if (call_.valid())
            call_.get();
        return true;
    }

private:
    /// Whether the call has ended, then or earlier.
    bool IsReady(std::chrono::milliseconds time) const
    {
        return !call_.valid() || call_.wait_for(time) == std::future_status::ready;
    }

    std::future<void> call_; // not valid when its end was told
};

} // namespace

void ShellExecute(const std::string& file, const std::string& parameters,
                  const std::string& directory, const std::string& verb)
{
    Execute(GetActiveWindow(), file, parameters, directory, verb);
}

std::unique_ptr<ShellOpening> StartShellOpen(const std::string& file)
{
    return std::make_unique<ShellCall>(file);
}

} // namespace orrery::util
