#include "engines/excel/application.h"

#include "book/error.h"
#include "engines/excel/call_watch.h"
#include "engines/excel/excel_application.h"
#include "engines/excel/paths.h"
#include "engines/excel/pdf_printer.h"
#include "engines/excel/registration.h"
#include "util/error.h"

#include <optional>
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
    FailWith("Excel could not be started", code);
}

HRESULT Create(const CLSID& classId, Pointer<IDispatch>& application, CallWatch* watch)
{
    const CallWatch::Call call(watch);
    return CoCreateInstance(classId, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                            application.ReceiveAny());
}

Instance StartInstance(const CLSID& classId, book::Patience* patience)
{
    const ProcessWatch started(ServerImage(classId));
    std::optional<CallWatch> watch;
    if (patience != nullptr) {
        watch.emplace(*patience, [&started] {
            const auto process = started.Started();
            return process && process->EndUnlessShown();
        });
    }
    Pointer<IDispatch> application;
    const HRESULT code = Create(classId, application, watch ? &*watch : nullptr);
    auto process = started.Started();
    const bool isGivenUp = watch && watch->IsGivenUp();
    if (!Failed(code) && !isGivenUp) {
        std::function<void()> allowForeground;
        if (process)
            allowForeground = [id = process->Id()] { AllowSetForegroundWindow(id); };
        return {std::move(application), std::move(process), std::move(allowForeground)};
    }
    if (process) // it was started but did not become ready in time, or is not wanted any more
        process->EndUnlessShown();
    if (isGivenUp)
        throw Error(ErrorKind::ApplicationLost, kApplicationName, kGivenUp);
    FailToStart(code);
}

std::unique_ptr<ExcelApplication> Start(const StartOptions& options)
{
    const Apartment apartment;
    const auto classId = FindClass(apartment);
    if (!classId)
        throw Error(ErrorKind::EngineMissing, "excel");
    for (const auto& file : options.files)
        CheckPathLength(file);
    book::Patience* const patience = options.patience;
    return std::make_unique<ExcelApplication>([&] { return StartInstance(*classId, patience); },
                                              std::make_unique<SystemClock>(), options);
}

} // namespace

bool IsInstalled()
{
    return FindClass(Apartment()).has_value();
}

std::unique_ptr<book::Application> CreateApplication(const StartOptions& options)
{
    return Start(options);
}

std::unique_ptr<book::PdfPrinter> CreatePdfPrinter(const StartOptions& options)
{
    return std::make_unique<ExcelPdfPrinter>(Start(options));
}

} // namespace orrery::excel
