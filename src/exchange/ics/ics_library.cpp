#include "exchange/ics/ics_library.h"

#include "exchange/ics/error.h"
#include "util/paths.h"
#include "util/plugin/plugin.h"

namespace orrery::exchange {
namespace {

constexpr const char* kLibrary = "orrery-ical";

IcsFunction LoadIcsLibrary()
{
    const auto library = util::FindPlugin(kLibrary);
    if (!library)
        throw Error(IcsErrorKind::IcsNotAvailable);
    void* const function = util::LoadPluginFunction(*library, kIcsFunction);
    if (function == nullptr)
        throw Error(IcsErrorKind::IcsLibraryFailure, util::FromPath(*library));
    return reinterpret_cast<IcsFunction>(function);
}

} // namespace

std::unique_ptr<IcsParser> MakeIcsParser(Years years)
{
    static const IcsFunction make = LoadIcsLibrary();
    std::unique_ptr<IcsParser> parser(make(years.first, years.last));
    if (!parser)
        throw Error(IcsErrorKind::IcsLibraryFailure, kLibrary, "there is not enough memory");
    return parser;
}

} // namespace orrery::exchange
