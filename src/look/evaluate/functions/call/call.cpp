#include "look/evaluate/functions/call/call.h"

#include "look/evaluate/values/table_shape.h"

#include <cmath>
#include <memory>
#include <utility>

namespace orrery::formula {
namespace {

void ForEachOf(Context& context, const Array& table, const std::function<bool(const Value&)>& take)
{
    const JoinedShape shape(table);
    if (!context.Spend(table.values.size()))
        return;
    for (std::int32_t row = 0; row < table.rows; ++row) {
        for (std::int32_t column = 0; column < table.columns; ++column) {
            const Value& value = table.At(row, column);
            if (IsBlank(value))
                continue;
            const bool isOnce = IsError(value) || std::holds_alternative<bool>(value);
            const auto count =
                isOnce ? std::size_t{1} : static_cast<std::size_t>(shape.PlacesOf(row, column));
            if (count > 1 && !context.Spend(count))
                return;
            for (std::size_t taken = 0; taken < count; ++taken)
                if (!take(value))
                    return;
        }
    }
}

} // namespace

Value Call::Single(std::size_t at) const
{
    if (at >= arguments.size())
        return {};
    if (const auto* value = std::get_if<Value>(&arguments[at]))
        return *value;
    if (const auto* array = std::get_if<ArrayPointer>(&arguments[at]))
        return (*array)->values.front();
    if (const auto* reference = std::get_if<Reference>(&arguments[at])) {
        const Area& area = reference->front();
        return context.ValueAt(area.firstSheet, area.range.first);
    }
    return {};
}

double Call::Convert(const Value& value)
{
    const auto converted = ToNumber(value, context.Rules());
    if (converted.error)
        Fail(*converted.error);
    return converted.value;
}

double Call::Number(std::size_t at, double absent)
{
    return Has(at) ? Convert(Single(at)) : absent;
}

double Call::Whole(std::size_t at, double absent)
{
    return std::floor(Number(at, absent));
}

std::string Call::Text(std::size_t at, std::string_view absent)
{
    if (!Has(at))
        return std::string(absent);
    auto converted = ToText(Single(at));
    if (converted.error)
        Fail(*converted.error);
    context.Spend(StepsOfText(converted.value.size()));
    return std::move(converted.value);
}

bool Call::Logical(std::size_t at, bool absent)
{
    if (!Has(at))
        return absent;
    const auto converted = ToLogical(Single(at));
    if (converted.error)
        Fail(*converted.error);
    return converted.value;
}

const Reference* Call::AsReference(std::size_t at) const
{
    return at < arguments.size() ? std::get_if<Reference>(&arguments[at]) : nullptr;
}

const Array* Call::AsArray(std::size_t at) const
{
    const auto* array = at < arguments.size() ? std::get_if<ArrayPointer>(&arguments[at]) : nullptr;
    return array != nullptr ? array->get() : nullptr;
}

ArrayPointer Call::Table(std::size_t at)
{
    if (at < arguments.size()) {
        if (const auto* array = std::get_if<ArrayPointer>(&arguments[at]))
            return *array;
        if (const auto* reference = std::get_if<Reference>(&arguments[at]))
            return context.ValuesOf(reference->front());
    }
    Array array(1, 1);
    array.values.front() = Single(at);
    return std::make_shared<const Array>(std::move(array));
}

ArrayPointer Call::WholeTable(std::size_t at)
{
    ArrayPointer table = Table(at);
    return context.Spend(table->values.size()) ? table : std::make_shared<const Array>(1, 1);
}

void Call::ForEach(std::size_t at, const std::function<bool(const Value&, Source)>& take)
{
    if (!Has(at))
        return;
    if (const auto* value = std::get_if<Value>(&arguments[at])) {
        take(IsBlank(*value) ? Value(0.0) : *value, Source::Direct); // of an empty cell looked up
        return;
    }
    if (const auto* array = std::get_if<ArrayPointer>(&arguments[at])) {
        ForEachOf(context, **array, [&](const Value& value) { return take(value, Source::Array); });
        return;
    }
    bool goesOn = true;
    for (const Area& area : std::get<Reference>(arguments[at])) {
        context.ForEachCell(area, [&](std::size_t, book::CellAddress, const Value& value) {
            return goesOn = take(value, Source::Cell);
        });
        if (!goesOn)
            return;
    }
}

std::vector<double> Call::Numbers(std::size_t from, std::size_t count)
{
    std::vector<double> numbers;
    for (std::size_t at = from; at < arguments.size() && at - from < count && !failure; ++at) {
        if (std::holds_alternative<Missing>(arguments[at]))
            numbers.push_back(0);
        ForEach(at, [&](const Value& value, Source source) {
            if (const auto* number = std::get_if<double>(&value))
                numbers.push_back(*number);
            else if (source == Source::Direct || IsError(value))
                numbers.push_back(Convert(value));
            return !failure;
        });
    }
    return numbers;
}

std::vector<double> Call::NumbersOfAll(std::size_t from)
{
    std::vector<double> numbers;
    for (std::size_t at = from; at < arguments.size() && !failure; ++at) {
        ForEach(at, [&](const Value& value, Source source) {
            if (std::holds_alternative<std::string>(value) && source != Source::Direct)
                numbers.push_back(0);
            else
                numbers.push_back(Convert(value));
            return !failure;
        });
    }
    return numbers;
}

Operand MakeTable(Array array)
{
    if (array.values.empty())
        return Value(CellError::Calculation);
    return ArrayPointer(std::make_shared<const Array>(std::move(array)));
}

Value NumberOrError(double number)
{
    if (!std::isfinite(number))
        return CellError::Number;
    return number;
}

Value NumberOr(const std::optional<double>& number, CellError error)
{
    return number ? NumberOrError(*number) : Value(error);
}

} // namespace orrery::formula
