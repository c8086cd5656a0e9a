#include "look/evaluate/functions/math/math.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orrery::formula {
namespace {

/// A function of one number.
template <double (*Function)(double)> Value Of(Call& call)
{
    return NumberOrError(Function(call.Number(0)));
}

double Cot(double number)
{
    return 1 / std::tan(number);
}
double Sec(double number)
{
    return 1 / std::cos(number);
}
double Csc(double number)
{
    return 1 / std::sin(number);
}
double Degrees(double number)
{
    return number * 180 / std::numbers::pi;
}
double Radians(double number)
{
    return number * std::numbers::pi / 180;
}
double RootOfPi(double number)
{
    return std::sqrt(number * std::numbers::pi);
}

/// Beyond this the result of trigonometry is #NUM! in Excel.
constexpr double kLargestAngle = 134'217'728;

template <double (*Function)(double)> Value OfAngle(Call& call)
{
    const double angle = call.Number(0);
    return std::fabs(angle) < kLargestAngle ? NumberOrError(Function(angle))
                                            : Value(CellError::Number);
}

Value Mod(Call& call)
{
    const double number = call.Number(0);
    const double divisor = call.Number(1);
    if (divisor == 0)
        return CellError::DivisionByZero;
    const double quotient = std::floor(number / divisor);
    if (std::fabs(quotient) > 1e15)
        return CellError::Number;
    const double rest = std::fmod(number, divisor);
    return rest != 0 && (rest < 0) != (divisor < 0) ? rest + divisor : rest;
}

Value Quotient(Call& call)
{
    const double divisor = call.Number(1);
    if (divisor == 0)
        return CellError::DivisionByZero;
    return std::trunc(call.Number(0) / divisor);
}

Value Logarithm(Call& call)
{
    const double number = call.Number(0);
    const double base = call.Number(1, 10);
    if (number <= 0 || base <= 0)
        return CellError::Number;
    if (base == 1)
        return CellError::DivisionByZero;
    return base == 10  ? std::log10(number)
           : base == 2 ? std::log2(number)
                       : std::log(number) / std::log(base);
}

Value Power(Call& call)
{
    const double base = call.Number(0);
    const double exponent = call.Number(1);
    if (base == 0 && exponent == 0)
        return CellError::Number;
    if (base == 0 && exponent < 0)
        return CellError::DivisionByZero;
    return NumberOrError(std::pow(base, exponent));
}

double Factorial(double number, double step)
{
    double product = 1;
    while (number > 1) {
        product *= number;
        number -= step;
    }
    return product;
}

Value FactorialBy(Call& call, double step)
{
    const double number = call.Whole(0);
    const double lowest = step == 2 ? -1 : 0;
    return number < lowest || number > 300 ? Value(CellError::Number)
                                           : NumberOrError(Factorial(number, step));
}

/// Ways to choose so many of all.
double Combinations(double all, double chosen)
{
    double ways = 1;
    const double steps = std::min(chosen, all - chosen);
    for (double at = 1; at <= steps && std::isfinite(ways); ++at)
        ways = std::round(ways * (all - steps + at) / at);
    return ways;
}

Value Combin(Call& call)
{
    const double all = std::trunc(call.Number(0));
    const double chosen = std::trunc(call.Number(1));
    if (all < 0 || chosen < 0 || chosen > all || std::min(chosen, all - chosen) > 10'000)
        return CellError::Number;
    if (!call.context.Spend(static_cast<std::size_t>(std::min(chosen, all - chosen))))
        return {};
    return NumberOrError(Combinations(all, chosen));
}

Value Combina(Call& call)
{
    const double all = std::trunc(call.Number(0));
    const double chosen = std::trunc(call.Number(1));
    if (all < 0 || chosen < 0 || chosen > 10'000 || (all == 0 && chosen > 0))
        return CellError::Number;
    if (!call.context.Spend(static_cast<std::size_t>(chosen)))
        return {};
    return all == 0 ? Value(1.0) : NumberOrError(Combinations(all + chosen - 1, chosen));
}

Value Permut(Call& call)
{
    const double all = std::trunc(call.Number(0));
    const double chosen = std::trunc(call.Number(1));
    if (all < 0 || chosen < 0 || chosen > all || chosen > 10'000)
        return CellError::Number;
    if (!call.context.Spend(static_cast<std::size_t>(chosen)))
        return {};
    double ways = 1;
    for (int at = 0; at < static_cast<int>(chosen); ++at)
        ways *= all - at;
    return NumberOrError(ways);
}

Value Atan2(Call& call)
{
    const double x = call.Number(0);
    const double y = call.Number(1);
    if (x == 0 && y == 0)
        return CellError::DivisionByZero;
    return std::atan2(y, x);
}

double CommonDivisor(double left, double right)
{
    while (right != 0) {
        const double rest = std::fmod(left, right);
        left = right;
        right = rest;
    }
    return left;
}

Value Fold(Call& call, double (*join)(double, double), double begin)
{
    double result = begin;
    for (const double number : call.Numbers()) {
        if (number < 0 || number >= 9'007'199'254'740'992)
            return CellError::Number;
        result = join(result, std::trunc(number));
    }
    return NumberOrError(result);
}

Value Sign(Call& call)
{
    const double number = call.Number(0);
    return number > 0 ? 1.0 : number < 0 ? -1.0 : 0.0;
}

} // namespace

const FunctionList& MathFunctions()
{
    static const FunctionList kFunctions = {
        {"ABS", "v", Of<std::fabs>},
        {"ACOS", "v", Of<std::acos>},
        {"ACOSH", "v", Of<std::acosh>},
        {"ASIN", "v", Of<std::asin>},
        {"ASINH", "v", Of<std::asinh>},
        {"ATAN", "v", Of<std::atan>},
        {"ATANH", "v", Of<std::atanh>},
        {"ATAN2", "vv", Atan2},
        {"COS", "v", OfAngle<std::cos>},
        {"COSH", "v", Of<std::cosh>},
        {"COT", "v", OfAngle<Cot>},
        {"CSC", "v", OfAngle<Csc>},
        {"SEC", "v", OfAngle<Sec>},
        {"SIN", "v", OfAngle<std::sin>},
        {"SINH", "v", Of<std::sinh>},
        {"TAN", "v", OfAngle<std::tan>},
        {"TANH", "v", Of<std::tanh>},
        {"DEGREES", "v", Of<Degrees>},
        {"RADIANS", "v", Of<Radians>},
        {"EXP", "v", Of<std::exp>},
        {"LN", "v", Of<std::log>},
        {"LOG10", "v", Of<std::log10>},
        {"LOG", "v|v", Logarithm},
        {"SQRT", "v", Of<std::sqrt>},
        {"SQRTPI", "v", Of<RootOfPi>},
        {"POWER", "vv", Power},
        {"PI", "", [](Call&) -> Value { return std::numbers::pi; }},
        {"SIGN", "v", Sign},
        {"MOD", "vv", Mod},
        {"QUOTIENT", "vv", Quotient},
        {"FACT", "v", [](Call& call) { return FactorialBy(call, 1); }},
        {"FACTDOUBLE", "v", [](Call& call) { return FactorialBy(call, 2); }},
        {"COMBIN", "vv", Combin},
        {"COMBINA", "vv", Combina},
        {"PERMUT", "vv", Permut},
        {"GCD", "r", [](Call& call) { return Fold(call, CommonDivisor, 0); }, 1},
        {"LCM", "r",
         [](Call& call) {
             return Fold(
                 call,
                 [](double left, double right) {
                     return left == 0 || right == 0 ? 0 : left / CommonDivisor(left, right) * right;
                 },
                 1);
         },
         1},
    };
    return kFunctions;
}

} // namespace orrery::formula
