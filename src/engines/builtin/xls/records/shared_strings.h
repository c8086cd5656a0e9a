#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

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
    /// Error(DamagedWorkbook) where the old texts cannot be told apart; then nothing is added, now
    /// or by a later call.
    std::size_t IndexOf(std::string_view utf8);
    bool Changed() const { return texts_ && !texts_->added.empty(); }
    /// How many cells refer to the table, as the file says; 0 without a table.
    std::uint32_t References() const;

    /// The table with the new texts. `references` is how many cells refer to it now; `offset` is
    /// where the SST record begins in the stream, because EXTSST names places in it.
    /// Throws Error(DamagedWorkbook).
    SharedStringRecords ToRecords(std::uint32_t references, std::size_t offset) const;

private:
    /// The texts of the workbook and those that were added.
    struct Texts {
        std::size_t count = 0; // in the records
        std::size_t end = 0;   // offset behind the last of them in the records
        std::unordered_map<std::u16string_view, std::size_t> indexes; // plain texts only
        std::deque<std::u16string> plain; // those of `indexes`; they stay where they are
        std::deque<std::u16string> added;
    };
    static Texts ReadTexts(std::string_view records);

    std::string_view records_;
    std::optional<Texts> texts_; // once they were read, to their end
};

/// The EXTSST record for a table that begins at `offset` of the stream.
/// Throws Error(DamagedWorkbook) where the texts cannot be told apart.
std::string ExtSstRecord(std::string_view sstRecords, std::size_t offset);

} // namespace orrery::xls
