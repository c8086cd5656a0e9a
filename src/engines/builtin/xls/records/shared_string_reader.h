#pragma once

#include "engines/builtin/xls/records/records.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// From a character on, a text of the table has another font. [MS-XLS] 2.5.129
struct FormatRun {
    std::uint16_t begin = 0; ///< UTF-16 units before it
    std::uint16_t font = 0;  ///< as other records count fonts
};

/// A string of the table and where it is in the records.
struct SharedString {
    std::size_t recordBegin = 0; ///< offset of the header of the record in which it begins
    std::size_t begin = 0;       ///< offset of the string in the records
    bool plain = true;           ///< no formatting runs, no phonetic data
    std::u16string text;
    std::vector<FormatRun> runs;
};

/// Reads the strings of an SST record and its CONTINUE records. The characters of a string may
/// continue in the next record, which then begins with their flags; the data after the characters
/// may be split anywhere. [MS-XLS] 2.5.293
class SharedStringReader {
public:
    /// Throws Error(DamagedWorkbook) if the records are not such a table.
    explicit SharedStringReader(std::string_view records);

    std::uint32_t References() const { return references_; }
    /// The number of strings according to the record; not reliable enough to reserve memory.
    std::uint32_t Count() const { return count_; }

    /// Reads the next string into `string`. False, with `string` unchanged, at the end: when the
    /// records end, or when the count is reached and what follows is not made of whole strings.
    /// Throws Error(DamagedWorkbook) if the records end within a string that is counted.
    bool Next(SharedString& string);
    /// Offset after the last string that `Next` read (at first, after the counts).
    std::size_t Position() const { return record_.DataBegin() + position_; }

private:
    bool AtEndOfRecord() const { return position_ == record_.data.size(); }
    bool GoToData();
    std::uint32_t UncountedStrings() const;
    void NextRecord();
    std::uint32_t ReadNumber(std::size_t size);
    void ReadText(std::size_t count, std::uint8_t flags, std::u16string& text);
    void ReadRuns(std::size_t count, std::vector<FormatRun>& runs);
    void Skip(std::uint64_t size);

    RecordReader reader_;
    Record record_;
    std::size_t position_ = 0; // in its data
    std::uint32_t references_ = 0;
    std::uint32_t count_ = 0;
    std::uint32_t read_ = 0;
};

} // namespace orrery::xls
