#include "excel_server/arguments.h"

#include "automation/wide_text.h"
#include "excel_server/log.h"

#include <utility>

namespace orrery::excel_server {

using automation::Variant;

namespace {

bool IsMissing(const VARIANT& value)
{
    return V_VT(&value) == VT_ERROR && V_ERROR(&value) == DISP_E_PARAMNOTFOUND;
}

Variant ConvertTo(VARTYPE type, const Variant& value, UINT index)
{
    VARIANT source = value.Get();
    Variant converted;
    const HRESULT result = VariantChangeType(converted.Fill(), &source, 0, type);
    if (FAILED(result))
        throw CallFailure(result == DISP_E_OVERFLOW ? result : DISP_E_TYPEMISMATCH, index);
    return converted;
}

} // namespace

Arguments::Arguments(const DISPPARAMS& given, const std::vector<Parameter>& parameters, bool put)
    : values_(parameters.size())
{
    UINT named = given.cNamedArgs;
    if (put) { // the value is the first of the named arguments
        if (named == 0 || given.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)
            throw CallFailure(DISP_E_PARAMNOTOPTIONAL);
        value_ = Variant::Copy(given.rgvarg[0]);
    }
    const UINT positional = given.cArgs - named;
    if (positional > parameters.size())
        throw CallFailure(DISP_E_BADPARAMCOUNT);
    for (UINT i = 0; i < positional; ++i)
        Store(i, given.rgvarg[given.cArgs - 1 - i], given.cArgs - 1 - i);
    for (UINT i = put ? 1 : 0; i < named; ++i) {
        const auto parameter = static_cast<std::size_t>(given.rgdispidNamedArgs[i]);
        if (parameter >= parameters.size() || parameter < positional)
            throw CallFailure(DISP_E_PARAMNOTFOUND, i);
        Store(parameter, given.rgvarg[i], i);
    }
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i].required && !Has(i))
            throw CallFailure(DISP_E_PARAMNOTOPTIONAL);
    }
}

void Arguments::Store(std::size_t parameter, const VARIANT& value, UINT index)
{
    auto copy = Variant::Copy(value);
    const bool present = !IsMissing(copy.Get());
    values_[parameter] = {std::move(copy), index, present};
}

bool Arguments::Has(std::size_t parameter) const
{
    return values_[parameter].present;
}

Variant Arguments::Converted(std::size_t parameter, VARTYPE type) const
{
    return ConvertTo(type, values_[parameter].value, values_[parameter].index);
}

std::int32_t Arguments::Integer(std::size_t parameter) const
{
    const Variant number = Converted(parameter, VT_I4);
    return V_I4(&number.Get());
}

bool Arguments::Boolean(std::size_t parameter) const
{
    const Variant flag = Converted(parameter, VT_BOOL);
    return V_BOOL(&flag.Get()) != VARIANT_FALSE;
}

std::string Arguments::Text(std::size_t parameter) const
{
    return Converted(parameter, VT_BSTR).AsText();
}

bool Arguments::IsText(std::size_t parameter) const
{
    return values_[parameter].value.Type() == VT_BSTR;
}

IDispatch* Arguments::Object(std::size_t parameter) const
{
    IDispatch* const object = values_[parameter].value.AsObject();
    if (object == nullptr)
        throw CallFailure(DISP_E_TYPEMISMATCH, values_[parameter].index);
    return object;
}

bool Arguments::BooleanValue() const
{
    const Variant flag = ConvertTo(VT_BOOL, value_, 0);
    return V_BOOL(&flag.Get()) != VARIANT_FALSE;
}

std::int32_t Arguments::IntegerValue() const
{
    const Variant number = ConvertTo(VT_I4, value_, 0);
    return V_I4(&number.Get());
}

std::string Arguments::TextValue() const
{
    return ConvertTo(VT_BSTR, value_, 0).AsText();
}

namespace {

std::string DescribePlain(const Variant& value, const ObjectName& nameOf)
{
    const VARIANT& plain = value.Get();
    switch (value.Type()) {
    case VT_EMPTY:
        return "VT_EMPTY";
    case VT_NULL:
        return "VT_NULL";
    case VT_I2:
        return "VT_I2 " + std::to_string(V_I2(&plain));
    case VT_I4:
        return "VT_I4 " + std::to_string(V_I4(&plain));
    case VT_R8:
        return "VT_R8 " + std::to_string(V_R8(&plain));
    case VT_BOOL:
        return V_BOOL(&plain) != VARIANT_FALSE ? "VT_BOOL true" : "VT_BOOL false";
    case VT_BSTR:
        return "VT_BSTR " + Quoted(value.AsText());
    case VT_DISPATCH:
        return "VT_DISPATCH " + nameOf(V_DISPATCH(&plain));
    case VT_UNKNOWN:
        return "VT_UNKNOWN " + nameOf(V_UNKNOWN(&plain));
    case VT_ERROR:
        return IsMissing(plain) ? "omitted" : "VT_ERROR " + Hex(V_ERROR(&plain));
    default:
        return "type " + std::to_string(value.Type());
    }
}

} // namespace

std::string Describe(const VARIANT& value, const ObjectName& nameOf)
{
    const std::string plain = DescribePlain(Variant::Copy(value), nameOf);
    if (V_VT(&value) == (VT_BYREF | VT_VARIANT))
        return "VT_BYREF|VT_VARIANT " + plain;
    return (V_VT(&value) & VT_BYREF) != 0 ? "VT_BYREF|" + plain : plain;
}

} // namespace orrery::excel_server
