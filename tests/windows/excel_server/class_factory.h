#pragma once

#include "excel_server/application.h"

namespace orrery::excel_server {

/// This server's own class: {6E3B2B5C-6E0F-4C8A-9A6B-0E5D3C1A7F42}
inline constexpr CLSID kClass = {
    0x6e3b2b5c, 0x6e0f, 0x4c8a, {0x9a, 0x6b, 0x0e, 0x5d, 0x3c, 0x1a, 0x7f, 0x42}};
inline constexpr const char* kClassText = "{6E3B2B5C-6E0F-4C8A-9A6B-0E5D3C1A7F42}";

/// Creates the application object for the process's only client.
class ClassFactory : public IClassFactory {
public:
    explicit ClassFactory(Session& session) : session_(session) {}
    virtual ~ClassFactory() = default;
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    // Not deleted by reference count.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL /*lock*/) override { return S_OK; }

private:
    Session& session_;
};

} // namespace orrery::excel_server
