#include "engines/excel/dispatch.h"

#include "util/wide.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace orrery::excel {
namespace {

// Names and values mean the same in every language of the application.
constexpr LCID kEnglish = 0x0409;

constexpr std::size_t kMaxArguments = 8;

/// The arguments as a call passes them: in reverse. Their owners outlive it.
class Parameters {
public:
    explicit Parameters(Object::Arguments arguments)
        : parameters_{values_.data(), nullptr, static_cast<UINT>(arguments.size()), 0}
    {
        assert(arguments.size() <= kMaxArguments);
        auto value = values_.begin() + static_cast<std::ptrdiff_t>(arguments.size());
        for (const Variant& argument : arguments)
            *--value = argument.Get();
    }
    /// The one value of a property.
    explicit Parameters(const Variant& value)
        : values_{value.Get()}, parameters_{values_.data(), &propertyPut_, 1, 1}
    {
    }
    Parameters(const Parameters&) = delete;
    Parameters& operator=(const Parameters&) = delete;

    DISPPARAMS* Get() { return &parameters_; }

private:
    std::array<VARIANTARG, kMaxArguments> values_ = {};
    DISPID propertyPut_ = DISPID_PROPERTYPUT;
    DISPPARAMS parameters_;
};

void Invoke(IDispatch& object, ObjectKind& kind, std::string_view member, WORD flags,
            Parameters& parameters, Variant* result)
{
    const DISPID id = kind.IdOf(object, member);
    kind.Calls().Make(kind.CallName(member), [&](ExceptionInfo& info) {
        return object.Invoke(id, IID_NULL, kEnglish, flags, parameters.Get(),
                             result == nullptr ? nullptr : result->Receive(), info.Receive(),
                             nullptr);
    });
}

} // namespace

std::string ObjectKind::CallName(std::string_view member) const
{
    return member.empty() ? name_ : name_ + '.' + std::string(member);
}

DISPID ObjectKind::IdOf(IDispatch& object, std::string_view member)
{
    if (member == kDefaultMember)
        return DISPID_VALUE;
    const auto known = ids_.find(member);
    if (known != ids_.end())
        return known->second;
    std::wstring name = util::ToWide(member);
    DISPID id = DISPID_UNKNOWN;
    connection_.Make(CallName(member), [&](ExceptionInfo& /*info*/) {
        LPOLESTR names = name.data();
        return object.GetIDsOfNames(IID_NULL, &names, 1, kEnglish, &id);
    });
    ids_.emplace(member, id);
    return id;
}

Variant Object::Get(std::string_view property, Arguments arguments) const
{
    // An index may belong to the property or to the object that it returns: with both flags the
    // application chooses.
    const WORD flags =
        arguments.size() == 0 ? DISPATCH_PROPERTYGET : DISPATCH_PROPERTYGET | DISPATCH_METHOD;
    Parameters parameters(arguments);
    Variant result;
    Invoke(*object_.Get(), kind_, property, flags, parameters, &result);
    return result;
}

void Object::Put(std::string_view property, const Variant& value) const
{
    Parameters parameters(value);
    Invoke(*object_.Get(), kind_, property, DISPATCH_PROPERTYPUT, parameters, nullptr);
}

Variant Object::Call(std::string_view method, Arguments arguments) const
{
    Parameters parameters(arguments);
    Variant result;
    Invoke(*object_.Get(), kind_, method, DISPATCH_METHOD, parameters, &result);
    return result;
}

Object ObjectFrom(Variant result, ObjectKind& kind)
{
    auto object = result.TakeObject();
    if (!object)
        throw CallFailure(kind.CallName({}), E_NOINTERFACE,
                          std::string(kApplicationName) + " gave no " + kind.CallName({}) + '.');
    return {std::move(object), kind};
}

} // namespace orrery::excel
