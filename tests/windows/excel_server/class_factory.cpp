#include "excel_server/class_factory.h"

namespace orrery::excel_server {

HRESULT ClassFactory::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = iid == IID_IUnknown || iid == IID_IClassFactory ? static_cast<IClassFactory*>(this)
                                                              : nullptr;
    return *object != nullptr ? S_OK : E_NOINTERFACE;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (outer != nullptr)
        return CLASS_E_NOAGGREGATION;
    if (session_.server.faults.AtCall("Class.Create").kind == FaultKind::Hang) {
        session_.server.log.Write("Class.Create -> hangs");
        Sleep(INFINITE); // a test ends the process
    }
    const auto application = ObjectFor<Application>(session_.server, &session_, session_);
    session_.server.log.Write("Application begins");
    return application.AsObject()->QueryInterface(iid, object);
}

} // namespace orrery::excel_server
