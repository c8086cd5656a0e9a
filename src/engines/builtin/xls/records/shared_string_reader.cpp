#include "engines/builtin/xls/records/shared_string_reader.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/error.h"

#include <algorithm>
#include <limits>

namespace orrery::xls {
namespace {

constexpr std::uint8_t kHasReadingAids = 0x04; // "fExtSt"
constexpr std::uint8_t kHasRuns = 0x08;        // "fRichSt"
constexpr std::size_t kCountsSize = 8;

[[noreturn]] void ThrowTableDamaged()
{
    ThrowDamaged("the table of shared texts is cut off");
}

} // namespace

SharedStringReader::SharedStringReader(std::string_view records) : reader_(records)
{
    const auto first = reader_.Next();
    if (!first || first->type != RecordType::Sst || first->data.size() < kCountsSize)
        ThrowTableDamaged();
    record_ = *first;
    references_ = ReadNumber(4);
    count_ = ReadNumber(4);
}

/// Moves to the next record if this one is used up; false if there is none.
bool SharedStringReader::GoToData()
{
    while (AtEndOfRecord()) {
        const auto next = reader_.Peek();
        if (!next || next->type != RecordType::Continue)
            return false;
        record_ = *reader_.Next();
        position_ = 0;
    }
    return true;
}

void SharedStringReader::NextRecord()
{
    position_ = record_.data.size();
    if (!GoToData())
        ThrowTableDamaged();
}

std::uint32_t SharedStringReader::ReadNumber(std::size_t size)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < size; ++i) {
        if (!GoToData())
            ThrowTableDamaged();
        number |= std::uint32_t{ReadU8(record_.data, position_++)} << (8 * i);
    }
    return number;
}

/// How many strings follow this place: those of all the data that is left, or none if that is not
/// made of whole strings. Some writers count none at all, and cells refer to them nevertheless.
std::uint32_t SharedStringReader::UncountedStrings() const
{
    SharedStringReader rest(*this);
    rest.count_ = std::numeric_limits<std::uint32_t>::max();
    try {
        SharedString string;
        while (rest.Next(string)) {
        }
    }
    catch (const util::Error& error) {
        if (error.Kind() != book::ErrorKind::DamagedWorkbook)
            throw;
        return 0;
    }
    return rest.read_ - read_;
}

bool SharedStringReader::Next(SharedString& string)
{
    if (read_ == count_)
        count_ += UncountedStrings();
    if (read_ == count_ || !GoToData())
        return false;
    string.recordBegin = record_.begin;
    string.begin = Position();
    const std::size_t count = ReadNumber(2);
    const auto flags = static_cast<std::uint8_t>(ReadNumber(1));
    const std::size_t runs = (flags & kHasRuns) != 0 ? ReadNumber(2) : 0;
    const std::uint64_t aids = (flags & kHasReadingAids) != 0 ? ReadNumber(4) : 0;
    string.plain = (flags & (kHasRuns | kHasReadingAids)) == 0;
    ReadText(count, flags, string.text);
    ReadRuns(runs, string.runs);
    Skip(aids);
    ++read_;
    return true;
}

void SharedStringReader::ReadText(std::size_t count, std::uint8_t flags, std::u16string& text)
{
    text.clear();
    bool wide = (flags & kWideCharacters) != 0;
    while (true) {
        const std::size_t width = wide ? 2 : 1;
        const std::size_t here =
            std::min(count - text.size(), (record_.data.size() - position_) / width);
        ReadCharacters(record_.data.substr(position_, here * width), wide, text);
        position_ += here * width;
        if (text.size() == count)
            return;
        NextRecord();
        wide = (ReadNumber(1) & kWideCharacters) != 0;
    }
}

void SharedStringReader::ReadRuns(std::size_t count, std::vector<FormatRun>& runs)
{
    runs.clear();
    for (std::size_t i = 0; i < count; ++i) {
        const auto begin = static_cast<std::uint16_t>(ReadNumber(2));
        runs.push_back({begin, static_cast<std::uint16_t>(ReadNumber(2))});
    }
}

void SharedStringReader::Skip(std::uint64_t size)
{
    while (size > 0) {
        if (!GoToData())
            ThrowTableDamaged();
        const std::uint64_t here = std::min<std::uint64_t>(size, record_.data.size() - position_);
        position_ += static_cast<std::size_t>(here);
        size -= here;
    }
}

} // namespace orrery::xls
