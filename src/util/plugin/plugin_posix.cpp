#include "util/plugin/plugin.h"

#include <dlfcn.h>
#include <string>
#include <system_error>

namespace orrery::util {

namespace fs = std::filesystem;

std::optional<fs::path> FindPlugin(const char* name)
{
    std::error_code failure;
    const fs::path program = fs::read_symlink("/proc/self/exe", failure).parent_path();
    const std::string library = std::string(name) + ".so";
    for (const fs::path& folder : {program, program / ORRERY_PLUGIN_DIR}) {
        if (fs::exists(folder / library, failure))
            return (folder / library).lexically_normal();
    }
    return std::nullopt;
}

void* LoadPluginFunction(const fs::path& library, const char* function)
{
    void* const handle = ::dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    return handle == nullptr ? nullptr : ::dlsym(handle, function);
}

} // namespace orrery::util
