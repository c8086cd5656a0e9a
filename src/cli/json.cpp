#include "cli/json.h"

#include "util/numbers.h"
#include "util/text.h"

#include <cmath>

namespace orrery::cli {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

/// Length of the UTF-8 character at the start of the text in bytes; 0 if it is invalid.
std::size_t LeadingCharacter(std::string_view text)
{
    constexpr std::size_t longest = 4;
    for (std::size_t length = 1; length <= std::min(longest, text.size()); ++length) {
        if (util::IsValidUtf8(text.substr(0, length)))
            return length;
    }
    return 0;
}

void AppendEscaped(std::string& out, char c)
{
    constexpr std::string_view hex = "0123456789abcdef";
    constexpr unsigned char firstPrintable = 0x20;
    const auto code = static_cast<unsigned char>(c);
    switch (c) {
    case '"':
    case '\\':
        out += {'\\', c};
        return;
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        break;
    }
    if (code < firstPrintable)
        out += {'\\', 'u', '0', '0', hex[code >> 4U], hex[code & 0xFU]};
    else
        out += c;
}

} // namespace

void JsonWriter::Separate()
{
    if (!first_)
        text_ += ',';
    first_ = false;
}

JsonWriter& JsonWriter::BeginObject()
{
    Separate();
    text_ += '{';
    first_ = true;
    return *this;
}

JsonWriter& JsonWriter::EndObject()
{
    text_ += '}';
    first_ = false;
    return *this;
}

JsonWriter& JsonWriter::BeginArray()
{
    Separate();
    text_ += '[';
    first_ = true;
    return *this;
}

JsonWriter& JsonWriter::EndArray()
{
    text_ += ']';
    first_ = false;
    return *this;
}

JsonWriter& JsonWriter::Key(std::string_view name)
{
    Text(name);
    text_ += ':';
    first_ = true;
    return *this;
}

JsonWriter& JsonWriter::Text(std::string_view value)
{
    Separate();
    text_ += '"';
    while (!value.empty()) {
        const std::size_t length = LeadingCharacter(value);
        if (length == 0)
            text_ += kReplacement;
        else if (length == 1)
            AppendEscaped(text_, value.front());
        else
            text_ += value.substr(0, length);
        value.remove_prefix(length == 0 ? 1 : length);
    }
    text_ += '"';
    return *this;
}

JsonWriter& JsonWriter::Texts(const std::vector<std::string>& values)
{
    BeginArray();
    for (const std::string& value : values)
        Text(value);
    return EndArray();
}

JsonWriter& JsonWriter::Number(std::int64_t value)
{
    Separate();
    text_ += std::to_string(value);
    return *this;
}

JsonWriter& JsonWriter::Decimal(double value)
{
    constexpr double kLargest = 1e15; // beyond it there are no decimals
    if (!std::isfinite(value))
        return Null();
    Separate();
    const bool isLarge = std::abs(value) > kLargest;
    const double rounded = isLarge ? value : std::round(value * 1000) / 1000;
    text_ += util::ShortestText(rounded == 0 ? 0.0 : rounded);
    return *this;
}

JsonWriter& JsonWriter::Null()
{
    Separate();
    text_ += "null";
    return *this;
}

JsonWriter& JsonWriter::Boolean(bool value)
{
    Separate();
    text_ += value ? "true" : "false";
    return *this;
}

} // namespace orrery::cli
