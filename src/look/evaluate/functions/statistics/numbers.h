#pragma once

#include <optional>
#include <vector>

namespace orrery::formula {

// Of numbers in any order; nothing where there are too few, or where there is no such value.

std::optional<double> Mean(const std::vector<double>& numbers);
/// The sum of the squared distances from the mean.
double SquaredDeviations(const std::vector<double>& numbers);
/// Of a sample the sum of squares is divided by one less than the count.
std::optional<double> Variance(const std::vector<double>& numbers, bool isSample);
std::optional<double> Median(std::vector<double> numbers);
/// The most frequent number, the first of several.
std::optional<double> Mode(const std::vector<double>& numbers);
/// The smallest for rank 1.
std::optional<double> AtRank(std::vector<double> numbers, double rank);
/// For a share of [0:1], or of ]0:1[ if exclusive.
std::optional<double> Percentile(std::vector<double> numbers, double share, bool isExclusive);

} // namespace orrery::formula
