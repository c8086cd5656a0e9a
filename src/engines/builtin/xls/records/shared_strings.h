#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orrery::xls {

/// Records for the globals; the second follows the first. Both are empty if there is no table.
struct SharedStringRecords {
    std::string sst;    ///< SST with its CONTINUE records
    std::string extSst; ///< EXTSST
};

/// The workbook's shared strings. New strings are added after the old ones, whose bytes stay as
/// they are; a plain string that is already there is used again. [MS-XLS] 2.4.265, 2.4.107
class SharedStrings {
public:
    /// `records` is the SST record with its CONTINUE records; empty if the workbook has none. The
    /// bytes belong to the caller and outlive this object. `used` is how many strings the
    /// workbook's cells need: one more than the highest index among them. Nothing is read yet.
    explicit SharedStrings(std::string_view records, std::size_t used = 0)
        : records_(records), used_(used)
    {
    }

    /// The index of a plain string (no formatting runs, no phonetic data), which is added if it is
    /// new. `utf8` is UTF-8. Throws Error(TextTooLong) beyond 32,767 UTF-16 units, and
    /// Error(DamagedWorkbook) if the old strings cannot be read, or are fewer than the cells use,
    /// so that a new one would show in an old cell; then nothing is added, neither now nor by a
    /// later call.
    std::size_t IndexOf(std::string_view utf8);
    bool Changed() const { return texts_ && !texts_->added.empty(); }
    /// How many cells refer to the table according to the file; 0 without a table.
    std::uint32_t References() const;

    /// The table with the new strings. `references` is how many cells refer to it now; `offset` is
    /// where the SST record begins in the stream, because EXTSST contains offsets in it.
    /// Throws Error(DamagedWorkbook).
    SharedStringRecords ToRecords(std::uint32_t references, std::size_t offset) const;

private:
    /// The strings of the workbook and the added ones.
    struct Texts {
        std::size_t count = 0; // in the records
        std::size_t end = 0;   // offset after the last of them in the records
        std::unordered_map<std::u16string_view, std::size_t> indexes; // of plain strings only
        std::deque<std::u16string> plain; // those in `indexes`; a deque, so that they do not move
        std::deque<std::u16string> added;
    };
    static Texts ReadTexts(std::string_view records);
    void CheckUse(const Texts& texts) const;

    std::string_view records_;
    std::size_t used_;
    std::optional<Texts> texts_; // set when all of them could be read
};

/// The EXTSST record for a table that begins at `offset` of the stream.
/// Throws Error(DamagedWorkbook) if the strings cannot be read.
std::string ExtSstRecord(std::string_view sstRecords, std::size_t offset);

} // namespace orrery::xls
