#include "look/evaluate/functions/financial/financial.h"

#include <cmath>

namespace orrery::formula {
namespace {

/// A loan or a saving: pv·(1+r)^n + pmt·(1+r·type)·((1+r)^n − 1)/r + fv = 0.
struct Annuity {
    double rate = 0;
    double periods = 0;
    double payment = 0;
    double present = 0;
    double future = 0;
    double type = 0; ///< 1: payments at the beginning of periods

    double Growth() const { return std::pow(1 + rate, periods); }
    /// What payments of 1 come to at the end.
    double Payments() const
    {
        return rate == 0 ? periods : (1 + rate * type) * (Growth() - 1) / rate;
    }
    double Future() const { return -(present * Growth() + payment * Payments()); }
    double Present() const { return -(future + payment * Payments()) / Growth(); }
    double Payment() const { return -(future + present * Growth()) / Payments(); }
    double Balance() const { return future - Future(); }
};

double Type(Call& call, std::size_t at)
{
    return call.Number(at) != 0 ? 1 : 0;
}

Value Payment(Call& call)
{
    const Annuity loan{call.Number(0), call.Number(1), 0,
                       call.Number(2), call.Number(3), Type(call, 4)};
    return NumberOrError(loan.Payment());
}

Value FutureValue(Call& call)
{
    const Annuity saving{call.Number(0), call.Number(1), call.Number(2), call.Number(3), 0,
                         Type(call, 4)};
    return NumberOrError(saving.Future());
}

Value PresentValue(Call& call)
{
    const Annuity loan{call.Number(0), call.Number(1), call.Number(2), 0,
                       call.Number(3), Type(call, 4)};
    return NumberOrError(loan.Present());
}

Value Periods(Call& call)
{
    const double rate = call.Number(0);
    const double payment = call.Number(1);
    const double present = call.Number(2);
    const double future = call.Number(3);
    if (rate == 0)
        return payment == 0 ? Value(CellError::Number)
                            : NumberOrError(-(present + future) / payment);
    const double share = payment * (1 + rate * Type(call, 4)) / rate;
    return NumberOrError(std::log((share - future) / (share + present)) / std::log1p(rate));
}

/// Newton's method with the slope of a small step.
template <class Function>
std::optional<double> FindRoot(Call& call, const Function& function, double guess)
{
    double rate = guess;
    for (int step = 0; step < 100 && call.context.Spend(1); ++step) {
        const double value = function(rate);
        const double width = 1e-7 * std::fmax(1, std::fabs(rate));
        const double slope = (function(rate + width) - function(rate - width)) / (2 * width);
        const double next = rate - value / slope;
        if (!std::isfinite(next) || next <= -1)
            return std::nullopt;
        if (std::fabs(next - rate) < 1e-13 * std::fmax(1, std::fabs(rate)))
            return next;
        rate = next;
    }
    return std::fabs(function(rate)) < 1e-6 ? std::optional(rate) : std::nullopt;
}

Value RootOrError(const std::optional<double>& root)
{
    return root ? Value(*root) : Value(CellError::Number);
}

Value Rate(Call& call)
{
    Annuity loan{0, call.Number(0), call.Number(1), call.Number(2), call.Number(3), Type(call, 4)};
    if (loan.periods <= 0)
        return CellError::Number;
    const auto balance = [&](double rate) {
        loan.rate = std::fabs(rate) < 1e-12 ? 0 : rate;
        return loan.Balance();
    };
    return RootOrError(FindRoot(call, balance, call.Number(5, 0.1)));
}

/// The interest in the payment of one period.
Value Interest(Call& call, bool wantsRest)
{
    const double period = call.Number(1);
    Annuity loan{call.Number(0), call.Number(2), 0, call.Number(3), call.Number(4), Type(call, 5)};
    if (period < 1 || period > loan.periods)
        return CellError::Number;
    const double payment = loan.Payment();
    Annuity before = loan;
    before.payment = payment;
    before.periods = period - 1;
    double interest = before.Future() * loan.rate;
    if (loan.type != 0)
        interest = period == 1 ? 0 : interest / (1 + loan.rate);
    return NumberOrError(wantsRest ? payment - interest : interest);
}

double NetPresent(double rate, const std::vector<double>& flows)
{
    double sum = 0;
    double growth = 1;
    for (const double flow : flows) {
        sum += flow / growth;
        growth *= 1 + rate;
    }
    return sum;
}

Value NetPresentValue(Call& call)
{
    const double rate = call.Number(0);
    if (rate == -1)
        return CellError::DivisionByZero;
    return NumberOrError(NetPresent(rate, call.Numbers(1)) / (1 + rate));
}

Value InternalRate(Call& call)
{
    const auto flows = call.Numbers(0, 1);
    if (!call.context.Spend(flows.size() * 300))
        return {};
    return RootOrError(FindRoot(
        call, [&](double rate) { return NetPresent(rate, flows); }, call.Number(1, 0.1)));
}

Value ModifiedInternalRate(Call& call)
{
    const double finance = call.Number(1);
    const double reinvest = call.Number(2);
    double gains = 0;
    double losses = 0;
    const auto flows = call.Numbers(0, 1);
    const auto count = static_cast<double>(flows.size());
    double period = 0;
    for (const double flow : flows) {
        if (flow > 0)
            gains += flow * std::pow(1 + reinvest, count - 1 - period);
        else
            losses += flow / std::pow(1 + finance, period);
        ++period;
    }
    if (losses == 0 || count < 2)
        return CellError::DivisionByZero;
    return NumberOrError(std::pow(-gains / losses, 1 / (count - 1)) - 1);
}

Value StraightLine(Call& call)
{
    const double life = call.Number(2);
    return life == 0 ? Value(CellError::DivisionByZero)
                     : NumberOrError((call.Number(0) - call.Number(1)) / life);
}

Value SumOfYears(Call& call)
{
    const double life = call.Number(2);
    const double period = call.Number(3);
    if (life <= 0 || period < 1 || period > life)
        return CellError::Number;
    return NumberOrError((call.Number(0) - call.Number(1)) * (life - period + 1) * 2 /
                         (life * (life + 1)));
}

Value Effective(Call& call, bool isNominal)
{
    const double rate = call.Number(0);
    const double periods = call.Whole(1);
    if (rate <= 0 || periods < 1)
        return CellError::Number;
    return NumberOrError(isNominal ? periods * (std::pow(1 + rate, 1 / periods) - 1)
                                   : std::pow(1 + rate / periods, periods) - 1);
}

} // namespace

const FunctionList& FinancialFunctions()
{
    static const FunctionList kFunctions = {
        {"PMT", "vvv|vv", Payment},
        {"FV", "vvv|vv", FutureValue},
        {"PV", "vvv|vv", PresentValue},
        {"NPER", "vvv|vv", Periods},
        {"RATE", "vvv|vvv", Rate},
        {"IPMT", "vvvv|vv", [](Call& call) { return Interest(call, false); }},
        {"PPMT", "vvvv|vv", [](Call& call) { return Interest(call, true); }},
        {"NPV", "vr", NetPresentValue, 1},
        {"IRR", "r|v", InternalRate},
        {"MIRR", "rvv", ModifiedInternalRate},
        {"SLN", "vvv", StraightLine},
        {"SYD", "vvvv", SumOfYears},
        {"EFFECT", "vv", [](Call& call) { return Effective(call, false); }},
        {"NOMINAL", "vv", [](Call& call) { return Effective(call, true); }},
    };
    return kFunctions;
}

} // namespace orrery::formula
