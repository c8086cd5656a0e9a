#pragma once

#include <com/sun/star/task/XInteractionHandler.hpp>
#include <cppuhelper/implbase1.hxx>

#include <atomic>

namespace orrery::libreoffice {

/// Stands where LibreOffice would ask the user. Everything is declined; what matters to the program
/// is remembered.
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
