#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

/// One owner for each thing that COM hands out. Nothing outside this header gives any of them back.
namespace orrery::excel {

inline bool Failed(HRESULT result)
{
    return result < 0;
}

/// COM on this thread, in a single-threaded apartment where the thread is in none yet. Everything
/// that comes from COM is let go of before it.
class Apartment {
public:
    Apartment();
    ~Apartment();
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    bool entered_;
};

/// A counted reference to an interface; may be empty.
template <class Interface> class Pointer {
public:
    Pointer() = default;
    /// Takes over a reference that somebody else counted.
    static Pointer Own(Interface* counted)
    {
        Pointer pointer;
        pointer.interface_ = counted;
        return pointer;
    }
    /// Counts a reference of its own.
    static Pointer Share(Interface* other)
    {
        if (other != nullptr)
            other->AddRef();
        return Own(other);
    }
    ~Pointer()
    {
        if (interface_ != nullptr)
            interface_->Release();
    }
    Pointer(Pointer&& other) noexcept : interface_(std::exchange(other.interface_, nullptr)) {}
    Pointer& operator=(Pointer&& other) noexcept
    {
        std::swap(interface_, other.interface_);
        return *this;
    }
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;

    Interface* Get() const { return interface_; }
    Interface* operator->() const { return interface_; }
    explicit operator bool() const { return interface_ != nullptr; }
    /// For a call that gives a counted reference; only while empty.
    Interface** Receive() { return &interface_; }
    /// The same for calls that know no types.
    void** ReceiveAny() { return static_cast<void**>(static_cast<void*>(&interface_)); }

private:
    Interface* interface_ = nullptr;
};

/// What tells objects apart: the same object always gives the same one.
Pointer<IUnknown> IdentityOf(IUnknown& object);

/// A text as COM passes it.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(std::string_view utf8);
    ~Bstr() { SysFreeString(text_); }
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    Bstr& operator=(Bstr&&) = delete;
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;

    /// Gives the ownership away.
    BSTR Release() { return std::exchange(text_, nullptr); }

private:
    BSTR text_ = nullptr;
};

/// In UTF-8; a null text is empty.
std::string TextOf(BSTR text);

/// A value of a call: an argument or a result.
class Variant {
public:
    Variant() { VariantInit(&value_); }
    explicit Variant(bool value);
    explicit Variant(std::int16_t value);
    explicit Variant(std::int32_t value);
    explicit Variant(std::string_view utf8);
    explicit Variant(IDispatch& object);
    explicit Variant(const void*) = delete; // else a pointer would become a truth value
    /// An optional argument that is not given.
    static Variant Omitted();
    ~Variant() { VariantClear(&value_); }
    Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
    Variant& operator=(Variant&&) = delete;
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    /// For looking only; it stays the owner.
    const VARIANT& Get() const { return value_; }
    /// For a call that gives a value; clears the one before.
    VARIANT* Receive();

    bool AsBool() const;        ///< false where it is something else
    std::string AsText() const; ///< UTF-8; empty where it is something else
    /// The object, or nothing where it is another kind of value.
    Pointer<IDispatch> TakeObject();

private:
    VARIANT value_ = {};
};

/// What an object says about the failure of a call.
class ExceptionInfo {
public:
    ExceptionInfo() = default;
    ~ExceptionInfo() { Clear(); }
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;

    /// For one more call; clears what the last one gave.
    EXCEPINFO* Receive();
    /// After a failed call. Many objects fill in the rest only when they are asked to.
    void Complete();
    /// The object's own code, or S_OK where it gave none.
    HRESULT Code() const;
    std::string Description() const { return TextOf(info_.bstrDescription); }

private:
    void Clear();

    EXCEPINFO info_ = {};
};

} // namespace orrery::excel
