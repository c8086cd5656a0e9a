#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

/// One owner for each kind of thing that COM hands out. Nothing outside this header releases any of
/// them.
namespace orrery::excel {

inline bool Failed(HRESULT result)
{
    return result < 0;
}

/// COM on this thread, in a single-threaded apartment unless the thread already is in one.
/// Everything that comes from COM must be released before it is destroyed.
class Apartment {
public:
    /// Throws Error(ApplicationFailure) if COM does not start.
    Apartment();
    ~Apartment();
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    bool entered_;
};

/// Whether the thread has to leave the apartment that it asked to enter: not if it is in one of the
/// other kind, which will do as well. Throws Error(ApplicationFailure) for a failure.
bool HasEntered(HRESULT result);

/// Throws Error(ApplicationFailure): the sentence without its full stop, the system's reason, and
/// what to do, another sentence or nothing.
[[noreturn]] void FailWith(const std::string& sentence, HRESULT code,
                           const std::string& advice = {});

/// What to do when nothing is wrong with the workbook or with Excel itself.
inline constexpr const char* kOtherEngineAdvice =
    "Restart Windows, or choose the engine \"builtin\".";

/// A counted reference to an interface; may be empty.
template <class Interface> class Pointer {
public:
    Pointer() = default;
    /// Takes over a counted reference.
    static Pointer Own(Interface* counted)
    {
        Pointer pointer;
        pointer.interface_ = counted;
        return pointer;
    }
    /// Counts another reference.
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
    /// For a call that returns a counted reference; only while empty.
    Interface** Receive() { return &interface_; }
    /// The same for untyped calls.
    void** ReceiveAny() { return static_cast<void**>(static_cast<void*>(&interface_)); }

private:
    Interface* interface_ = nullptr;
};

/// An object's identity: always the same for the same object.
Pointer<IUnknown> IdentityOf(IUnknown& object);

/// A string as COM passes it.
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

/// UTF-8; empty for a null string.
std::string TextOf(BSTR text);

/// An argument or result of a call.
class Variant {
public:
    Variant() { VariantInit(&value_); }
    explicit Variant(bool value);
    explicit Variant(std::int16_t value);
    explicit Variant(std::int32_t value);
    explicit Variant(std::string_view utf8);
    explicit Variant(IDispatch& object);
    explicit Variant(const void*) = delete; // otherwise a pointer would become a truth value
    /// An optional argument that is left out.
    static Variant Omitted();
    ~Variant() { VariantClear(&value_); }
    Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
    Variant& operator=(Variant&&) = delete;
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    /// To look at; this object keeps the ownership.
    const VARIANT& Get() const { return value_; }
    /// For a call that returns a value; clears the old one.
    VARIANT* Receive();

    bool AsBool() const;           ///< false if it is something else
    std::int32_t AsNumber() const; ///< of VT_I4; 0 if it is something else
    std::string AsText() const;    ///< UTF-8; empty if it is something else
    /// The object, or an empty pointer if it is another kind of value.
    Pointer<IDispatch> TakeObject();

private:
    VARIANT value_ = {};
};

/// What an object says about a failed call.
class ExceptionInfo {
public:
    ExceptionInfo() = default;
    ~ExceptionInfo() { Clear(); }
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;

    /// For the next call; clears the last one's.
    EXCEPINFO* Receive();
    /// After a failed call. Many objects fill in the rest only on request.
    void Complete();
    /// The object's own code, or S_OK if it gave none.
    HRESULT Code() const;
    std::string Description() const { return TextOf(info_.bstrDescription); }

private:
    void Clear();

    EXCEPINFO info_ = {};
};

} // namespace orrery::excel
