#include "excel_test/client.h"

#include "automation/wide_text.h"

namespace orrery::excel_test {

using automation::Variant;

namespace {

std::string TakeText(BSTR text)
{
    const std::string taken = text != nullptr ? automation::Narrow(text) : "";
    SysFreeString(text);
    return taken;
}

} // namespace

Variant StartServer(HRESULT* result)
{
    CLSID id = {};
    HRESULT code = CLSIDFromProgID(L"Excel.Application", &id);
    void* object = nullptr;
    if (SUCCEEDED(code))
        code = CoCreateInstance(id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, &object);
    if (result != nullptr)
        *result = code;
    if (FAILED(code))
        return {};
    auto* const application = static_cast<IDispatch*>(object);
    Variant owner = Variant::Object(application);
    application->Release();
    return owner;
}

std::vector<DISPID> IdsOf(const Variant& object, const std::vector<std::string>& names)
{
    std::vector<std::wstring> texts;
    for (const auto& name : names)
        texts.push_back(automation::Wide(name));
    std::vector<LPOLESTR> pointers;
    for (auto& text : texts)
        pointers.push_back(text.data());
    std::vector<DISPID> ids(names.size(), DISPID_UNKNOWN);
    object.AsObject()->GetIDsOfNames(IID_NULL, pointers.data(), static_cast<UINT>(names.size()),
                                     LOCALE_USER_DEFAULT, ids.data());
    return ids;
}

DISPID IdOf(const Variant& object, const std::string& member)
{
    return IdsOf(object, {member}).front();
}

Answer Invoke(const Variant& object, DISPID id, WORD flags, const Values& arguments,
              const std::vector<std::pair<DISPID, Variant>>& named)
{
    std::vector<VARIANTARG> given; // the named ones first, then the others in reverse
    std::vector<DISPID> names;
    for (const auto& [name, value] : named) {
        names.push_back(name);
        given.push_back(value.Get());
    }
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
        given.push_back(argument->Get());
    DISPPARAMS parameters = {given.data(), names.data(), static_cast<UINT>(given.size()),
                             static_cast<UINT>(names.size())};
    Answer answer;
    EXCEPINFO exception = {};
    answer.result = object.AsObject()->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                              answer.value.Fill(), &exception, &answer.argument);
    answer.code = exception.scode;
    answer.source = TakeText(exception.bstrSource);
    answer.description = TakeText(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    return answer;
}

Answer Get(const Variant& object, const std::string& member, const Values& arguments)
{
    return Invoke(object, IdOf(object, member), DISPATCH_PROPERTYGET, arguments);
}

Answer Call(const Variant& object, const std::string& member, const Values& arguments)
{
    return Invoke(object, IdOf(object, member), DISPATCH_METHOD, arguments);
}

Answer Put(const Variant& object, const std::string& member, const Variant& value)
{
    return Invoke(object, IdOf(object, member), DISPATCH_PROPERTYPUT, {},
                  {{DISPID_PROPERTYPUT, value}});
}

} // namespace orrery::excel_test
