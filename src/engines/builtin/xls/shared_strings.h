#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orrery::xls {

/// Records for the globals; the second follows the first. Empty where there is no table.
struct SharedStringRecords {
    std::string sst;    ///< SST with its CONTINUE records
    std::string extSst; ///< EXTSST
};

/// The workbook's table of texts. New texts are added behind the old ones, whose bytes stay as
/// they are; a text that is there already as plain text is used again. [MS-XLS] 2.4.265, 2.4.107
class SharedStrings {
public:
    /// `records` is the SST record with its CONTINUE records as they lie in the stream; empty where
    /// the workbook has none. The bytes stay the caller's and outlive this. Nothing is read yet.
    explicit SharedStrings(std::string_view records) : records_(records) {}

    /// The index of a plain text (no runs of formats, no reading aids), added where it is new.
    /// `utf8` is UTF-8. Throws Error(TextTooLong) beyond 32,767 UTF-16 units, and
    /// Error(DamagedWorkbook) where the old texts cannot be told apart.
    std::size_t IndexOf(std::string_view utf8);
    bool Changed() const { return !added_.empty(); }
    /// How many cells refer to the table, as the file says; 0 without a table.
    std::uint32_t References() const;

    /// The table with the new texts. `references` is how many cells refer to it now; `offset` is
    /// where the SST record begins in the stream, because EXTSST names places in it.
    /// Throws Error(DamagedWorkbook).
    SharedStringRecords ToRecords(std::uint32_t references, std::size_t offset) const;

private:
    void ReadTexts();

    std::string_view records_;
    bool read_ = false;
    std::size_t count_ = 0; // texts in the records
    std::size_t end_ = 0;   // offset behind the last of them in the records
    std::unordered_map<std::u16string_view, std::size_t> indexes_; // plain texts only
    std::deque<std::u16string> texts_; // those of `indexes_`; they stay where they are
    std::vector<std::u16string_view> added_;
};

/// The EXTSST record for a table that begins at `offset` of the stream.
/// Throws Error(DamagedWorkbook) where the texts cannot be told apart.
std::string ExtSstRecord(std::string_view sstRecords, std::size_t offset);

} // namespace orrery::xls
