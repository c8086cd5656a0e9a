#include "engines/excel/application.h"

#include "book/error.h"
#include "engines/excel/excel_application.h"
#include "engines/excel/registration.h"
#include "util/error.h"
#include "util/system_message.h"

#include <string>
#include <system_error>
#include <utility>

namespace orrery::excel {
namespace {

using book::ErrorKind;

/// Whether the registered program does not exist, as after an uninstallation.
bool IsProgramMissing(HRESULT code)
{
    constexpr auto fileNotFound = static_cast<HRESULT>(0x80070002);
    constexpr auto pathNotFound = static_cast<HRESULT>(0x80070003);
    return code == REGDB_E_CLASSNOTREG || code == CO_E_APPNOTFOUND || code == fileNotFound ||
           code == pathNotFound;
}

[[noreturn]] void FailToStart(HRESULT code)
{
    if (IsProgramMissing(code))
        throw Error(ErrorKind::EngineMissing, "excel");
    throw Error(ErrorKind::ApplicationFailure, kApplicationName,
                std::string(kApplicationName) + " could not be started: " +
                    util::SystemMessage({code, std::system_category()}) + '.');
}

Instance StartInstance(const CLSID& classId)
{
    const ProcessWatch watch(ServerImage(classId));
    Pointer<IDispatch> application;
    const HRESULT code = CoCreateInstance(classId, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                          application.ReceiveAny());
    auto process = watch.Started();
    if (!Failed(code))
        return {std::move(application), std::move(process)};
    if (process) // it was started but did not become ready in time
        process->End();
    FailToStart(code);
}

} // namespace

bool IsInstalled()
{
    return FindClass().has_value();
}

std::unique_ptr<book::Application> CreateApplication(StartOptions options)
{
    const auto classId = FindClass();
    if (!classId)
        throw Error(ErrorKind::EngineMissing, "excel");
    return std::make_unique<ExcelApplication>([&] { return StartInstance(*classId); },
                                              std::make_unique<SystemClock>(), std::move(options));
}

} // namespace orrery::excel
