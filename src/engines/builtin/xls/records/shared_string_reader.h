#pragma once

#include "engines/builtin/xls/records/records.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orrery::xls {

/// A text of the table, as it lies in the records.
struct SharedString {
    std::size_t recordBegin = 0; ///< offset of the header of the record in which it begins
    std::size_t begin = 0;       ///< offset of the text in the records
    bool plain = true;           ///< no runs of formats, no reading aids
    std::u16string text;
};

/// Goes through the texts of an SST record and its CONTINUE records. The characters of a text may
/// go on in the next record, which then begins with their flags; what follows the characters may be
/// cut anywhere. [MS-XLS] 2.5.293
class SharedStringReader {
public:
    /// Throws Error(DamagedWorkbook) where the records are no such table.
    explicit SharedStringReader(std::string_view records);

    std::uint32_t References() const { return references_; }
    /// How many texts there are, as the record says: never trusted for memory.
    std::uint32_t Count() const { return count_; }

    /// Reads the next text; `string` is kept as it is and gives false where the texts end: their
    /// count is reached, or the records are. Throws Error(DamagedWorkbook) within a text.
    bool Next(SharedString& string);
    /// Offset behind the text that `Next` gave last (behind the counts before the first).
    std::size_t Position() const { return record_.DataBegin() + position_; }

private:
    bool AtEndOfRecord() const { return position_ == record_.data.size(); }
    bool GoToData();
    void NextRecord();
    std::uint32_t ReadNumber(std::size_t size);
    void ReadText(std::size_t count, std::uint8_t flags, std::u16string& text);
    void Skip(std::uint64_t size);

    RecordReader reader_;
    Record record_;
    std::size_t position_ = 0; // in its data
    std::uint32_t references_ = 0;
    std::uint32_t count_ = 0;
    std::uint32_t read_ = 0;
};

} // namespace orrery::xls
