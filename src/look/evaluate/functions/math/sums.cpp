#include "look/evaluate/functions/math/math.h"
#include "look/evaluate/values/decimals.h"
#include "look/evaluate/values/table_shape.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace orrery::formula {
namespace {

/// Of whole columns and rows each value as often as it stands there.
double SumOfTable(Call& call, const Array& table)
{
    const JoinedShape shape(table);
    double sum = 0;
    if (!call.context.Spend(table.values.size()))
        return sum;
    for (std::int32_t row = 0; row < table.rows; ++row) {
        for (std::int32_t column = 0; column < table.columns && !call.failure; ++column) {
            const Value& value = table.At(row, column);
            if (IsError(value) || std::holds_alternative<double>(value))
                sum += call.Convert(value) * shape.PlacesOf(row, column);
        }
    }
    return sum;
}

/// Areas of cells are summed once and remembered.
Value Sum(Call& call)
{
    double sum = 0;
    for (std::size_t at = 0; at < call.Count() && !call.failure; ++at) {
        if (const Reference* reference = call.AsReference(at)) {
            for (const Area& area : *reference) {
                const AreaSummary& summary = call.context.Summarize(area);
                sum += summary.sum;
                if (summary.error)
                    call.Fail(*summary.error);
            }
            continue;
        }
        if (const Array* table = call.AsArray(at)) {
            sum += SumOfTable(call, *table);
            continue;
        }
        call.ForEach(at, [&](const Value& value, Call::Source) {
            sum += call.Convert(value);
            return !call.failure;
        });
    }
    return NumberOrError(sum);
}

Value Product(Call& call)
{
    const auto numbers = call.Numbers();
    double product = numbers.empty() ? 0 : 1;
    for (const double number : numbers)
        product *= number;
    return NumberOrError(product);
}

Value SumOfSquares(Call& call)
{
    double sum = 0;
    for (const double number : call.Numbers())
        sum += number * number;
    return NumberOrError(sum);
}

/// Texts and logical values count as 0.
double ProductAt(Call& call, const std::vector<ArrayPointer>& tables, std::int32_t row,
                 std::int32_t column)
{
    double product = 1;
    for (const auto& table : tables) {
        const Value& value = ElementOf(*table, row, column);
        const auto* number = std::get_if<double>(&value);
        if (IsError(value))
            call.Convert(value);
        product *= number != nullptr ? *number : 0;
    }
    return product;
}

Value SumProduct(Call& call)
{
    std::vector<ArrayPointer> tables;
    JoinedShape shape;
    for (std::size_t at = 0; at < call.Count(); ++at) {
        tables.push_back(call.Table(at));
        if (!AreOfOneSize(*tables.back(), *tables.front()))
            return CellError::Value;
        shape.Add(*tables.back());
    }
    const auto size = static_cast<std::size_t>(shape.Size());
    if (size > static_cast<std::size_t>(kLargestArray) || !call.context.Spend(size * tables.size()))
        return {};
    double sum = 0;
    for (std::int32_t row = 0; row < shape.Rows(); ++row)
        for (std::int32_t column = 0; column < shape.Columns() && !call.failure; ++column)
            sum += ProductAt(call, tables, row, column) * shape.PlacesOf(row, column);
    return NumberOrError(sum);
}

/// Sums what a function makes of pairs of numbers; pairs with something else do not count.
Value SumOfPairs(Call& call, double (*join)(double, double))
{
    const ArrayPointer left = call.WholeTable(0);
    const ArrayPointer right = call.WholeTable(1);
    if (left->values.size() != right->values.size())
        return CellError::NotAvailable;
    double sum = 0;
    bool hasPairs = false;
    for (std::size_t at = 0; at < left->values.size(); ++at) {
        const Value& x = left->values[at];
        const Value& y = right->values[at];
        if (IsError(x) || IsError(y))
            return IsError(x) ? x : y;
        if (!std::holds_alternative<double>(x) || !std::holds_alternative<double>(y))
            continue;
        sum += join(std::get<double>(x), std::get<double>(y));
        hasPairs = true;
    }
    return hasPairs ? NumberOrError(sum) : Value(CellError::DivisionByZero);
}

/// The numbers of a table, row by row; fails if something else is among them.
std::vector<double> Matrix(Call& call, const Array& table)
{
    std::vector<double> numbers;
    for (const Value& value : table.values) {
        if (IsError(value))
            call.Convert(value);
        call.Require(std::holds_alternative<double>(value), CellError::Value);
        numbers.push_back(call.failure ? 0 : std::get<double>(value));
    }
    return numbers;
}

Operand MultiplyMatrices(Call& call)
{
    const ArrayPointer left = call.WholeTable(0);
    const ArrayPointer right = call.WholeTable(1);
    const auto a = Matrix(call, *left);
    const auto b = Matrix(call, *right);
    const std::int64_t size = std::int64_t{left->rows} * right->columns;
    if (!call.Require(left->columns == right->rows && size <= kLargestArray, CellError::Value) ||
        !call.context.Spend(static_cast<std::size_t>(size * left->columns)))
        return Value();
    Array product(left->rows, right->columns);
    const auto inner = static_cast<std::size_t>(left->columns);
    const auto columns = static_cast<std::size_t>(right->columns);
    for (std::size_t row = 0; row < static_cast<std::size_t>(left->rows); ++row) {
        for (std::size_t column = 0; column < columns; ++column) {
            double sum = 0;
            for (std::size_t at = 0; at < inner; ++at)
                sum += a[row * inner + at] * b[at * columns + column];
            product.values[row * columns + column] = sum;
        }
    }
    return MakeTable(std::move(product));
}

/// Gauss's elimination of a square matrix, on `other` too; the determinant.
double Eliminate(std::vector<double>& matrix, std::vector<double>& other, std::size_t size)
{
    double determinant = 1;
    for (std::size_t step = 0; step < size; ++step) {
        std::size_t best = step;
        for (std::size_t row = step; row < size; ++row)
            if (std::fabs(matrix[row * size + step]) > std::fabs(matrix[best * size + step]))
                best = row;
        const double pivot = matrix[best * size + step];
        if (pivot == 0)
            return 0;
        determinant *= best == step ? pivot : -pivot;
        for (std::size_t column = 0; column < size; ++column) {
            std::swap(matrix[best * size + column], matrix[step * size + column]);
            std::swap(other[best * size + column], other[step * size + column]);
            matrix[step * size + column] /= pivot;
            other[step * size + column] /= pivot;
        }
        for (std::size_t row = 0; row < size; ++row) {
            const double factor = row == step ? 0 : matrix[row * size + step];
            for (std::size_t column = 0; column < size && factor != 0; ++column) {
                matrix[row * size + column] -= factor * matrix[step * size + column];
                other[row * size + column] -= factor * other[step * size + column];
            }
        }
    }
    return determinant;
}

struct Eliminated {
    double determinant = 0;
    std::vector<double> inverse;
    std::int32_t size = 0;
};

Eliminated EliminateTable(Call& call)
{
    constexpr std::int32_t kLargest = 100;
    const ArrayPointer table = call.WholeTable(0);
    Eliminated result;
    result.size = table->rows;
    if (!call.Require(table->rows == table->columns && table->rows <= kLargest, CellError::Value))
        return result;
    auto matrix = Matrix(call, *table);
    const auto size = static_cast<std::size_t>(result.size);
    result.inverse.assign(size * size, 0);
    for (std::size_t at = 0; at < size; ++at)
        result.inverse[at * size + at] = 1;
    if (!call.failure && call.context.Spend(size * size * size))
        result.determinant = Eliminate(matrix, result.inverse, size);
    return result;
}

Operand Inverse(Call& call)
{
    const Eliminated result = EliminateTable(call);
    if (!call.Require(result.determinant != 0) || call.failure)
        return Value();
    Array table(result.size, result.size);
    std::copy(result.inverse.begin(), result.inverse.end(), table.values.begin());
    return MakeTable(std::move(table));
}

/// The sum of a power series: x, the first power, the step, the coefficients.
Value SeriesSum(Call& call)
{
    const double x = call.Number(0);
    const double first = call.Number(1);
    const double step = call.Number(2);
    double sum = 0;
    double power = first;
    for (const double coefficient : call.Numbers(3)) {
        sum += coefficient * std::pow(x, power);
        power += step;
    }
    return NumberOrError(sum);
}

} // namespace

const FunctionList& SumFunctions()
{
    static const FunctionList kFunctions = {
        {"SUM", "r", Sum, 1},
        {"PRODUCT", "r", Product, 1},
        {"SUMSQ", "r", SumOfSquares, 1},
        {"SUMPRODUCT", "a", SumProduct, 1},
        {"SUMX2MY2", "aa",
         [](Call& call) {
             return SumOfPairs(call, [](double x, double y) { return x * x - y * y; });
         }},
        {"SUMX2PY2", "aa",
         [](Call& call) {
             return SumOfPairs(call, [](double x, double y) { return x * x + y * y; });
         }},
        {"SUMXMY2", "aa",
         [](Call& call) {
             return SumOfPairs(call, [](double x, double y) { return (x - y) * (x - y); });
         }},
        {"MMULT", "aa", MultiplyMatrices},
        {"MDETERM", "a", [](Call& call) -> Value { return EliminateTable(call).determinant; }},
        {"MINVERSE", "a", Inverse},
        {"SERIESSUM", "vvvr", SeriesSum},
    };
    return kFunctions;
}

} // namespace orrery::formula
