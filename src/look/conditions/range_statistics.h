#pragma once

#include "book/look/conditional_format.h"
#include "look/evaluate/evaluator.h"
#include "look/evaluate/values/compare.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace orrery::look {

/// What a conditional format needs to know of all cells of its ranges: found out when it is first
/// asked for, once.
class RangeStatistics {
public:
    RangeStatistics(Evaluator& evaluator, std::size_t sheet,
                    const std::vector<book::CellRange>& ranges)
        : evaluator_(&evaluator), sheet_(sheet), ranges_(&ranges)
    {
    }
    /// All numbers, rising.
    const std::vector<double>& Numbers();
    double Mean();
    /// Of a population.
    double Deviation();
    /// For a share of [0:1]; of no numbers 0.
    double Percentile(double share);
    /// How many cells have a value.
    std::size_t CountOf(const Value& value);

private:
    void ReadNumbers();
    void ReadCounts();

    Evaluator* evaluator_;
    std::size_t sheet_;
    const std::vector<book::CellRange>* ranges_;
    bool hasNumbers_ = false;
    bool hasCounts_ = false;
    std::vector<double> numbers_;
    double mean_ = 0;
    double deviation_ = 0;
    formula::KeyMap<std::size_t> counts_;
};

} // namespace orrery::look
