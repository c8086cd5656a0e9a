#include <windows.h>

#include <shellapi.h>
#undef ShellExecute // a macro of <windows.h>; here it is our own function

#include "util/code_page.h"
#include "util/error.h"
#include "util/shell.h"
#include "util/text.h"
#include "util/wide.h"

#include <cstdint>
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

} // namespace

void ShellExecute(const std::string& file, const std::string& parameters,
                  const std::string& directory, const std::string& verb)
{
    const int mode = ShowMode(file, parameters.empty() && directory.empty());
    HWND const owner = GetActiveWindow();
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

std::unique_ptr<ShellOpening> StartShellOpen(const std::string& file)
{
    ShellExecute(file, {}, {}, "open");
    return nullptr;
}

} // namespace orrery::util
