#pragma once

#include <com/sun/star/task/XInteractionHandler.hpp>
#include <cppuhelper/implbase1.hxx>

#include <atomic>

namespace orrery::libreoffice {

/// Answers LibreOffice's questions to the user: declines all, and remembers what the program needs
/// to know.
class Questions : public cppu::WeakImplHelper1<com::sun::star::task::XInteractionHandler> {
public:
    void SAL_CALL
    handle(const com::sun::star::uno::Reference<com::sun::star::task::XInteractionRequest>& request)
        override;

    bool WasPasswordWanted() const { return passwordWanted_; }

private:
    std::atomic<bool> passwordWanted_ = false; // LibreOffice asks on another thread
};

} // namespace orrery::libreoffice
