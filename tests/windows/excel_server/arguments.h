#pragma once

#include "automation/variant.h"
#include "excel_server/failure.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace orrery::excel_server {

struct Parameter {
    const char* name;
    bool required = false;
};

/// The arguments of one call by parameter, counted from 0. The getters convert as automation does
/// and throw CallFailure(DISP_E_TYPEMISMATCH).
class Arguments {
public:
    /// Assigns positional arguments, which come in reverse, and named ones to their parameters.
    /// `put`: one argument is the value. Throws CallFailure.
    Arguments(const DISPPARAMS& given, const std::vector<Parameter>& parameters, bool put);

    bool Has(std::size_t parameter) const;
    std::int32_t Integer(std::size_t parameter) const;
    bool Boolean(std::size_t parameter) const;
    std::string Text(std::size_t parameter) const;
    bool IsText(std::size_t parameter) const;
    IDispatch* Object(std::size_t parameter) const;
    /// The new value of a property.
    const automation::Variant& Value() const { return value_; }
    bool BooleanValue() const;
    std::int32_t IntegerValue() const;
    std::string TextValue() const;

private:
    struct Given {
        automation::Variant value;
        UINT index = 0; ///< in rgvarg
        bool present = false;
    };
    void Store(std::size_t parameter, const VARIANT& value, UINT index);
    automation::Variant Converted(std::size_t parameter, VARTYPE type) const;

    std::vector<Given> values_;
    automation::Variant value_;
};

using ObjectName = std::function<std::string(IUnknown*)>;

/// "VT_I4 5", "VT_BSTR \"Plan\"", "VT_BYREF|VT_I2 3", "omitted"; an object by `nameOf`.
std::string Describe(const VARIANT& value, const ObjectName& nameOf);

} // namespace orrery::excel_server
