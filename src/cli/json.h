#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::cli {

/// Writes one JSON text, value by value. Inside an object each value follows its `Key`.
class JsonWriter {
public:
    JsonWriter& BeginObject();
    JsonWriter& EndObject();
    JsonWriter& BeginArray();
    JsonWriter& EndArray();
    JsonWriter& Key(std::string_view name);
    /// A text; what is not UTF-8 in it becomes U+FFFD.
    JsonWriter& Text(std::string_view value);
    JsonWriter& Texts(const std::vector<std::string>& values);
    JsonWriter& Number(std::int64_t value);
    JsonWriter& Boolean(bool value);

    const std::string& Result() const { return text_; }

private:
    void Separate();

    std::string text_;
    bool first_ = true; ///< nothing stands in the open object or array yet, or a key just did
};

} // namespace orrery::cli
