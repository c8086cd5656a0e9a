#include "engines/builtin/xls/look/drawing/sheet_art.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/drawing/art_records.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/unicode_string.h"

#include <algorithm>

namespace orrery::xls {
namespace {

constexpr std::uint16_t kCommonPart = 0x15; // of OBJ, the first one
constexpr std::uint16_t kOwnControl = 0x0100;
constexpr std::size_t kRunSize = 8;

/// Whether a chart begins there, whose drawings have anchors of their own kind.
bool IsChart(std::string_view stream, std::size_t begin)
{
    constexpr std::uint16_t kChart = 0x0020;
    const RecordReader reader(stream, begin);
    const auto bof = reader.IsWhole() ? reader.Peek() : std::nullopt;
    return bof && bof->type == RecordType::Bof && bof->data.size() >= 4 &&
           ReadU16(bof->data, 2) == kChart;
}

/// Collects from the records of one sheet.
class Collector {
public:
    explicit Collector(SheetArt& found) : found_(found) {}

    void Add(const Record& record)
    {
        art_.Add(record);
        if (record.type == RecordType::Bof)
            BeginSubstream(record);
        else if (record.type == RecordType::Eof)
            EndSubstream(record);
        else if (depth_ == 1)
            AddOfSheet(record);
    }

    void Finish()
    {
        if (art_.Substreams().empty())
            return;
        const ArtStream& drawing = art_.Substreams()[0].drawing;
        found_.art = ArtBytes(drawing, 0, drawing.Size());
    }

private:
    void BeginSubstream(const Record& record)
    {
        text_ = nullptr;
        if (depth_++ == 1 && object_ != nullptr)
            object_->chart = {record.begin, record.End()};
    }

    void EndSubstream(const Record& record)
    {
        if (depth_ > 0)
            --depth_;
        if (depth_ != 1 || object_ == nullptr)
            return;
        object_->chart.end = record.End();
        object_ = nullptr;
    }

    void AddOfSheet(const Record& record)
    {
        if (record.type == RecordType::Continue) {
            if (text_ != nullptr)
                AddToText(record.data);
            return;
        }
        text_ = nullptr;
        if (record.type == RecordType::Obj)
            AddObject(record.data);
        else if (record.type == RecordType::TextObject)
            AddText(record.data);
    }

    std::size_t Place() const { return art_.Substreams()[0].drawing.Size(); }

    void AddObject(std::string_view data)
    {
        constexpr std::size_t kCommonSize = 10;
        if (data.size() < kCommonSize || ReadU16(data, 0) != kCommonPart)
            return;
        SheetObject& object = found_.objects[Place()];
        object = {};
        object.kind = static_cast<ObjectKind>(ReadU16(data, 4));
        object.id = ReadU16(data, 6);
        object.isOwnControl = (ReadU16(data, 8) & kOwnControl) != 0;
        object_ = object.kind == ObjectKind::Chart ? &object : nullptr;
    }

    void AddText(std::string_view data)
    {
        constexpr std::size_t kTextSize = 14;
        if (data.size() < kTextSize)
            return;
        ObjectText& text = found_.texts[Place()];
        text = {ReadU16(data, 0), ReadU16(data, 2), {}, {}};
        textLeft_ = ReadU16(data, 10);
        runsLeft_ = textLeft_ > 0 ? ReadU16(data, 12) : 0U;
        text_ = &text;
    }

    /// The characters, each piece behind their width, then the runs.
    void AddToText(std::string_view data)
    {
        if (textLeft_ > 0) {
            if (data.empty())
                return;
            const std::size_t before = text_->text.size();
            const bool isWide = (ReadU8(data, 0) & kWideCharacters) != 0;
            ReadCharacters(data.substr(1, textLeft_ * (isWide ? 2 : 1)), isWide, text_->text);
            textLeft_ -= text_->text.size() - before;
            return;
        }
        for (std::size_t at = 0; at + kRunSize <= std::min(data.size(), runsLeft_); at += kRunSize)
            text_->runs.push_back({ReadU16(data, at), ReadU16(data, at + 2)});
        runsLeft_ -= std::min(runsLeft_, data.size());
        if (runsLeft_ == 0)
            text_ = nullptr;
    }

    SheetArt& found_;
    ArtRecords art_;
    std::size_t depth_ = 0;
    SheetObject* object_ = nullptr; // the chart whose substream may follow
    ObjectText* text_ = nullptr;    // that continues in the next record
    std::size_t textLeft_ = 0;      // characters
    std::size_t runsLeft_ = 0;      // bytes
};

} // namespace

SheetArt ReadSheetArt(std::string_view stream, std::size_t begin)
{
    SheetArt found;
    Collector collector(found);
    const Substream sheet = ReadSubstream(stream, begin, stream.size());
    if (IsChart(stream, begin))
        return found;
    found.isWhole = sheet.isWhole;
    RecordReader reader(stream.substr(0, sheet.end), begin);
    while (reader.IsWhole()) {
        const auto record = reader.Next();
        if (!record)
            break;
        collector.Add(*record);
    }
    collector.Finish();
    return found;
}

std::string ArtBytes(const ArtStream& art, std::size_t at, std::size_t size)
{
    if (!art.Contains(at, size))
        ThrowTooShort();
    std::string bytes;
    bytes.reserve(size);
    const auto& pieces = art.Pieces();
    auto piece = std::upper_bound(
        pieces.begin(), pieces.end(), at,
        [](std::size_t offset, const ArtStream::Piece& item) { return offset < item.begin; });
    if (piece != pieces.begin())
        --piece;
    for (; bytes.size() < size; ++piece) {
        const std::size_t from = at + bytes.size() - piece->begin;
        bytes += piece->bytes.substr(from, size - bytes.size());
    }
    return bytes;
}

} // namespace orrery::xls
