#include "xls/saved_book.h"

#include "engines/builtin/xls/compound/compound_file.h"
#include "util/file_replace.h"
#include "util/unicode.h"

#include <bit>
#include <stdexcept>

namespace orrery::test {
namespace {

std::uint64_t Number(std::string_view bytes, std::size_t at, std::size_t size)
{
    std::uint64_t number = 0;
    for (std::size_t i = size; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
    return number;
}

std::uint16_t Short(std::string_view bytes, std::size_t at)
{
    return static_cast<std::uint16_t>(Number(bytes, at, 2));
}

struct Piece {
    std::uint16_t type;
    std::string_view data;
};

std::vector<Piece> Pieces(std::string_view bytes, std::size_t at, std::size_t end)
{
    std::vector<Piece> pieces;
    while (at < end) {
        const std::size_t size = Short(bytes, at + 2);
        pieces.push_back({Short(bytes, at), bytes.substr(at + 4, size)});
        at += 4 + size;
    }
    return pieces;
}

std::size_t EndOf(std::string_view bytes, std::size_t at)
{
    for (std::size_t depth = 0; at < bytes.size(); at += 4U + Short(bytes, at + 2)) {
        depth += Short(bytes, at) == 0x0809 ? 1U : 0U;
        if (Short(bytes, at) == 0x000A && --depth == 0)
            return at + 4;
    }
    throw std::runtime_error("no end");
}

std::string Characters(std::string_view bytes, std::size_t count, bool wide)
{
    std::u16string units;
    for (std::size_t i = 0; i < count; ++i)
        units += static_cast<char16_t>(wide ? Short(bytes, 2 * i) : Number(bytes, i, 1));
    return util::FromUtf16(units);
}

double RkNumber(std::uint32_t rk)
{
    const double number = (rk & 2) != 0 ? static_cast<double>(static_cast<std::int32_t>(rk) >> 2)
                                        : std::bit_cast<double>(std::uint64_t{rk & ~3U} << 32);
    return (rk & 1) != 0 ? number / 100 : number;
}

/// Reads the strings of a record and its continuations. A string may continue in the next record
/// only within its characters, with a new flag for their width.
class TextReader {
public:
    explicit TextReader(std::vector<std::string_view> records) : records_(std::move(records)) {}

    std::uint64_t Next(std::size_t size)
    {
        SkipEnds();
        place_ += size;
        return Number(records_.at(record_), place_ - size, size);
    }

    std::string Text()
    {
        const auto count = Next(2);
        const auto flags = Next(1);
        auto after = (flags & 8) != 0 ? 4 * Next(2) : 0; // bytes of its formatting runs
        after += (flags & 4) != 0 ? Next(4) : 0;         // and of its phonetic data
        const std::string text = Characters(count, (flags & 1) != 0);
        for (; after > 0; --after)
            Next(1);
        return text;
    }

private:
    bool SkipEnds()
    {
        const auto before = record_;
        while (place_ == records_.at(record_).size())
            ++record_, place_ = 0;
        return record_ != before;
    }

    std::string Characters(std::uint64_t count, bool wide)
    {
        std::u16string units;
        for (; count > 0; --count) {
            if (SkipEnds())
                wide = (Next(1) & 1) != 0;
            units += static_cast<char16_t>(Next(wide ? 2 : 1));
        }
        return util::FromUtf16(units);
    }

    std::vector<std::string_view> records_;
    std::size_t record_ = 0;
    std::size_t place_ = 0;
};

} // namespace

SavedBook::SavedBook(const std::filesystem::path& path)
{
    const xls::CompoundFile file(util::ReadFile(path).value());
    stream_ = file.ReadStream(file.Find("Workbook").value());
    globalsEnd_ = EndOf(stream_, 0);
    for (std::size_t at = 0; at < globalsEnd_; at += 4U + Short(stream_, at + 2)) {
        const auto data = std::string_view(stream_).substr(at + 4, Short(stream_, at + 2));
        if (Short(stream_, at) == 0x00FC)
            ReadTexts(at);
        if (Short(stream_, at) != 0x0085)
            continue;
        const auto begin = static_cast<std::size_t>(Number(data, 0, 4));
        Sheet sheet;
        sheet.name = Characters(data.substr(8), Number(data, 6, 1), Number(data, 7, 1) != 0);
        sheet.bytes = stream_.substr(begin, EndOf(stream_, begin) - begin);
        sheets_.push_back(std::move(sheet));
    }
    for (auto& sheet : sheets_)
        ReadCells(sheet);
}

void SavedBook::ReadTexts(std::size_t at)
{
    std::vector<std::string_view> records;
    do {
        records.push_back(std::string_view(stream_).substr(at + 4, Short(stream_, at + 2)));
        at += 4U + Short(stream_, at + 2);
    } while (Short(stream_, at) == 0x003C);
    TextReader reader(std::move(records));
    reader.Next(4); // the number of uses
    for (auto left = reader.Next(4); left > 0; --left)
        texts_.push_back(reader.Text());
}

void SavedBook::ReadCells(Sheet& sheet) const
{
    for (const auto& [type, data] : Pieces(sheet.bytes, 0, sheet.bytes.size())) {
        if (type != 0x00FD && type != 0x027E && type != 0x0203 && type != 0x00BD)
            continue;
        const std::int32_t row = Short(data, 0) + 1;
        const std::int32_t column = Short(data, 2) + 1;
        auto& cell = sheet.cells[{row, column}];
        cell.format = Short(data, 4);
        if (type == 0x00FD)
            cell.value = texts_.at(Number(data, 6, 4));
        else if (type == 0x027E)
            cell.value = RkNumber(static_cast<std::uint32_t>(Number(data, 6, 4)));
        else if (type == 0x0203)
            cell.value = std::bit_cast<double>(Number(data, 6, 8));
        else
            for (std::int32_t i = 0; column + i <= Short(data, data.size() - 2) + 1; ++i) {
                const auto at = static_cast<std::size_t>(4 + 6 * i);
                sheet.cells[{row, column + i}] = {
                    RkNumber(static_cast<std::uint32_t>(Number(data, at + 2, 4))), Short(data, at)};
            }
    }
}

const SavedBook::Sheet& SavedBook::At(std::string_view name) const
{
    for (const auto& sheet : sheets_) {
        if (sheet.name == name)
            return sheet;
    }
    throw std::runtime_error("no sheet " + std::string(name));
}

std::vector<std::string> SavedBook::Names() const
{
    std::vector<std::string> names;
    for (const auto& sheet : sheets_)
        names.push_back(sheet.name);
    return names;
}

std::vector<std::string> SavedBook::GlobalRecords(std::uint16_t type) const
{
    std::vector<std::string> found;
    for (const auto& piece : Pieces(stream_, 0, globalsEnd_)) {
        if (piece.type == type)
            found.emplace_back(piece.data);
    }
    return found;
}

std::vector<std::string> SavedBook::Records(const Sheet& sheet, std::uint16_t type)
{
    std::vector<std::string> found;
    for (const auto& piece : Pieces(sheet.bytes, 0, sheet.bytes.size())) {
        if (piece.type == type)
            found.emplace_back(piece.data);
    }
    return found;
}

} // namespace orrery::test
