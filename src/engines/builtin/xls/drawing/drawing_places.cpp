#include "engines/builtin/xls/drawing/drawing_places.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/drawing/art_records.h"

#include <unordered_map>
#include <vector>

namespace orrery::xls {
namespace {

// Types of records of office art, [MS-ODRAW] 2.2
constexpr std::uint16_t kDrawingContainer = 0xF002;
constexpr std::uint16_t kDrawingData = 0xF008;
constexpr std::uint16_t kShape = 0xF00A;
constexpr std::uint16_t kProperties = 0xF00B;
constexpr std::uint16_t kConnectorRule = 0xF012;
constexpr std::uint16_t kArcRule = 0xF014;
constexpr std::uint16_t kCalloutRule = 0xF017;
constexpr std::uint16_t kSelection = 0xF119;
constexpr std::uint16_t kFormerPlace = 0xF11D; // of a shape that was deleted
constexpr std::uint16_t kMoreProperties = 0xF121;
constexpr std::uint16_t kYetMoreProperties = 0xF122;

// Properties that hold the id of a shape, [MS-ODRAW] 2.3.6.12, 2.3.2.1
constexpr unsigned kNextShape = 0x008A;
constexpr unsigned kMasterShape = 0x0301;

// Parts of a property's key, [MS-ODRAW] 2.2.8
constexpr unsigned kPropertyId = 0x3FFF;
constexpr unsigned kIsPicture = 0x4000;
constexpr unsigned kIsComplex = 0x8000;
constexpr std::size_t kPropertySize = 6;

constexpr std::size_t kIdSize = 4;

ArtNumber NumberAt(const ArtStream& art, std::size_t at)
{
    ArtNumber number;
    for (std::size_t i = 0; i < number.at.size(); ++i)
        number.at[i] = static_cast<std::uint32_t>(art.Place(at + i));
    number.value = art.U32(at);
    return number;
}

/// Adds the numbers that refer to a shape of the drawing.
void AddReferences(Drawing& drawing, const std::vector<ArtNumber>& numbers)
{
    if (numbers.empty())
        return;
    std::unordered_map<std::uint32_t, std::size_t> shapes;
    for (std::size_t i = 0; i < drawing.shapes.size(); ++i)
        shapes.emplace(drawing.shapes[i].value, i);
    for (const auto& number : numbers) {
        const auto shape = shapes.find(number.value);
        if (shape != shapes.end())
            drawing.references.push_back({number, shape->second});
    }
}

/// Reads the drawings in one stream of art.
class ArtDrawings {
public:
    ArtDrawings(const ArtStream& art, DrawingKind kind, std::vector<Drawing>& found)
        : art_(art), kind_(kind), found_(found)
    {
    }

    /// False if the art is inconsistent.
    bool Read()
    {
        ArtReader reader(art_);
        ArtRecord record;
        while (reader.Next(record)) {
            if (!ReadRecord(record))
                return false;
        }
        if (!reader.Complete() || !hasData_)
            return false;
        FinishDrawing();
        return true;
    }

private:
    bool ReadRecord(const ArtRecord& record)
    {
        if (record.depth == 0)
            return ReadContainer(record);
        switch (record.type) {
        case kDrawingData:
            return ReadData(record);
        case kShape:
            return AddNumbers(record, 0, 1, found_.back().shapes);
        case kFormerPlace:
            return AddNumbers(record, 0, 1, names_);
        case kConnectorRule:
            return AddNumbers(record, kIdSize, 3, names_);
        case kArcRule:
        case kCalloutRule:
            return AddNumbers(record, kIdSize, 1, names_);
        case kProperties:
        case kMoreProperties:
        case kYetMoreProperties:
            return ReadProperties(record);
        default:
            return true;
        }
    }

    bool ReadContainer(const ArtRecord& record)
    {
        if (record.type != kDrawingContainer || !hasData_)
            return false;
        FinishDrawing();
        found_.emplace_back().kind = kind_;
        hasData_ = false;
        return true;
    }

    void FinishDrawing()
    {
        if (!names_.empty())
            AddReferences(found_.back(), names_);
        names_.clear();
    }

    bool ReadData(const ArtRecord& record)
    {
        if (hasData_ || record.size < 2 * kIdSize)
            return false;
        auto& drawing = found_.back();
        drawing.header = NumberAt(art_, record.begin);
        drawing.shapeCount = art_.U32(record.Data());
        drawing.lastShape = NumberAt(art_, record.Data() + kIdSize);
        hasData_ = true;
        return true;
    }

    bool AddNumbers(const ArtRecord& record, std::size_t at, std::size_t count,
                    std::vector<ArtNumber>& numbers)
    {
        if (record.size < at + count * kIdSize)
            return false;
        for (std::size_t i = 0; i < count; ++i)
            numbers.push_back(NumberAt(art_, record.Data() + at + i * kIdSize));
        return true;
    }

    bool ReadProperties(const ArtRecord& record)
    {
        if (record.size < record.instance * kPropertySize)
            return false;
        auto& drawing = found_.back();
        for (std::size_t i = 0; i < record.instance; ++i) {
            const std::size_t at = record.Data() + i * kPropertySize;
            const unsigned key = art_.U16(at);
            if ((key & kIsComplex) != 0)
                continue;
            const unsigned id = key & kPropertyId;
            if ((key & kIsPicture) != 0 && art_.U32(at + 2) != 0)
                drawing.pictures.push_back(art_.U32(at + 2));
            else if (id == kNextShape || id == kMasterShape)
                names_.push_back(NumberAt(art_, at + 2));
        }
        return true;
    }

    const ArtStream& art_;
    const DrawingKind kind_;
    std::vector<Drawing>& found_;
    std::vector<ArtNumber> names_; // references to shapes of the last drawing
    bool hasData_ = true;          // of the last drawing, if there is one
};

// Programs need not read it, so its damage does not count as damage of the drawing. [MS-ODRAW]
// 2.2.33
void ReadSelection(const ArtStream& art, std::vector<ArtNumber>& selected)
{
    constexpr std::size_t kFocus = 16; // after header, size and mode
    if (!art.Contains(0, kFocus) || art.U16(2) != kSelection)
        return;
    for (std::size_t at = kFocus; art.Contains(at, kIdSize); at += kIdSize)
        selected.push_back(NumberAt(art, at));
}

} // namespace

void ArtNumber::Put(std::string& sheet, std::uint32_t newValue) const
{
    for (const std::uint32_t place : at) {
        PutU8(sheet, place, static_cast<std::uint8_t>(newValue & 0xFF));
        newValue >>= 8;
    }
}

DrawingPlaces FindDrawings(std::string_view sheet)
{
    ArtRecords records;
    RecordReader reader(sheet);
    while (const auto record = reader.Next())
        records.Add(*record);
    DrawingPlaces places;
    const auto read = [&](const ArtStream& art, DrawingKind kind) {
        if (art.Size() == 0)
            return false;
        const bool understood = ArtDrawings(art, kind, places.drawings).Read();
        places.understood &= understood;
        return understood;
    };
    for (const auto& substream : records.Substreams()) {
        if (!read(substream.drawing, DrawingKind::Sheet))
            continue;
        std::vector<ArtNumber> selected;
        for (const auto& selection : substream.selections)
            ReadSelection(selection, selected);
        AddReferences(places.drawings.back(), selected);
    }
    for (const auto& art : records.HeaderPictures())
        read(art, DrawingKind::HeaderFooter);
    return places;
}

} // namespace orrery::xls
