#pragma once

#include "excel_server/arguments.h"
#include "excel_server/server.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::excel_server {

class DispatchObject;

/// Answers a call.
using Handler = automation::Variant (*)(DispatchObject& self, const Arguments& arguments);

/// A member of an object: a property with one or both of get and put, or a method.
struct Member {
    const char* name;
    DISPID id;
    std::vector<Parameter> parameters;
    Handler get = nullptr;
    Handler put = nullptr;
    Handler call = nullptr;
};
using Members = std::vector<Member>;

/// An object of the model, reached only through IDispatch. It counts its references; its creator
/// takes the first one.
class DispatchObject : public IDispatch {
public:
    DispatchObject(const DispatchObject&) = delete;
    DispatchObject& operator=(const DispatchObject&) = delete;

    std::string Name() const { return name_; } ///< "Worksheet#1"

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* argument) override;

protected:
    DispatchObject(Server& server, const char* kind, const void* identity);
    virtual ~DispatchObject();

    Server& server_;

private:
    virtual const Members& Table() const = 0;
    const Member* FindMember(DISPID id) const;
    const Member* FindMember(std::string_view name) const;
    automation::Variant Answer(const Member* member, WORD flags, const DISPPARAMS& parameters);
    /// Carries out the fault that a test has requested for this call.
    void ApplyFault(const std::string& member, const std::string& line);
    std::string Describe(const Member* member, const DISPPARAMS& parameters) const;

    std::string kind_;
    std::string name_;
    ULONG references_ = 0;
};

/// The object for an identity: the living one or a new one, made from `rest`.
template <class Object, class... Rest>
automation::Variant ObjectFor(Server& server, const void* identity, Rest&&... rest)
{
    DispatchObject* object = server.Find(Object::kKind, identity);
    if (object == nullptr)
        object = new Object(server, identity, std::forward<Rest>(rest)...);
    return automation::Variant::Object(object);
}

template <class Object>
automation::Variant Apply(automation::Variant (Object::*method)(const Arguments&),
                          DispatchObject& self, const Arguments& arguments)
{
    return (static_cast<Object&>(self).*method)(arguments);
}

/// A handler that calls a method of the object.
template <auto method> automation::Variant Handle(DispatchObject& self, const Arguments& arguments)
{
    return Apply(method, self, arguments);
}

} // namespace orrery::excel_server
