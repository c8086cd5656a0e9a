#include "engines/libreoffice/plugin/office.h"

#include "book/error.h"
#include "util/file_read.h"
#include "util/paths.h"

#include <com/sun/star/bridge/BridgeFactory.hpp>
#include <com/sun/star/connection/Connector.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <osl/file.hxx>
#include <rtl/bootstrap.hxx>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <random>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace orrery::libreoffice {
namespace {

using Clock = std::chrono::steady_clock;
using css::uno::UNO_QUERY_THROW;

constexpr const char* kEnded = "it ended at once.";
constexpr const char* kNoAnswer = "it did not answer in time.";

constexpr std::string_view kPipePrefix = "orrery-";
constexpr std::string_view kPipeDigits = "0123456789abcdef";

/// A random name.
std::string NewPipeName()
{
    std::random_device random;
    std::string name(kPipePrefix);
    for (int i = 0; i < 16; ++i)
        name += kPipeDigits[random() % kPipeDigits.size()];
    return name;
}

/// Removes the file of the pipe, which LibreOffice leaves behind if it is killed.
void RemovePipe(const std::string& name)
{
    std::error_code ignored;
    std::filesystem::remove("/tmp/OSL_PIPE_" + std::to_string(::getuid()) + '_' + name, ignored);
}

/// A name for the pipe of the profile's next instance. The last instance's pipe is removed, because
/// nobody else does that if it was killed together with its program.
std::string NextPipeName(const ProfileFolder& profile)
{
    const auto record = profile.Path() / "pipe";
    const std::string last = util::ReadTextFile(record).value_or("");
    if (last.starts_with(kPipePrefix) &&
        last.find_first_not_of(kPipeDigits, kPipePrefix.size()) == std::string::npos)
        RemovePipe(last);
    std::string name = NewPipeName();
    std::ofstream(record) << name; // if this fails, one file may stay
    return name;
}

std::string Address(const std::string& pipe)
{
    return "pipe,name=" + pipe;
}

std::vector<std::string> Command(const StartOptions& options, const ProfileFolder& profile,
                                 const std::string& pipe)
{
    return {"/usr/bin/env",
            "TMPDIR=" + util::FromPath(profile.TemporaryPath()),
            util::FromPath(options.programFolder / "soffice"),
            "--accept=" + Address(pipe) + ";urp",
            "-env:UserInstallation=" + FromUno(ToUrl(profile.Path())),
            options.hasDisplay ? "--invisible" : "--headless",
            "--norestore",
            "--nologo",
            "--nodefault",
            "--nofirststartwizard"};
}

/// This program's part of the object model, created once, because its libraries cannot be unloaded.
const Reference<css::uno::XComponentContext>& LocalContext(const std::filesystem::path& program)
{
    static const auto context = [&] {
        // "unorc" knows only the types of the language; those of the office are in a folder.
        rtl::Bootstrap::set("URE_MORE_TYPES", "<" + ToUrl(program / "types") + ">*");
        return cppu::defaultBootstrap_InitialComponentContext(ToUrl(program / "unorc"));
    }();
    return context;
}

[[noreturn]] void ThrowNotStarted(const std::string& why)
{
    throw Error(book::ErrorKind::ApplicationFailure, "LibreOffice",
                "LibreOffice could not be started: " + why);
}

} // namespace

rtl::OUString ToUno(std::string_view utf8)
{
    return {utf8.data(), static_cast<sal_Int32>(utf8.size()), RTL_TEXTENCODING_UTF8};
}

std::string FromUno(const rtl::OUString& text)
{
    const rtl::OString utf8 = rtl::OUStringToOString(text, RTL_TEXTENCODING_UTF8);
    return {utf8.getStr(), static_cast<std::size_t>(utf8.getLength())};
}

rtl::OUString ToUrl(const std::filesystem::path& path)
{
    rtl::OUString url;
    osl::FileBase::getFileURLFromSystemPath(ToUno(util::AbsolutePath(util::FromPath(path))), url);
    return url;
}

css::uno::Sequence<css::beans::PropertyValue>
Arguments(std::initializer_list<std::pair<const char*, Any>> arguments)
{
    css::uno::Sequence<css::beans::PropertyValue> sequence(
        static_cast<sal_Int32>(arguments.size()));
    std::transform(arguments.begin(), arguments.end(), sequence.getArray(),
                   [](const auto& argument) {
                       css::beans::PropertyValue value;
                       value.Name = ToUno(argument.first);
                       value.Value = argument.second;
                       return value;
                   });
    return sequence;
}

Office::Office(const StartOptions& options)
    : options_(options), profile_(options.profiles), pipe_(NextPipeName(profile_)),
      process_(Command(options, profile_, pipe_), profile_.Lock()),
      watchdog_(
          options.timeouts, [this] { return process_.ComputedTime(); }, [this] { process_.Kill(); })
{
    std::signal(SIGPIPE, SIG_IGN); // a call to an instance that is gone then just fails
    try {
        Connect();
    }
    catch (...) {
        End();
        throw;
    }
}

Office::~Office()
{
    Disconnect();
    if (!hasLeft_)
        End();
}

