#include "engines/builtin/xls/drawing/drawing_group.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/drawing/group_records.h"
#include "util/error.h"

#include <algorithm>

namespace orrery::xls {
namespace {

// Types of records of office art, [MS-ODRAW] 2.2
constexpr std::uint16_t kGroupContainer = 0xF000;
constexpr std::uint16_t kIdTable = 0xF006;
constexpr std::uint16_t kPicture = 0xF007;
constexpr std::uint16_t kFirstBarePicture = 0xF018;
constexpr std::uint16_t kLastBarePicture = 0xF117;

constexpr std::size_t kTableHead = 16;    // bytes before the clusters, [MS-ODRAW] 2.2.47
constexpr std::size_t kClusterSize = 8;   // [MS-ODRAW] 2.2.46
constexpr std::size_t kPictureCount = 24; // offset of cRef, [MS-ODRAW] 2.2.32
constexpr std::size_t kArtSize = 4;       // offset of the size in a record's header

constexpr std::uint32_t kIdsInCluster = 0x400;
constexpr std::uint32_t kLastDrawingId = 0xFFE;  // [MS-ODRAW] 2.2.49
constexpr std::uint32_t kShapeIdEnd = 0x3FFD7FF; // [MS-ODRAW] 2.2.47

[[noreturn]] void ThrowNotCopied(const char* cause)
{
    throw util::Error(book::ErrorKind::SheetNotCopied, {}, cause);
}

/// The index of a picture counts all pictures in the store, also those without a count of uses.
bool IsPicture(std::uint16_t type)
{
    return type == kPicture || (type >= kFirstBarePicture && type <= kLastBarePicture);
}

} // namespace

void PutDrawingIds(std::string& sheet, const DrawingPlaces& places,
                   const std::vector<FreshDrawingIds>& ids)
{
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (ids[i].drawing == 0)
            continue;
        const auto& drawing = places.drawings[i];
        const auto idOf = [&](std::size_t shape) {
            return ids[i].clusters[shape / kIdsInCluster] * kIdsInCluster +
                   static_cast<std::uint32_t>(shape % kIdsInCluster);
        };
        drawing.header.Put(sheet, (drawing.header.value & 0xFFFF000FU) | ids[i].drawing << 4);
        if (!drawing.shapes.empty())
            drawing.lastShape.Put(sheet, idOf(drawing.shapes.size() - 1));
        for (std::size_t shape = 0; shape < drawing.shapes.size(); ++shape)
            drawing.shapes[shape].Put(sheet, idOf(shape));
        for (const auto& reference : drawing.references)
            reference.id.Put(sheet, idOf(reference.shape));
    }
}

DrawingGroup::DrawingGroup(DrawingKind kind, std::string_view records)
    : kind_(kind), records_(records), art_(GroupArt(kind, records))
{
    Read();
}

// Damage after the table does not matter: those bytes are kept, and only the uses of their pictures
// are not counted.
void DrawingGroup::Read()
{
    ArtReader reader(art_);
    ArtRecord record;
    while (reader.Next(record)) {
        if (record.depth == 0 && (record.type != kGroupContainer || container_.size != 0))
            break;
        if (record.depth == 0)
            container_ = record;
        else if (record.type == kIdTable && record.depth == 1 && table_.size == 0)
            ReadTable(record);
        else if (record.depth == 2 && IsPicture(record.type))
            pictures_.push_back(record.type == kPicture && record.size >= kPictureCount + 4
                                    ? record.Data() + kPictureCount
                                    : 0);
    }
    understood_ = art_.Size() == 0 || table_.size != 0;
}

void DrawingGroup::ReadTable(const ArtRecord& record)
{
    if (record.size < kTableHead)
        return;
    table_ = record;
    highestShape_ = art_.U32(record.Data());
    shapeCount_ = art_.U32(record.Data() + 8);
    drawingCount_ = art_.U32(record.Data() + 12);
    for (std::size_t at = record.Data() + kTableHead; at + kClusterSize <= record.End();
         at += kClusterSize) {
        clusters_.push_back({art_.U32(at), art_.U32(at + 4)});
        drawingIds_.insert(clusters_.back().drawing);
    }
}

void DrawingGroup::Reserve(const DrawingPlaces& places)
{
    for (const auto& drawing : places.drawings) {
        if (drawing.kind != kind_)
            continue;
        drawingIds_.insert(drawing.Id());
        for (const auto& shape : drawing.shapes) {
            auto& cluster = reserved_[shape.value / kIdsInCluster];
            cluster.drawing = drawing.Id();
            cluster.next = std::max(cluster.next, shape.value % kIdsInCluster + 1);
        }
    }
}

