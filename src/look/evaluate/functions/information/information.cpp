#include "look/evaluate/functions/information/information.h"

#include "util/text.h"

#include <cmath>

namespace orrery::formula {
namespace {

template <class Type> Value IsKind(Call& call)
{
    return std::holds_alternative<Type>(call.Single(0));
}

/// ECMA-376 18.17.7.104
Value ErrorType(Call& call)
{
    const Value value = call.Single(0);
    const auto* error = std::get_if<CellError>(&value);
    if (error == nullptr)
        return CellError::NotAvailable;
    switch (*error) {
    case CellError::Null:
        return 1.0;
    case CellError::DivisionByZero:
        return 2.0;
    case CellError::Value:
        return 3.0;
    case CellError::Reference:
        return 4.0;
    case CellError::Name:
        return 5.0;
    case CellError::Number:
        return 6.0;
    case CellError::NotAvailable:
        return 7.0;
    case CellError::GettingData:
        return 8.0;
    case CellError::Spill:
        return 9.0;
    case CellError::Calculation:
        return 14.0;
    }
    return CellError::NotAvailable;
}

Value TypeOf(Call& call)
{
    if (std::holds_alternative<ArrayPointer>(call.arguments[0]))
        return 64.0;
    if (const auto* reference = call.AsReference(0))
        if (reference->size() > 1 || !reference->front().IsOneCell())
            return 64.0;
    const Value value = call.Single(0);
    if (std::holds_alternative<std::string>(value))
        return 2.0;
    if (std::holds_alternative<bool>(value))
        return 4.0;
    return IsError(value) ? 16.0 : 1.0;
}

Value AsNumber(Call& call)
{
    Value value = call.Single(0);
    if (const auto* logical = std::get_if<bool>(&value))
        return *logical ? 1.0 : 0.0;
    if (std::holds_alternative<std::string>(value) || IsBlank(value))
        return 0.0;
    return value;
}

Value IsOddNumber(Call& call, bool wantsOdd)
{
    const Value value = call.Single(0);
    if (std::holds_alternative<bool>(value))
        return CellError::Value;
    const double number = std::trunc(call.Convert(value));
    return (std::fmod(std::fabs(number), 2) == 1) == wantsOdd;
}

/// The parts of CELL that do not depend on how cells look.
Value CellProperty(Call& call)
{
    const std::string what = util::ToUpperAscii(call.Text(0));
    const Reference* reference = call.AsReference(1);
    if (call.Has(1) && reference == nullptr)
        return CellError::Value;
    const book::CellAddress cell =
        reference != nullptr ? reference->front().range.first : call.context.OwnCell();
    const std::size_t sheet =
        reference != nullptr ? reference->front().firstSheet : call.context.OwnSheet();
    if (what == "ROW")
        return static_cast<double>(cell.row);
    if (what == "COL")
        return static_cast<double>(cell.column);
    if (what == "ADDRESS") {
        const std::string plain = book::FormatCellAddress(cell);
        const std::size_t digits = plain.find_first_of("0123456789");
        return "$" + plain.substr(0, digits) + "$" + plain.substr(digits);
    }
    const Value value = call.context.ValueAt(sheet, cell);
    if (what == "CONTENTS")
        return IsBlank(value) ? Value(0.0) : value;
    if (what == "TYPE")
        return IsBlank(value) ? "b" : std::holds_alternative<std::string>(value) ? "l" : "v";
    call.context.GiveUp();
    return {};
}

Value FormulaText(Call& call)
{
    const Reference* reference = call.AsReference(0);
    if (reference == nullptr)
        return CellError::Value;
    const Area& area = reference->front();
    const auto formula = call.context.FormulaAt(area.firstSheet, area.range.first);
    if (!formula)
        return CellError::NotAvailable;
    return "=" + *formula;
}

Value IsFormula(Call& call)
{
    const Reference* reference = call.AsReference(0);
    if (reference == nullptr)
        return CellError::Value;
    const Area& area = reference->front();
    return call.context.FormulaAt(area.firstSheet, area.range.first).has_value();
}

Value SheetNumber(Call& call)
{
    if (const Reference* reference = call.AsReference(0))
        return static_cast<double>(reference->front().firstSheet + 1);
    if (!call.Has(0))
        return static_cast<double>(call.context.OwnSheet() + 1);
    const std::string wanted = call.Text(0);
    for (std::size_t sheet = 0; sheet < call.context.SheetCount(); ++sheet)
        if (util::EqualIgnoringCase(call.context.SheetName(sheet), wanted))
            return static_cast<double>(sheet + 1);
    return CellError::NotAvailable;
}

Value SheetsOf(Call& call)
{
    if (const Reference* reference = call.AsReference(0))
        return static_cast<double>(reference->front().lastSheet - reference->front().firstSheet +
                                   1);
    return call.Has(0) ? Value(CellError::NotAvailable)
                       : Value(static_cast<double>(call.context.SheetCount()));
}

Value IsErrorButNotAvailable(Call& call)
{
    const Value value = call.Single(0);
    return IsError(value) && value != Value(CellError::NotAvailable);
}

} // namespace

const FunctionList& InformationFunctions()
{
    static const FunctionList kFunctions = {
        {"ISNUMBER", "v", IsKind<double>},
        {"ISTEXT", "v", IsKind<std::string>},
        {"ISLOGICAL", "v", IsKind<bool>},
        {"ISBLANK", "v", IsKind<std::monostate>},
        {"ISERROR", "v", IsKind<CellError>},
        {"ISERR", "v", IsErrorButNotAvailable},
        {"ISNA", "v",
         [](Call& call) -> Value { return call.Single(0) == Value(CellError::NotAvailable); }},
        {"ISNONTEXT", "v",
         [](Call& call) -> Value { return !std::holds_alternative<std::string>(call.Single(0)); }},
        {"ISREF", "r", [](Call& call) -> Value { return call.AsReference(0) != nullptr; }},
        {"ISEVEN", "v", [](Call& call) -> Value { return IsOddNumber(call, false); }},
        {"ISODD", "v", [](Call& call) -> Value { return IsOddNumber(call, true); }},
        {"ISFORMULA", "r", IsFormula},
        {"FORMULATEXT", "r", FormulaText},
        {"ERROR.TYPE", "v", ErrorType},
        {"TYPE", "r", TypeOf},
        {"N", "r", AsNumber},
        {"NA", "", [](Call&) -> Value { return CellError::NotAvailable; }},
        {"CELL", "v|r", CellProperty},
        {"SHEET", "|r", SheetNumber},
        {"SHEETS", "|r", SheetsOf},
    };
    return kFunctions;
}

} // namespace orrery::formula
