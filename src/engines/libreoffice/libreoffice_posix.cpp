#include "engines/libreoffice/libreoffice.h"

#include "book/error.h"
#include "engines/libreoffice/installation.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/plugin/plugin.h"

#include <cstdlib>
#include <dlfcn.h>
#include <optional>
#include <utility>

namespace orrery::libreoffice {
namespace {

namespace fs = std::filesystem;
using book::ErrorKind;

constexpr const char* kLibrary = "orrery-libreoffice";

fs::path Profiles()
{
    const char* const cache = std::getenv("XDG_CACHE_HOME");
    if (cache != nullptr && fs::path(cache).is_absolute())
        return fs::path(cache) / "orrery" / "libreoffice";
    const char* const home = std::getenv("HOME");
    return (home == nullptr ? fs::temp_directory_path() : fs::path(home) / ".cache") / "orrery" /
           "libreoffice";
}

bool HasDisplay()
{
    for (const char* const variable : {"DISPLAY", "WAYLAND_DISPLAY"}) {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return true;
    }
    return false;
}

void* Load(const fs::path& library)
{
    void* const handle = ::dlopen(library.c_str(), RTLD_NOW | RTLD_GLOBAL);
    if (handle == nullptr)
        throw Error(ErrorKind::ApplicationFailure, "LibreOffice",
                    std::string("LibreOffice could not be started: ") + ::dlerror());
    return handle;
}

Plugin& LoadPlugin(const fs::path& programFolder)
{
    const auto library = util::FindPlugin(kLibrary);
    if (!library)
        throw Error(ErrorKind::EngineMissing, "libreoffice");
    // The plug-in is not linked with LibreOffice: it uses the libraries loaded here.
    for (const char* const needed : {"libuno_sal.so.3", "libuno_salhelpergcc3.so.3",
                                     "libuno_cppu.so.3", "libuno_cppuhelpergcc3.so.3"})
        Load(programFolder / needed);
    void* const function = ::dlsym(Load(*library), kPluginFunction);
    if (function == nullptr)
        throw Error(ErrorKind::ApplicationFailure, "LibreOffice",
                    "LibreOffice could not be started: " + util::FromPath(*library) +
                        " is not of this program");
    return *reinterpret_cast<PluginFunction>(function)();
}

struct Office {
    Plugin& plugin;
    StartOptions options;
};

Office FindOffice()
{
    const auto programFolder = FindInstallation();
    if (!programFolder)
        throw Error(ErrorKind::EngineMissing, "libreoffice");
    static Plugin& plugin = LoadPlugin(*programFolder); // never unloaded: its threads go on
    StartOptions options;
    options.programFolder = *programFolder;
    options.profiles = Profiles();
    options.hasDisplay = HasDisplay();
    return {plugin, options};
}

} // namespace

bool IsInstalled()
{
    return util::FindPlugin(kLibrary) && FindInstallation();
}

std::unique_ptr<book::Application> CreateApplication(StructureReader hasProtectedStructure)
{
    Office office = FindOffice();
    office.options.hasProtectedStructure = std::move(hasProtectedStructure);
    return office.plugin.StartApplication(office.options);
}

std::unique_ptr<book::PdfPrinter> CreatePdfPrinter()
{
    const Office office = FindOffice();
    return office.plugin.StartPdfPrinter(office.options);
}

} // namespace orrery::libreoffice