std::vector<FreshDrawingIds> DrawingGroup::AddCopy(const DrawingPlaces& places)
{
    if (!places.understood)
        ThrowNotCopied("its drawing is damaged");
    std::vector<FreshDrawingIds> ids(places.drawings.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (places.drawings[i].kind == kind_)
            ids[i] = AddDrawing(places.drawings[i]);
    }
    return ids;
}

FreshDrawingIds DrawingGroup::AddDrawing(const Drawing& drawing)
{
    if (!understood_)
        ThrowNotCopied("the list of the workbook's drawings is damaged");
    FreshDrawingIds ids;
    ids.drawing = AddDrawingId();
    for (std::size_t left = drawing.shapes.size(); left > 0;) {
        const auto shapes = std::min<std::size_t>(left, kIdsInCluster);
        ids.clusters.push_back(AddCluster({ids.drawing, static_cast<std::uint32_t>(shapes)}));
        left -= shapes;
    }
    CountPictures(drawing);
    ++drawingCount_;
    shapeCount_ += drawing.shapeCount;
    changed_ = art_.Size() != 0;
    return ids;
}

std::uint32_t DrawingGroup::AddDrawingId()
{
    while (drawingIds_.count(nextDrawingId_) != 0)
        ++nextDrawingId_;
    if (nextDrawingId_ > kLastDrawingId)
        ThrowNotCopied("the workbook holds as many drawings as its format allows");
    drawingIds_.insert(nextDrawingId_);
    return nextDrawingId_;
}

// Programs number shapes by the table, but not all of them write it: clusters that are used but not
// in the table are added on the way, so that it has no gaps.
std::uint32_t DrawingGroup::AddCluster(Cluster cluster)
{
    const auto number = [this] { return static_cast<std::uint32_t>(clusters_.size() + 1); };
    for (auto used = reserved_.find(number()); used != reserved_.end();
         used = reserved_.find(number()))
        clusters_.push_back(used->second);
    const std::uint32_t added = number();
    if (added >= kShapeIdEnd / kIdsInCluster - 1)
        ThrowNotCopied("the workbook holds as many shapes as its format allows");
    clusters_.push_back(cluster);
    highestShape_ = std::max(highestShape_, (added + 1) * kIdsInCluster + 1);
    return added;
}

void DrawingGroup::CountPictures(const Drawing& drawing)
{
    for (const std::uint32_t picture : drawing.pictures) {
        if (picture <= pictures_.size() && pictures_[picture - 1] != 0)
            ++addedUses_[picture];
    }
}

std::size_t DrawingGroup::TableSize() const
{
    return kTableHead + clusters_.size() * kClusterSize;
}

/// The art up to the end of the table of ids, which is longer now.
std::string DrawingGroup::Beginning() const
{
    std::string bytes;
    for (const auto& piece : art_.Pieces()) {
        if (piece.begin < table_.End())
            bytes += piece.bytes.substr(0, table_.End() - piece.begin);
    }
    const auto grow = [&](const ArtRecord& record) {
        PutU32(bytes, record.begin + kArtSize,
               static_cast<std::uint32_t>(record.size - table_.size + TableSize()));
    };
    grow(container_);
    grow(table_);
    bytes.resize(table_.Data());
    AppendU32(bytes, highestShape_);
    AppendU32(bytes, static_cast<std::uint32_t>(clusters_.size() + 1));
    AppendU32(bytes, shapeCount_);
    AppendU32(bytes, drawingCount_);
    for (const auto& cluster : clusters_) {
        AppendU32(bytes, cluster.drawing);
        AppendU32(bytes, cluster.next);
    }
    return bytes;
}

void DrawingGroup::AppendTo(std::string& stream) const
{
    if (!changed_) {
        stream += records_;
        return;
    }
    stream.reserve(stream.size() + records_.size() + TableSize());
    GroupWriter writer(kind_, records_, stream);
    writer.Append(Beginning());
    for (const auto& piece : art_.Pieces()) {
        const std::size_t skip = table_.End() > piece.begin
                                     ? std::min(table_.End() - piece.begin, piece.bytes.size())
                                     : 0;
        writer.Append(piece.bytes.substr(skip));
    }
    for (const auto& [picture, uses] : addedUses_) {
        const std::size_t at = pictures_[picture - 1];
        writer.Put(at < table_.begin ? at : at - table_.size + TableSize(), art_.U32(at) + uses);
    }
}

} // namespace orrery::xls
