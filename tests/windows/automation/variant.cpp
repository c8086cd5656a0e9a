#include "automation/variant.h"

#include "automation/wide_text.h"

#include <new>
#include <utility>

namespace orrery::automation {

Variant::Variant(const Variant& other) : Variant()
{
    VARIANT source = other.value_; // some headers require a writable one
    if (FAILED(VariantCopy(&value_, &source)))
        throw std::bad_alloc();
}

Variant::Variant(Variant&& other) noexcept : Variant()
{
    std::swap(value_, other.value_);
}

Variant& Variant::operator=(Variant other) noexcept
{
    std::swap(value_, other.value_);
    return *this;
}

Variant Variant::Text(std::string_view utf8)
{
    const std::wstring wide = Wide(utf8);
    Variant variant;
    V_VT(&variant.value_) = VT_BSTR;
    V_BSTR(&variant.value_) = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (V_BSTR(&variant.value_) == nullptr)
        throw std::bad_alloc();
    return variant;
}

Variant Variant::Short(std::int16_t number)
{
    Variant variant;
    V_VT(&variant.value_) = VT_I2;
    V_I2(&variant.value_) = number;
    return variant;
}

Variant Variant::Long(std::int32_t number)
{
    Variant variant;
    V_VT(&variant.value_) = VT_I4;
    V_I4(&variant.value_) = number;
    return variant;
}

Variant Variant::Double(double number)
{
    Variant variant;
    V_VT(&variant.value_) = VT_R8;
    V_R8(&variant.value_) = number;
    return variant;
}

Variant Variant::Boolean(bool on)
{
    Variant variant;
    V_VT(&variant.value_) = VT_BOOL;
    V_BOOL(&variant.value_) = on ? VARIANT_TRUE : VARIANT_FALSE;
    return variant;
}

Variant Variant::Object(IDispatch* object)
{
    Variant variant;
    V_VT(&variant.value_) = VT_DISPATCH;
    V_DISPATCH(&variant.value_) = object;
    if (object != nullptr)
        object->AddRef();
    return variant;
}

Variant Variant::Missing()
{
    Variant variant;
    V_VT(&variant.value_) = VT_ERROR;
    V_ERROR(&variant.value_) = DISP_E_PARAMNOTFOUND;
    return variant;
}

Variant Variant::Copy(const VARIANT& value)
{
    Variant variant;
    VARIANT source = value;
    if (FAILED(VariantCopyInd(&variant.value_, &source)))
        throw std::bad_alloc();
    return variant;
}

std::string Variant::AsText() const
{
    if (Type() != VT_BSTR || V_BSTR(&value_) == nullptr)
        return {};
    return Narrow({V_BSTR(&value_), SysStringLen(V_BSTR(&value_))});
}

VARIANT* Variant::Fill()
{
    VariantClear(&value_);
    return &value_;
}

VARIANT Variant::Detach()
{
    const VARIANT value = value_;
    VariantInit(&value_);
    return value;
}

} // namespace orrery::automation
