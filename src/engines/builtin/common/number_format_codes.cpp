#include "engines/builtin/common/number_format_codes.h"

#include "util/fixed_text.h"

#include <array>

namespace orrery::builtin {
namespace {

using Code = util::FixedText<63>;

constexpr Code kDate = "m/d/yyyy";
constexpr Code kTime = "h:mm:ss";
constexpr Code kDateTime = "m/d/yyyy h:mm";

/// Empty where there is none.
constexpr std::array<Code, 82> kCodes = {
    "General",
    "0",
    "0.00",
    "#,##0",
    "#,##0.00",
    R"("$"#,##0_);\("$"#,##0\))",
    R"("$"#,##0_);[Red]\("$"#,##0\))",
    R"("$"#,##0.00_);\("$"#,##0.00\))",
    R"("$"#,##0.00_);[Red]\("$"#,##0.00\))",
    "0%",
    "0.00%",
    "0.00E+00",
    "# ?/?",
    "# ?\?/??",
    kDate,
    "d-mmm-yy",
    "d-mmm",
    "mmm-yy",
    "h:mm AM/PM",
    "h:mm:ss AM/PM",
    "h:mm",
    kTime,
    kDateTime,
    {}, // 23
    {},
    {},
    {},
    kDate, // 27
    kDate,
    kDate,
    kDate,
    kDate,
    kTime, // 32
    kTime,
    kTime,
    kTime,
    kDate, // 36
    "#,##0_);(#,##0)",
    "#,##0_);[Red](#,##0)",
    "#,##0.00_);(#,##0.00)",
    "#,##0.00_);[Red](#,##0.00)",
    R"(_(* #,##0_);_(* \(#,##0\);_(* "-"_);_(@_))",
    R"(_("$"* #,##0_);_("$"* \(#,##0\);_("$"* "-"_);_(@_))",
    R"(_(* #,##0.00_);_(* \(#,##0.00\);_(* "-"??_);_(@_))",
    R"(_("$"* #,##0.00_);_("$"* \(#,##0.00\);_("$"* "-"??_);_(@_))",
    "mm:ss",
    "[h]:mm:ss",
    "mm:ss.0",
    "##0.0E+0",
    "@",
    kDate, // 50
    kDate,
    kDate,
    kDate,
    kDate,
    kDate,
    kDate,
    kDate,
    kDate,
    "0", // 59
    "0.00",
    "#,##0",
    "#,##0.00",
    {}, // 63
    {},
    {},
    {},
    "0%", // 67
    "0.00%",
    "# ?/?",
    "# ?\?/??",
    kDate, // 71
    "d-mmm-yy",
    "d-mmm",
    "mmm-yy",
    "h:mm",
    kTime,
    kDateTime,
    "mm:ss",
    "[h]:mm:ss",
    "mm:ss.0",
    kDate,
};

} // namespace

std::optional<std::string_view> BuiltInNumberFormat(std::size_t id)
{
    if (id >= kCodes.size() || kCodes[id] == "")
        return std::nullopt;
    return kCodes[id];
}

} // namespace orrery::builtin
