#include "engines/libreoffice/plugin/questions.h"

#include <com/sun/star/task/PasswordRequest.hpp>
#include <com/sun/star/task/XInteractionAbort.hpp>

namespace orrery::libreoffice {

namespace css = com::sun::star;
using css::uno::Reference;

void Questions::handle(const Reference<css::task::XInteractionRequest>& request)
{
    css::task::PasswordRequest password;
    if (request->getRequest() >>= password)
        passwordWanted_ = true;
    for (const auto& answer : request->getContinuations()) {
        const Reference<css::task::XInteractionAbort> abort(answer, css::uno::UNO_QUERY);
        if (abort.is())
            abort->select();
    }
}

} // namespace orrery::libreoffice
