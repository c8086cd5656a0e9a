#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::exchange {

/// A field as it stands in the text, without the quotes around it.
struct RawField {
    std::string_view text;
    bool isQuoted = false; ///< two quotes in it stand for one
};

/// A row of a table.
struct RawRow {
    std::size_t line = 0;         ///< its first, counted from 1
    std::vector<RawField> fields; ///< at least one; at most `kMostFields`, the others are dropped
    bool isBroken = false;        ///< a quote is not closed; the row then ends with its line
    bool IsEmpty() const;         ///< nothing but blanks
};

inline constexpr std::size_t kMostFields = 64;
/// No field is separated: each line is one.
inline constexpr char kNoSeparator = '\0';

/// Reads the rows of a table in which fields may be in quotes (RFC 4180). In a line that is not as
/// it should be a quote is a character like others.
class RowReader {
public:
    /// The text must outlive the reader.
    RowReader(std::string_view text, char separator) : text_(text), separator_(separator) {}

    /// False at the end.
    bool Next(RawRow& row);

private:
    bool EndsField(std::size_t at) const;
    RawField ReadField(bool& isBroken);
    /// A field in quotes from the quote at `start` on; false if it is none.
    bool ReadQuoted(std::size_t start, RawField& field, bool& isBroken);

    std::string_view text_;
    char separator_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
};

/// The content of a field, without the blanks around it; of a very long one the beginning.
std::string_view BeginningOf(const RawField& field);
/// Takes the second of two quotes away.
std::string WithSingleQuotes(std::string text);

} // namespace orrery::exchange
