#pragma once

#include <cstddef>
#include <string>

namespace orrery::look {

/// A number that is not negative, in decimal digits: 0.`digits` times ten to the power of `point`.
struct Decimal {
    std::string digits; ///< neither the first nor the last is 0; empty for zero
    int point = 0;      ///< how many digits stand before the point; may be negative

    bool IsZero() const { return digits.empty(); }
    /// Multiplies by ten to the power of `places`.
    void Shift(int places);
    /// Rounds half up to so many digits behind the point (before it, if negative).
    void Round(int places);
    /// The digits before the point, without leading zeros: "" for 0.5.
    std::string Whole() const;
    /// The digit at `place` behind the point, from 0.
    char FractionDigit(int place) const;
};

/// Excel keeps 15 significant digits of a finite number; its sign is dropped.
Decimal ToDecimal(double number);

} // namespace orrery::look
