#include "xls/decoded_sheet.h"

#include <algorithm>
#include <iomanip>
#include <optional>

namespace orrery::xls::test {

namespace {

std::uint32_t Little(std::string_view bytes, std::size_t at, std::size_t size)
{
    std::uint32_t value = 0;
    for (std::size_t i = size; i > 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes.at(at + i - 1));
    return value;
}

int Short(std::string_view bytes, std::size_t at)
{
    return static_cast<int>(Little(bytes, at, 2));
}

struct Piece {
    std::uint16_t type;
    std::size_t begin;
    std::string_view data;
};

class Reader {
public:
    Reader(std::string_view sheet, std::size_t offset) : sheet_(sheet), offset_(offset) {}

    DecodedSheet Read()
    {
        int depth = 0;
        for (std::size_t at = 0; at < sheet_.size();) {
            const auto size = Little(sheet_, at + 2, 2);
            const Piece piece{static_cast<std::uint16_t>(Short(sheet_, at)), at,
                              sheet_.substr(at + 4, size)};
            depth += piece.type == 0x0809 ? 1 : 0;
            if (depth > 1 || !ReadCell(piece))
                ReadOther(piece, sheet_.substr(at, size + 4));
            depth -= piece.type == 0x000A ? 1 : 0;
            at += size + 4;
        }
        CheckShared();
        CheckIndex();
        CheckExtents();
        return std::move(seen_);
    }

private:
    void Fault(const std::string& what, DecodedSheet::Address cell)
    {
        seen_.faults.push_back(what + " at " + std::to_string(cell.first) + ", " +
                               std::to_string(cell.second));
    }

    bool ReadCell(const Piece& piece)
    {
        switch (piece.type) {
        case 0x0208:
            AddRow(piece);
            return true;
        case 0x00D7:
            EndBlock(piece);
            return true;
        case 0x00BD:
            AddSeveral(piece, 0x027E, 6);
            return true;
        case 0x00BE:
            AddSeveral(piece, 0x0201, 2);
            return true;
        case 0x00FD:
            ++seen_.stringReferences;
            [[fallthrough]];
        case 0x0201:
        case 0x0203:
        case 0x0204:
        case 0x0205:
        case 0x027E:
        case 0x00D6:
        case 0x0006:
            Add({Short(piece.data, 0), Short(piece.data, 2)}, piece.type, piece.data.substr(4),
                piece.begin);
            return true;
        default:
            return ReadFollower(piece);
        }
    }

    void Add(DecodedSheet::Address address, std::uint16_t type, std::string_view data,
             std::size_t begin)
    {
        DecodedCell cell{type, static_cast<std::uint16_t>(Short(data, 0)),
                         std::string(data.substr(2)), "", ""};
        if (type == 0x0006) {
            cell.value = data.substr(2, 8);
            cell.flags = data.substr(10, 2);
            cell.expression = data.substr(16);
        }
        if (last_ && address <= *last_ && begin != lastBegin_)
            Fault("order", address);
        if (!blockRows_.empty() &&
            std::find(blockRows_.begin(), blockRows_.end(), address.first) == blockRows_.end())
            Fault("not in its block", address);
        if (!firstCells_.contains(address.first))
            firstCells_[address.first] = begin;
        last_ = address;
        lastBegin_ = begin;
        seen_.cells[address] = cell;
    }

    void AddSeveral(const Piece& piece, std::uint16_t type, std::size_t size)
    {
        const int first = Short(piece.data, 2);
        int column = first;
        for (std::size_t at = 4; at + 2 < piece.data.size(); at += size)
            Add({Short(piece.data, 0), column++}, type, piece.data.substr(at, size), piece.begin);
        if (column - first < 2 || column - 1 != Short(piece.data, piece.data.size() - 2))
            Fault("cells in one record", {Short(piece.data, 0), first});
    }

    bool ReadFollower(const Piece& piece)
    {
        switch (piece.type) {
        case 0x0207: // STRING
            seen_.cells.at(*last_).value += piece.data;
            return true;
        case 0x04BC: // SHRFMLA
            shared_[*last_] = piece.data;
            return true;
        case 0x0221: // ARRAY
        case 0x0236: // TABLE
            seen_.cells.at(*last_).expression += piece.data;
            return true;
        default:
            return false;
        }
    }

    void AddRow(const Piece& piece)
    {
        const int row = Short(piece.data, 0);
        if (!seen_.rows.empty() && seen_.rows.rbegin()->first >= row)
            Fault("order of rows", {row, -1});
        if (blockRows_.empty())
            block_ = piece.begin;
        blockRows_.push_back(row);
        seen_.rows[row] = piece.data;
    }

