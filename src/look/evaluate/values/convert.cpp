#include "look/evaluate/values/convert.h"

#include "look/evaluate/values/decimals.h"
#include "util/text.h"

namespace orrery::formula {

Converted<double> ToNumber(const Value& value, const TextRules& rules)
{
    if (const auto* number = std::get_if<double>(&value))
        return {*number, std::nullopt};
    if (const auto* logical = std::get_if<bool>(&value))
        return {*logical ? 1.0 : 0.0, std::nullopt};
    if (const auto* error = std::get_if<CellError>(&value))
        return {0, *error};
    if (const auto* text = std::get_if<std::string>(&value)) {
        const auto number = NumberOfText(*text, rules);
        return number ? Converted<double>{*number, std::nullopt}
                      : Converted<double>{0, CellError::Value};
    }
    return {};
}

Converted<std::string> ToText(const Value& value)
{
    if (const auto* text = std::get_if<std::string>(&value))
        return {*text, std::nullopt};
    if (const auto* number = std::get_if<double>(&value))
        return {GeneralText(*number), std::nullopt};
    if (const auto* logical = std::get_if<bool>(&value))
        return {*logical ? "TRUE" : "FALSE", std::nullopt};
    if (const auto* error = std::get_if<CellError>(&value))
        return {"", *error};
    return {};
}

Converted<bool> ToLogical(const Value& value)
{
    if (const auto* logical = std::get_if<bool>(&value))
        return {*logical, std::nullopt};
    if (const auto* number = std::get_if<double>(&value))
        return {*number != 0, std::nullopt};
    if (const auto* error = std::get_if<CellError>(&value))
        return {false, *error};
    if (const auto* text = std::get_if<std::string>(&value)) {
        const bool isTrue = util::EqualIgnoringCase(*text, "TRUE");
        if (!isTrue && !util::EqualIgnoringCase(*text, "FALSE"))
            return {false, CellError::Value};
        return {isTrue, std::nullopt};
    }
    return {};
}

} // namespace orrery::formula
