#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/frame/XFrame2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace orrery::libreoffice {

/// A window of an instance that is never shown, with frames for documents. A frame in it is not
/// "hidden" in LibreOffice's sense: LibreOffice forgets the view settings of hidden sheets, their
/// grid lines, frozen panes and zoom. Call everything inside Office::Call.
class UnseenWindow {
public:
    using Context = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;
    using Desktop = com::sun::star::uno::Reference<com::sun::star::frame::XDesktop2>;
    using Frame = com::sun::star::uno::Reference<com::sun::star::frame::XFrame2>;

    /// A frame that is closed with its document.
    Frame NewFrame(const Context& context, const Desktop& desktop);
    /// Removes the window, if there is one.
    void Dispose();
    /// Only drops the reference: the window ends with the instance.
    void Clear() { window_.clear(); }

private:
    com::sun::star::uno::Reference<com::sun::star::awt::XWindowPeer> window_;
};

} // namespace orrery::libreoffice
