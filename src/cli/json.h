#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::cli {

/// Writes a JSON text, value by value. Inside an object each value follows its `Key`.
class JsonWriter {
public:
    JsonWriter& BeginObject();
    JsonWriter& EndObject();
    JsonWriter& BeginArray();
    JsonWriter& EndArray();
    JsonWriter& Key(std::string_view name);
    /// Writes a string; invalid UTF-8 becomes U+FFFD.
    JsonWriter& Text(std::string_view value);
    JsonWriter& Texts(const std::vector<std::string>& values);
    JsonWriter& Number(std::int64_t value);
    /// Writes a number with at most three decimals; one that is not finite becomes null.
    JsonWriter& Decimal(double value);
    JsonWriter& Boolean(bool value);
    JsonWriter& Null();

    const std::string& Result() const { return text_; }

private:
    void Separate();

    std::string text_;
    bool first_ = true; ///< the next value needs no comma
};

} // namespace orrery::cli
