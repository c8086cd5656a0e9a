#include "holidays/key_line.h"

#include "holidays/tokenizer.h"
#include "util/text.h"

namespace orrery::holidays {

std::optional<KeyLine> ReadKeyLine(std::string_view line)
{
    std::int32_t pos = 1;
    const std::string key = GetToken(line, pos, true);
    if (GetToken(line, pos, true) != "=")
        return std::nullopt;
    const std::string_view value = util::Trim(line.substr(static_cast<std::size_t>(pos - 1)));
    if (value.empty())
        return std::nullopt;
    return KeyLine{util::ToUpperAscii(key), value};
}

bool IsHolidayKey(std::string_view key)
{
    return key.starts_with("HOLIDAY");
}

} // namespace orrery::holidays
