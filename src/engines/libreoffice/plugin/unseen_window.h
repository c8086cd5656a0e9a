#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/frame/XFrame2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace orrery::libreoffice {

/// A window of an instance that is never shown, with frames in it for documents that nobody sees.
/// Such a frame is not a hidden one: of what is hidden LibreOffice forgets how its sheets are
/// looked at, their grid lines, frozen panes and zoom. All is to be called inside Office::Call.
class UnseenWindow {
public:
    using Context = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;
    using Desktop = com::sun::star::uno::Reference<com::sun::star::frame::XDesktop2>;
    using Frame = com::sun::star::uno::Reference<com::sun::star::frame::XFrame2>;

    /// A frame that goes with its document.
    Frame NewFrame(const Context& context, const Desktop& desktop);
    /// Removes the window, if there is one.
    void Dispose();
    /// Forgets it, for it goes with the instance.
    void Clear() { window_.clear(); }

private:
    com::sun::star::uno::Reference<com::sun::star::awt::XWindowPeer> window_;
};

} // namespace orrery::libreoffice
