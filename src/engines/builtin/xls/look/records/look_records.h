#pragma once

#include "engines/builtin/xls/records/records.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// A record and what continues it.
struct LookRecord {
    RecordType type{};
    std::string_view data;
    std::vector<std::string_view> more; ///< the data of its continuations, without their headers

    /// All of it. `joined` holds the bytes if they are in pieces.
    std::string_view Whole(std::string& joined) const;
};

/// Goes through the records of a substream between its BOF and EOF records. Nested substreams
/// (charts) and what belongs to other users' views are passed over.
class LookRecordReader {
public:
    /// `begin` is where its BOF record is.
    LookRecordReader(std::string_view stream, std::size_t begin);

    /// Reads the next record into `record`; false at the end.
    bool Next(LookRecord& record);
    /// After `Next` returned false: whether the substream had an end.
    bool IsWhole() const { return isWhole_; }

private:
    bool Skips(const Record& record);
    void TakeContinuations(LookRecord& record);

    RecordReader records_;
    std::size_t depth_ = 0; // of substreams
    bool isInView_ = false;
    bool isWhole_ = false;
};

/// Reads a text with a count of two bytes at an offset of a record, which may be continued: then
/// each piece begins with the width of its characters. Throws Error(DamagedWorkbook) if it is cut
/// off. [MS-XLS] 2.5.294
std::u16string ReadContinuedText(const LookRecord& record, std::size_t at);

} // namespace orrery::xls
