#include "engines/excel/com.h"

#include "book/error.h"
#include "util/error.h"
#include "util/system_message.h"
#include "util/wide.h"

#include <new>
#include <system_error>

namespace orrery::excel {
namespace {

constexpr VARIANT_BOOL kTrue = -1;
constexpr VARIANT_BOOL kFalse = 0;
constexpr HRESULT kErrorOfNumber = static_cast<HRESULT>(0x800A0000); // plus the number below

} // namespace

Apartment::Apartment()
    : entered_(
          HasEntered(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)))
{
}

Apartment::~Apartment()
{
    if (entered_)
        CoUninitialize();
}

bool HasEntered(HRESULT result)
{
    if (Failed(result) && result != RPC_E_CHANGED_MODE)
        FailWith("Windows is not ready to reach Excel", result, kOtherEngineAdvice);
    return !Failed(result);
}

void FailWith(const std::string& sentence, HRESULT code, const std::string& advice)
{
    const std::string reason = util::SystemMessage({code, std::system_category()});
    throw Error(book::ErrorKind::ApplicationFailure, {},
                sentence + ": " + reason + '.' + (advice.empty() ? "" : ' ' + advice));
}

Pointer<IUnknown> IdentityOf(IUnknown& object)
{
    Pointer<IUnknown> identity;
    if (Failed(object.QueryInterface(IID_IUnknown, identity.ReceiveAny())))
        return Pointer<IUnknown>::Share(&object);
    return identity;
}

Bstr::Bstr(std::string_view utf8)
{
    const std::wstring units = util::ToWide(utf8);
    text_ = SysAllocStringLen(units.data(), static_cast<UINT>(units.size()));
    if (text_ == nullptr)
        throw std::bad_alloc();
}

std::string TextOf(BSTR text)
{
    return util::FromWide({text, SysStringLen(text)});
}

Variant::Variant(bool value) : Variant()
{
    value_.vt = VT_BOOL;
    value_.boolVal = value ? kTrue : kFalse;
}

Variant::Variant(std::int16_t value) : Variant()
{
    value_.vt = VT_I2;
    value_.iVal = value;
}

Variant::Variant(std::int32_t value) : Variant()
{
    value_.vt = VT_I4;
    value_.lVal = value;
}

Variant::Variant(std::string_view utf8) : Variant()
{
    value_.bstrVal = Bstr(utf8).Release();
    value_.vt = VT_BSTR;
}

Variant::Variant(IDispatch& object) : Variant()
{
    object.AddRef();
    value_.vt = VT_DISPATCH;
    value_.pdispVal = &object;
}

Variant Variant::Omitted()
{
    Variant omitted;
    omitted.value_.vt = VT_ERROR;
    omitted.value_.scode = DISP_E_PARAMNOTFOUND;
    return omitted;
}

VARIANT* Variant::Receive()
{
    VariantClear(&value_);
    return &value_;
}

bool Variant::AsBool() const
{
    return value_.vt == VT_BOOL && value_.boolVal != kFalse;
}

std::int32_t Variant::AsNumber() const
{
    return value_.vt == VT_I4 ? value_.lVal : 0;
}

std::string Variant::AsText() const
{
    return value_.vt == VT_BSTR ? TextOf(value_.bstrVal) : std::string();
}

Pointer<IDispatch> Variant::TakeObject()
{
    if (value_.vt != VT_DISPATCH)
        return {};
    value_.vt = VT_EMPTY;
    return Pointer<IDispatch>::Own(std::exchange(value_.pdispVal, nullptr));
}

EXCEPINFO* ExceptionInfo::Receive()
{
    Clear();
    return &info_;
}

void ExceptionInfo::Complete()
{
    if (info_.pfnDeferredFillIn != nullptr)
        std::exchange(info_.pfnDeferredFillIn, nullptr)(&info_);
}

HRESULT ExceptionInfo::Code() const
{
    return info_.scode == S_OK && info_.wCode != 0 ? kErrorOfNumber | info_.wCode : info_.scode;
}

void ExceptionInfo::Clear()
{
    for (const BSTR text : {info_.bstrSource, info_.bstrDescription, info_.bstrHelpFile})
        SysFreeString(text);
    info_ = {};
}

} // namespace orrery::excel
