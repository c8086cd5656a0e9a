#include "fake_object.h"

#include "util/wide.h"

#include <algorithm>
#include <memory>

namespace orrery::excel::fake {
namespace {

std::string TextOfArgument(const VARIANTARG& argument)
{
    switch (argument.vt) {
    case VT_BOOL:
        return argument.boolVal == -1  ? "BOOL true"
               : argument.boolVal == 0 ? "BOOL false"
                                       : "BOOL?";
    case VT_I2:
        return "I2 " + std::to_string(argument.iVal);
    case VT_I4:
        return "I4 " + std::to_string(argument.lVal);
    case VT_BSTR:
        return "BSTR \"" + TextOf(argument.bstrVal) + '"';
    case VT_DISPATCH:
        return argument.pdispVal == nullptr ? "no object" : "object";
    case VT_ERROR:
        return argument.scode == DISP_E_PARAMNOTFOUND ? "omitted" : "another error";
    default:
        return "type " + std::to_string(argument.vt);
    }
}

std::string TextOfFlags(WORD flags)
{
    switch (flags) {
    case DISPATCH_PROPERTYGET:
        return "get";
    case DISPATCH_METHOD:
        return "call";
    case DISPATCH_PROPERTYGET | DISPATCH_METHOD:
        return "get+call";
    case DISPATCH_PROPERTYPUT:
        return "put";
    default:
        return "flags " + std::to_string(flags);
    }
}

/// The arguments in the order of the declaration: a call passes them in reverse.
std::string TextOfParameters(const DISPPARAMS& parameters)
{
    std::string text;
    for (UINT i = parameters.cArgs; i > 0; --i)
        text += (text.empty() ? "" : ", ") + TextOfArgument(parameters.rgvarg[i - 1]);
    return " (" + text + ')';
}

class Object final : private IDispatch {
public:
    static Pointer<IDispatch> Make(World& world, const std::string& kind)
    {
        return Pointer<IDispatch>::Own(new Object(world, kind));
    }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
        *object = known ? static_cast<IDispatch*>(this) : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }
    STDMETHODIMP GetTypeInfoCount(UINT* /*count*/) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT /*index*/, LCID /*language*/, ITypeInfo** /*info*/) override
    {
        return E_NOTIMPL;
    }
    STDMETHODIMP GetIDsOfNames(REFIID /*iid*/, LPOLESTR* names, UINT count, LCID language,
                               DISPID* ids) override
    {
        const std::string name = util::FromWide(names[0]);
        world_.calls.push_back("id " + kind_ + '.' + name);
        if (count != 1 || language != 0x0409)
            return E_INVALIDARG;
        const auto id = static_cast<DISPID>(100 + world_.ids.size());
        ids[0] = world_.ids.try_emplace(name, id).first->second;
        return world_.idResult;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID language, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* info, UINT* /*argument*/) override
    {
        if (iid != IID_NULL || language != 0x0409)
            return E_INVALIDARG;
        const bool isPut = flags == DISPATCH_PROPERTYPUT;
        const bool namesValue =
            parameters->cNamedArgs == 1 && parameters->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
        if (isPut != namesValue || (!isPut && parameters->cNamedArgs != 0))
            return DISP_E_NONAMEDARGS;
        const std::string member = kind_ + '.' + NameOf(id);
        world_.calls.push_back(member + ' ' + TextOfFlags(flags) + TextOfParameters(*parameters));
        return Respond(member, result, info);
    }

private:
    Object(World& world, std::string kind) : world_(world), kind_(std::move(kind))
    {
        ++world_.objects;
    }
    ~Object() { --world_.objects; }

    std::string NameOf(DISPID id) const
    {
        const auto found = std::find_if(world_.ids.begin(), world_.ids.end(),
                                        [&](const auto& known) { return known.second == id; });
        return found == world_.ids.end() ? "?" : found->first;
    }

    HRESULT Respond(const std::string& member, VARIANT* result, EXCEPINFO* info)
    {
        if (!world_.next.empty()) {
            const Answer answer = world_.next.front();
            world_.next.pop_front();
            if (answer)
                return answer(result, info);
        }
        const auto answer = world_.answers.find(member);
        return answer == world_.answers.end() ? S_OK : answer->second(result, info);
    }

    World& world_;
    std::string kind_;
    ULONG references_ = 1;
};

} // namespace

std::vector<std::string> World::CallsWith(std::string_view text) const
{
    std::vector<std::string> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const std::string& call) { return call.find(text) != std::string::npos; });
    return found;
}

Pointer<IDispatch> MakeObject(World& world, const std::string& kind)
{
    return Object::Make(world, kind);
}

Answer GiveObject(World& world, const std::string& kind)
{
    auto object = std::make_shared<Pointer<IDispatch>>(MakeObject(world, kind));
    return [object](VARIANT* result, EXCEPINFO*) {
        (*object)->AddRef();
        result->vt = VT_DISPATCH;
        result->pdispVal = object->Get();
        return S_OK;
    };
}

Answer GiveNoObject()
{
    return [](VARIANT* result, EXCEPINFO*) {
        result->vt = VT_DISPATCH;
        result->pdispVal = nullptr;
        return S_OK;
    };
}

Answer GiveBool(bool value)
{
    return [value](VARIANT* result, EXCEPINFO*) {
        result->vt = VT_BOOL;
        result->boolVal = static_cast<VARIANT_BOOL>(value ? -1 : 0);
        return S_OK;
    };
}

Answer GiveNumber(std::int32_t value)
{
    return [value](VARIANT* result, EXCEPINFO*) {
        result->vt = VT_I4;
        result->lVal = value;
        return S_OK;
    };
}

Answer GiveText(std::string utf8)
{
    return [utf8](VARIANT* result, EXCEPINFO*) {
        result->vt = VT_BSTR;
        result->bstrVal = Bstr(utf8).Release();
        return S_OK;
    };
}

Answer Refuse(HRESULT code)
{
    return [code](VARIANT*, EXCEPINFO*) { return code; };
}

Answer Explain(const wchar_t* description, SCODE code)
{
    return [description, code](VARIANT*, EXCEPINFO* info) {
        info->bstrDescription = SysAllocString(description);
        info->bstrSource = SysAllocString(L"Fake");
        info->scode = code;
        return DISP_E_EXCEPTION;
    };
}

} // namespace orrery::excel::fake
