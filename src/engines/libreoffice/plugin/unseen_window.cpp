#include "engines/libreoffice/plugin/unseen_window.h"

#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/frame/Frame.hpp>

namespace orrery::libreoffice {

namespace css = com::sun::star;
using css::uno::UNO_QUERY_THROW;

UnseenWindow::Frame UnseenWindow::NewFrame(const Context& context, const Desktop& desktop)
{
    const auto toolkit = css::awt::Toolkit::create(context);
    const auto makeWindow = [&](css::awt::WindowClass kind) {
        const css::awt::Rectangle place(0, 0, 1200, 800);
        return toolkit->createWindow({kind, "window", window_, -1, place, 0});
    };
    if (!window_.is())
        window_ = makeWindow(css::awt::WindowClass_TOP);
    const auto frame = css::frame::Frame::create(context);
    frame->initialize(css::uno::Reference<css::awt::XWindow>(
        makeWindow(css::awt::WindowClass_SIMPLE), UNO_QUERY_THROW));
    desktop->getFrames()->append({frame, UNO_QUERY_THROW});
    return frame;
}

void UnseenWindow::Dispose()
{
    if (window_.is())
        window_->dispose();
    Clear();
}

} // namespace orrery::libreoffice
