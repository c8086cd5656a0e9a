#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace orrery::automation {

/// Owns a VARIANT: frees its string, releases its object.
class Variant {
public:
    Variant() noexcept { VariantInit(&value_); }
    ~Variant() { VariantClear(&value_); }
    Variant(const Variant& other);
    Variant(Variant&& other) noexcept;
    Variant& operator=(Variant other) noexcept;

    static Variant Text(std::string_view utf8);
    static Variant Short(std::int16_t number);
    static Variant Long(std::int32_t number);
    static Variant Double(double number);
    static Variant Boolean(bool on);
    /// Adds a reference; nullptr gives an object variable without an object.
    static Variant Object(IDispatch* object);
    /// An omitted argument.
    static Variant Missing();
    /// A copy; for a reference to a value, the value.
    static Variant Copy(const VARIANT& value);

    const VARIANT& Get() const { return value_; }
    VARTYPE Type() const { return V_VT(&value_); }
    IDispatch* AsObject() const { return Type() == VT_DISPATCH ? V_DISPATCH(&value_) : nullptr; }
    std::string AsText() const;
    /// Clears it for a call that fills it in.
    VARIANT* Fill();
    /// Passes the value on; this variant is empty then.
    VARIANT Detach();

private:
    VARIANT value_;
};

} // namespace orrery::automation
