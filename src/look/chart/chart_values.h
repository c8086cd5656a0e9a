#pragma once

#include "book/look/chart.h"

#include <functional>
#include <string>
#include <vector>

namespace orrery::look {

/// What a chart shows: the values of its cells, and numbers as text.
class ChartValues {
public:
    virtual ~ChartValues() = default;
    /// The values in their order; nothing stands for an empty cell.
    virtual std::vector<book::CellContent> Values(const book::ChartData& data) const = 0;
    /// A number as a format code shows it.
    virtual std::string Format(double number, const std::string& format) const = 0;
};

/// The values that the file last knew.
class CachedChartValues : public ChartValues {
public:
    using Formatter = std::function<std::string(double number, const std::string& format)>;

    /// Without a formatter, numbers are shown as in the format "General".
    explicit CachedChartValues(Formatter formatter = nullptr) : formatter_(std::move(formatter)) {}
    std::vector<book::CellContent> Values(const book::ChartData& data) const override;
    std::string Format(double number, const std::string& format) const override;

private:
    Formatter formatter_;
};

/// At most ten digits, without an exponent where that is possible: "0.1", "1200", "-3.5".
std::string ShortNumber(double number);

} // namespace orrery::look
