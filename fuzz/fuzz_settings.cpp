// A value that is set is found again, every other key keeps its value, and setting it twice changes
// nothing more. The first two lines of the input are the key and the value.

#include "require.h"

#include "util/profile_text.h"
#include "util/text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace orrery;

/// Moves the first line into `line` and returns the text after it.
std::string_view TakeLine(std::string_view text, std::string& line)
{
    const std::size_t end = text.find('\n');
    line = util::Trim(text.substr(0, end));
    return end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
}

/// Whether the text could be a key of the program.
bool IsPlain(std::string_view text)
{
    return !text.empty() && text.find_first_of("=;[]\"'\r\n") == std::string_view::npos;
}

bool IsPlainValue(std::string_view text)
{
    return text.size() <= util::kMaxProfileValue &&
           (text.empty() || text.find_first_of("\"'\r\n") == std::string_view::npos);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using fuzz::Require;
    std::string key;
    std::string value;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string text(TakeLine(TakeLine(bytes, key), value));
    util::FindProfileValue(text, key, value);
    if (!IsPlain(key) || !IsPlainValue(value))
        return 0;
    const auto other = util::FindProfileValue(text, "Part", "Other");
    const std::string changed = util::WithProfileValue(text, "Part", key, value);
    Require(util::FindProfileValue(changed, "part", key) == value);
    if (!util::EqualIgnoringCase(key, "Other"))
        Require(util::FindProfileValue(changed, "Part", "Other") == other);
    Require(util::WithProfileValue(changed, "Part", key, value) == changed);
    return 0;
}
