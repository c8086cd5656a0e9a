#pragma once

#include "util/error_report.h"

#include <string>
#include <vector>

namespace orrery::util {

/// Collects reports.
class ListReporter : public ErrorReporter {
public:
    void Report(const std::string& text) override { texts.push_back(text); }
    std::vector<std::string> texts;
};

} // namespace orrery::util