/// Drops every reference to the instance and ends the threads of the connection.
void Office::Disconnect()
{
    unseen_.Clear();
    desktop_.clear();
    context_.clear();
    try {
        if (bridge_.is())
            Reference<css::lang::XComponent>(bridge_, UNO_QUERY_THROW)->dispose();
    }
    catch (const css::uno::Exception&) { // it has already ended
    }
    bridge_.clear();
}

/// By force. The profile may be left damaged.
void Office::End()
{
    process_.End();
    RemovePipe(pipe_);
    profile_.Clear();
    hasLeft_ = true;
}

void Office::Connect()
{
    constexpr auto kStep = std::chrono::milliseconds(20);
    const auto end = Clock::now() + options_.timeouts.start;
    try {
        const auto& local = LocalContext(options_.programFolder);
        const auto connector = css::connection::Connector::create(local);
        const auto bridges = css::bridge::BridgeFactory::create(local);
        while (true) {
            try {
                const Watchdog::Call watched(watchdog_);
                bridge_ = bridges->createBridge(ToUno(pipe_), "urp",
                                                connector->connect(ToUno(Address(pipe_))), {});
                context_.set(bridge_->getInstance("StarOffice.ComponentContext"), UNO_QUERY_THROW);
                desktop_ = css::frame::Desktop::create(context_);
                return;
            }
            catch (const css::connection::NoConnectException&) {
                if (process_.WaitForEnd(kStep))
                    ThrowNotStarted(watchdog_.HasFired() ? kNoAnswer : kEnded);
                if (Clock::now() > end)
                    ThrowNotStarted(kNoAnswer);
            }
        }
    }
    catch (const css::uno::Exception& failure) {
        if (watchdog_.HasFired())
            ThrowNotStarted(kNoAnswer);
        ThrowNotStarted(process_.IsRunning() ? FromUno(failure.Message) : kEnded);
    }
}

Reference<css::lang::XComponent>
Office::Load(const std::filesystem::path& path, LoadMode mode,
             const Reference<css::task::XInteractionHandler>& questions)
{
    namespace MacroExecMode = css::document::MacroExecMode;
    namespace UpdateDocMode = css::document::UpdateDocMode;
    const bool own = mode != LoadMode::ForUser;
    const auto arguments =
        Arguments({{"AsTemplate", Any(mode == LoadMode::AsTemplate)},
                   {"ReadOnly", Any(mode == LoadMode::ToPrint)},
                   {"InteractionHandler", Any(questions)},
                   {"MacroExecutionMode", Any(own ? MacroExecMode::NEVER_EXECUTE
                                                  : MacroExecMode::USE_CONFIG_REJECT_CONFIRMATION)},
                   {"UpdateDocMode",
                    Any(own ? UpdateDocMode::NO_UPDATE : UpdateDocMode::ACCORDING_TO_CONFIG)}});
    return Call([&]() -> Reference<css::lang::XComponent> {
        try {
            if (own) {
                const auto frame = unseen_.NewFrame(context_, desktop_);
                const Reference<css::frame::XComponentLoader> loader(frame, UNO_QUERY_THROW);
                return loader->loadComponentFromURL(ToUrl(path), "_self", 0, arguments);
            }
            return desktop_->loadComponentFromURL(ToUrl(path), "_blank", 0, arguments);
        }
        catch (const css::lang::IllegalArgumentException&) { // a format that it does not know
            return {};
        }
    });
}

void Office::Discard(const Reference<css::uno::XInterface>& document) noexcept
{
    if (isLost_)
        return;
    try {
        const Watchdog::Call watched(watchdog_);
        const Reference<css::util::XCloseable> closeable(document, UNO_QUERY_THROW);
        closeable->close(true);
    }
    catch (const css::uno::Exception&) { // it ends with the instance
    }
}

void Office::Quit()
{
    if (hasLeft_)
        return;
    try {
        const Watchdog::Call watched(watchdog_);
        if (!isLost_)
            desktop_->terminate();
    }
    catch (const css::uno::Exception&) { // the instance may end before it answers
    }
    Disconnect();
    RemovePipe(pipe_);
    hasLeft_ = !isLost_ && process_.WaitForEnd(options_.timeouts.quit) && !watchdog_.HasFired();
    RemovePipe(pipe_);
    if (!hasLeft_)
        End();
}

void Office::Release()
{
    try {
        const Watchdog::Call watched(watchdog_);
        unseen_.Dispose(); // otherwise it would stay open when the user has closed all others
    }
    catch (const css::uno::Exception&) { // the user has closed them all
    }
    Disconnect();
    process_.Release();
    hasLeft_ = true;
}

void Office::ThrowLost()
{
    isLost_ = true;
    throw Error(book::ErrorKind::ApplicationLost, "LibreOffice",
                watchdog_.HasFired() ? "it was waited for too long" : "it has ended unexpectedly");
}

void ThrowFailure(const css::uno::Exception& failure)
{
    std::string words = FromUno(failure.Message);
    if (words.empty())
        words = FromUno(css::uno::Any(failure).getValueTypeName());
    throw Error(book::ErrorKind::ApplicationFailure, "LibreOffice",
                "LibreOffice reports: " + words);
}

} // namespace orrery::libreoffice
