#include "util/plugin/plugin.h"

#include <string>
#include <system_error>
#include <windows.h>

namespace orrery::util {

namespace fs = std::filesystem;

std::optional<fs::path> FindPlugin(const char* name)
{
    constexpr std::size_t longestPath = 32768;
    std::wstring program(longestPath, L'\0');
    const DWORD length =
        ::GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    program.resize(length);
    const fs::path library = fs::path(program).parent_path() / (std::string(name) + ".dll");
    std::error_code failure;
    if (length == 0 || !fs::exists(library, failure))
        return std::nullopt;
    return library;
}

void* LoadPluginFunction(const fs::path& library, const char* function)
{
    // Only Windows' own libraries are looked for, in Windows' own folder.
    const HMODULE module = ::LoadLibraryExW(library.c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (module == nullptr)
        return nullptr;
    return reinterpret_cast<void*>(::GetProcAddress(module, function));
}

} // namespace orrery::util
