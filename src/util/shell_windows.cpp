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

/// The shell may use extensions and DDE, which want an apartment of their own on the thread.
class ShellApartment {
public:
    ShellApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
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

/// A call of the shell on a thread of its own. What was asked for is opened even if this object
/// goes first: it then waits for the call.
class ShellCall : public ShellOpening {
public:
    explicit ShellCall(const std::string& file)
        : call_(std::async(std::launch::async, [owner = GetActiveWindow(), file] {
              const ShellApartment apartment;
              Execute(owner, file, {}, {}, "open");
          }))
    {
    }

    bool HasEnded() override
    {
        if (!call_.valid()) // its end was told already
            return true;
        if (call_.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
            return false;
        call_.get();
        return true;
    }

private:
    std::future<void> call_;
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
