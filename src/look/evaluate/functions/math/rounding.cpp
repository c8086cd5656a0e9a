#include "look/evaluate/functions/math/math.h"
#include "look/evaluate/values/decimals.h"

#include <cmath>

namespace orrery::formula {
namespace {

template <Rounding How> Value RoundTo(Call& call)
{
    return NumberOrError(RoundDecimals(call.Number(0), std::trunc(call.Number(1)), How));
}

/// A quotient that lost digits counts as the whole number that it should be.
double Snapped(double number)
{
    const double whole = std::round(number);
    return IsNearly(number, whole) ? whole : number;
}

double UpTo(double number, double step)
{
    return std::ceil(Snapped(number / step)) * step;
}
double DownTo(double number, double step)
{
    return std::floor(Snapped(number / step)) * step;
}

/// CEILING, FLOOR: a positive number does not go with a negative step.
template <bool GoesUp> Value Stepped(Call& call)
{
    const double number = call.Number(0);
    const double step = call.Number(1);
    if (number == 0)
        return 0.0;
    if (step == 0)
        return GoesUp ? Value(0.0) : Value(CellError::DivisionByZero);
    if (number > 0 && step < 0)
        return CellError::Number;
    return GoesUp ? UpTo(number, step) : DownTo(number, step);
}

/// CEILING.MATH, FLOOR.MATH: negative numbers go towards zero, or with a mode the other way.
template <bool GoesUp> Value SteppedByMode(Call& call)
{
    const double number = call.Number(0);
    const double step = std::fabs(call.Number(1, 1));
    const bool isReversed = call.Number(2) != 0 && number < 0;
    if (step == 0)
        return 0.0;
    return GoesUp != isReversed ? UpTo(number, step) : DownTo(number, step);
}

/// CEILING.PRECISE, FLOOR.PRECISE
template <bool GoesUp> Value SteppedPrecisely(Call& call)
{
    const double step = std::fabs(call.Number(1, 1));
    if (step == 0)
        return 0.0;
    return GoesUp ? UpTo(call.Number(0), step) : DownTo(call.Number(0), step);
}

Value RoundToMultiple(Call& call)
{
    const double number = call.Number(0);
    const double step = call.Number(1);
    if (number == 0 || step == 0)
        return 0.0;
    if ((number < 0) != (step < 0))
        return CellError::Number;
    return std::floor(Snapped(number / step) + 0.5) * step;
}

/// EVEN, ODD: away from zero.
Value ToParity(Call& call, double first)
{
    const double number = call.Number(0);
    const double size = std::ceil((std::fabs(number) - first) / 2) * 2 + first;
    const double rounded = std::fmax(size, first);
    return number < 0 ? -rounded : rounded;
}

} // namespace

const FunctionList& RoundingFunctions()
{
    static const FunctionList kFunctions = {
        {"ROUND", "vv", RoundTo<Rounding::Nearest>},
        {"ROUNDUP", "vv", RoundTo<Rounding::AwayFromZero>},
        {"ROUNDDOWN", "vv", RoundTo<Rounding::TowardsZero>},
        {"TRUNC", "v|v", RoundTo<Rounding::TowardsZero>},
        {"INT", "v", [](Call& call) -> Value { return std::floor(call.Number(0)); }},
        {"CEILING", "vv", Stepped<true>},
        {"FLOOR", "vv", Stepped<false>},
        {"CEILING.MATH", "v|vv", SteppedByMode<true>},
        {"FLOOR.MATH", "v|vv", SteppedByMode<false>},
        {"CEILING.PRECISE", "v|v", SteppedPrecisely<true>},
        {"FLOOR.PRECISE", "v|v", SteppedPrecisely<false>},
        {"ISO.CEILING", "v|v", SteppedPrecisely<true>},
        {"MROUND", "vv", RoundToMultiple},
        {"EVEN", "v", [](Call& call) { return ToParity(call, 0); }},
        {"ODD", "v", [](Call& call) { return ToParity(call, 1); }},
    };
    return kFunctions;
}

} // namespace orrery::formula