    void EndBlock(const Piece& piece)
    {
        blocks_.push_back(piece.begin + offset_);
        std::string expected;
        const auto append = [&](std::size_t value, std::size_t size) {
            for (std::size_t i = 0; i < size; ++i)
                expected += static_cast<char>(value >> (8 * i) & 0xFF);
        };
        append(blockRows_.empty() ? 0 : piece.begin - block_, 4);
        std::size_t from = block_ + 20;
        for (const auto& [row, begin] : firstCells_) {
            append(begin - from, 2);
            from = begin;
        }
        if (piece.data != expected)
            Fault("DBCELL", {blockRows_.empty() ? -1 : blockRows_.front(), -1});
        if (blockRows_.size() > 32 ||
            (!blockRows_.empty() &&
             (blockRows_.front() - FirstRow()) / 32 != (blockRows_.back() - FirstRow()) / 32))
            Fault("block", {blockRows_.front(), -1});
        blockRows_.clear();
        firstCells_.clear();
    }

    int FirstRow() const { return seen_.rows.begin()->first; }

    void ReadOther(const Piece& piece, std::string_view whole)
    {
        if (piece.type == 0x020B)
            index_ = piece.data;
        else if (piece.type == 0x0200)
            seen_.dimensions = piece.data;
        else
            seen_.others.emplace_back(whole);
        if (piece.type == 0x0055)
            width_ = piece.begin + offset_;
    }

    void CheckShared()
    {
        for (auto& [address, cell] : seen_.cells) {
            const std::string rgce = cell.expression;
            if (cell.type != 0x0006 || rgce.size() < 7 || rgce[2] != '\x01') // PtgExp
                continue;
            const DecodedSheet::Address named{Short(rgce, 3), Short(rgce, 5)};
            const auto found = shared_.find(named);
            if (found == shared_.end())
                continue; // an array formula's
            const std::string_view data = found->second;
            if (address.first < Short(data, 0) || address.first > Short(data, 2) ||
                address.second < static_cast<int>(Little(data, 4, 1)) ||
                address.second > static_cast<int>(Little(data, 5, 1)))
                Fault("outside the range of its shared formula", address);
            cell.expression = "shared" + std::string(data.substr(8));
        }
        for (const auto& [address, data] : shared_)
            if (seen_.cells.at(address).type != 0x0006)
                Fault("shared formula behind no formula", address);
    }

    void CheckIndex()
    {
        if (!index_)
            return;
        std::vector<std::size_t> blocks;
        for (std::size_t at = 16; at < index_->size(); at += 4)
            blocks.push_back(Little(*index_, at, 4));
        if (blocks != blocks_)
            Fault("INDEX", {-1, -1});
        if (Little(*index_, 12, 4) != width_)
            Fault("INDEX, column width", {-1, -1});
        if (!seen_.rows.empty() &&
            (static_cast<int>(Little(*index_, 4, 4)) > FirstRow() ||
             static_cast<int>(Little(*index_, 8, 4)) != seen_.rows.rbegin()->first + 1))
            Fault("INDEX, rows", {-1, -1});
    }

    void CheckExtents()
    {
        for (const auto& [address, cell] : seen_.cells) {
            const auto row = seen_.rows.find(address.first);
            if (row == seen_.rows.end())
                Fault("no ROW", address);
            else if (Short(row->second, 2) > address.second ||
                     Short(row->second, 4) <= address.second)
                Fault("outside the row", address);
            if (seen_.dimensions.size() < 14 ||
                static_cast<int>(Little(seen_.dimensions, 0, 4)) > address.first ||
                static_cast<int>(Little(seen_.dimensions, 4, 4)) <= address.first ||
                Short(seen_.dimensions, 8) > address.second ||
                Short(seen_.dimensions, 10) <= address.second)
                Fault("outside the dimensions", address);
        }
    }

    std::string_view sheet_;
    std::size_t offset_;
    DecodedSheet seen_;
    std::optional<DecodedSheet::Address> last_;
    std::size_t lastBegin_ = 0;
    std::size_t block_ = 0;
    std::vector<int> blockRows_;
    std::map<int, std::size_t> firstCells_; // by row
    std::vector<std::size_t> blocks_;
    std::optional<std::string> index_;
    std::size_t width_ = 0;
    std::map<DecodedSheet::Address, std::string> shared_;
};

} // namespace

void PrintTo(const DecodedCell& cell, std::ostream* out)
{
    *out << "type " << cell.type << " format " << cell.format;
    for (const std::string& bytes : {cell.value, cell.flags, cell.expression}) {
        *out << " |" << std::hex << std::setfill('0');
        for (const char byte : bytes)
            *out << ' ' << std::setw(2) << int{static_cast<unsigned char>(byte)};
        *out << std::dec;
    }
}

DecodedSheet DecodeSheet(std::string_view sheet, std::size_t offset)
{
    return Reader(sheet, offset).Read();
}

} // namespace orrery::xls::test
