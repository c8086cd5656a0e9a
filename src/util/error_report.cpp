#include "util/error_report.h"

namespace orrery::util {

std::string ErrorReportText(std::string_view text)
{
    return "Error!\r\nError Info: " + std::string(text);
}

} // namespace orrery::util
