// The position only moves forward, and the tokens of a line come to an end.

#include "require.h"

#include "holidays/key_line.h"
#include "holidays/tokenizer.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

void TakeAll(std::string_view line, bool keepQuotes)
{
    using orrery::fuzz::Require;
    const auto end = static_cast<std::int32_t>(line.size()) + 1;
    std::int32_t pos = 1;
    while (pos < end) {
        const std::int32_t before = pos;
        const std::string token = orrery::holidays::GetToken(line, pos, keepQuotes);
        Require(pos > before && pos <= end);
        Require(token.size() <= static_cast<std::size_t>(pos - before));
        // With its quotes a token is a piece of the line.
        Require(!keepQuotes || line.substr(0, static_cast<std::size_t>(pos - 1)).ends_with(token));
        Require(!keepQuotes || !token.empty() || pos == end);
    }
    Require(orrery::holidays::GetToken(line, pos, keepQuotes).empty() && pos == end);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view line(reinterpret_cast<const char*>(data), size);
    TakeAll(line, true);
    TakeAll(line, false);
    if (const auto entry = orrery::holidays::ReadKeyLine(line))
        orrery::fuzz::Require(!entry->key.empty() && !entry->value.empty());
    return 0;
}
