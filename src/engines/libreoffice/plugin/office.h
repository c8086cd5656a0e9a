#pragma once

#include "engines/libreoffice/plugin.h"
#include "engines/libreoffice/plugin/guarded_process.h"
#include "engines/libreoffice/plugin/profile_folder.h"
#include "engines/libreoffice/plugin/unseen_window.h"
#include "engines/libreoffice/plugin/watchdog.h"
#include "util/error.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/bridge/XBridge.hpp>
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/task/XInteractionHandler.hpp>
#include <com/sun/star/uno/Exception.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace orrery::libreoffice {

using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
namespace css = com::sun::star;

rtl::OUString ToUno(std::string_view utf8);
std::string FromUno(const rtl::OUString& text);
/// The URL of a file.
rtl::OUString ToUrl(const std::filesystem::path& path);
/// Named arguments for loading and storing files.
css::uno::Sequence<css::beans::PropertyValue>
Arguments(std::initializer_list<std::pair<const char*, Any>> arguments);

/// Throws Error(ApplicationFailure) with LibreOffice's message.
[[noreturn]] void ThrowFailure(const css::uno::Exception& failure);

/// How a file is loaded.
enum class LoadMode {
    AsTemplate, ///< a new document without a file, without macros and links
    ToPrint,    ///< the file itself, neither locked nor changed, without macros and links
    ForUser     ///< the file itself, in a window that the user sees
};

/// A running instance of LibreOffice that belongs to this program, with its own profile and
/// connection, and not visible. It ends with this object unless it was released.
class Office {
public:
    /// Starts it and waits until it answers. Throws Error(ApplicationFailure).
    explicit Office(const StartOptions& options);
    ~Office();
    Office(const Office&) = delete;
    Office& operator=(const Office&) = delete;

    /// Runs calls to the instance. Throws Error: ApplicationFailure with LibreOffice's message,
    /// ApplicationLost if the instance is gone or had to be ended.
    template <class Calls> auto Call(Calls&& calls)
    {
        const Watchdog::Call watched(watchdog_);
        try {
            return std::forward<Calls>(calls)();
        }
        catch (const css::lang::DisposedException&) {
            ThrowLost();
        }
        catch (const css::uno::Exception& failure) {
            ThrowFailure(failure);
        }
    }

    /// Loads a file, without a visible window unless it is for the user. Only `questions` is asked
    /// anything. An empty reference if the file cannot be loaded.
    Reference<css::lang::XComponent>
    Load(const std::filesystem::path& path, LoadMode mode,
         const Reference<css::task::XInteractionHandler>& questions);

    /// A folder of the instance for temporary files. It is removed if the instance dies.
    const std::filesystem::path& Folder() const { return profile_.Path(); }

    /// Closes a document without saving changes. Never throws: a document that cannot be closed
    /// ends with the instance.
    void Discard(const Reference<css::uno::XInterface>& document) noexcept;

    /// Ends the instance, by force if it does not end in time.
    void Quit();
    /// Leaves it to the user. There must be no references left to anything in it.
    void Release();

private:
    [[noreturn]] void ThrowLost();
    void Connect();
    void Disconnect();
    void End();

    StartOptions options_;
    ProfileFolder profile_;
    std::string pipe_;
    GuardedProcess process_;
    Watchdog watchdog_;
    Reference<css::bridge::XBridge> bridge_;
    Reference<css::uno::XComponentContext> context_;
    Reference<css::frame::XDesktop2> desktop_;
    UnseenWindow unseen_;
    bool isLost_ = false; // it ended while it was needed
    bool hasLeft_ = false;
};

} // namespace orrery::libreoffice
