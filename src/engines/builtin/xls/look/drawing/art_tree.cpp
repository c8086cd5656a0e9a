#include "engines/builtin/xls/look/drawing/art_tree.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/drawing/art_stream.h"

namespace orrery::xls {
namespace {

// [MS-ODRAW] 2.2
constexpr std::uint16_t kGroupContainer = 0xF003;
constexpr std::uint16_t kShapeContainer = 0xF004;
constexpr std::uint16_t kGroupSpace = 0xF009;
constexpr std::uint16_t kShape = 0xF00A;
constexpr std::uint16_t kProperties = 0xF00B;
constexpr std::uint16_t kTextPlace = 0xF00D;
constexpr std::uint16_t kChildAnchor = 0xF00F;
constexpr std::uint16_t kSheetAnchor = 0xF010;
constexpr std::uint16_t kObjectPlace = 0xF011;
constexpr std::uint16_t kMoreProperties = 0xF121;
constexpr std::uint16_t kYetMoreProperties = 0xF122;

class TreeReader {
public:
    TreeReader(std::string_view art, ArtTree& tree) : art_(art), tree_(tree) {}

    void Read()
    {
        ArtStream stream;
        stream.Append(art_, 0);
        ArtReader reader(stream);
        ArtRecord record;
        while (reader.Next(record))
            if (!ReadRecord(record))
                return;
        tree_.isWhole = reader.Complete();
    }

private:
    struct Group {
        std::size_t end = 0;
        std::optional<std::size_t> shape; // of the group itself, the first one in it
    };

    /// False if no more shapes are read.
    bool ReadRecord(const ArtRecord& record)
    {
        while (!groups_.empty() && record.begin >= groups_.back().end)
            groups_.pop_back();
        if (record.type == kGroupContainer) {
            groups_.push_back({record.End(), std::nullopt});
            tree_.isTooDeep |= groups_.size() > ArtTree::kMaxDepth + 1; // one is the sheet
            shapeEnd_ = 0;
        }
        else if (record.type == kShapeContainer) {
            return AddShape(record);
        }
        else if (record.begin < shapeEnd_ && !IsTooDeep()) {
            ReadPart(tree_.shapes.back(), record);
        }
        return true;
    }

    bool IsTooDeep() const { return groups_.size() > ArtTree::kMaxDepth + 1; }

    bool AddShape(const ArtRecord& record)
    {
        if (IsTooDeep() || groups_.empty())
            return true;
        if (tree_.shapes.size() > ArtTree::kMaxShapes) {
            tree_.hasTooMany = true;
            return false;
        }
        const std::size_t index = tree_.shapes.size();
        tree_.shapes.emplace_back();
        shapeEnd_ = record.End();
        Group& group = groups_.back();
        if (group.shape) {
            tree_.shapes[*group.shape].children.push_back(index);
            return true;
        }
        group.shape = index;
        tree_.shapes[index].isGroup = true;
        if (groups_.size() > 1 && groups_[groups_.size() - 2].shape)
            tree_.shapes[*groups_[groups_.size() - 2].shape].children.push_back(index);
        return true;
    }

    void ReadPart(ArtShape& shape, const ArtRecord& record)
    {
        const std::string_view data = art_.substr(record.Data(), record.size);
        switch (record.type) {
        case kShape:
            shape.type = record.instance;
            shape.flags = data.size() >= 8 ? ReadU32(data, 4) : 0;
            break;
        case kGroupSpace:
            shape.space = ReadBox(data);
            break;
        case kChildAnchor:
            shape.place = ReadBox(data);
            break;
        case kSheetAnchor:
            shape.anchor = ReadAnchor(data);
            shape.size = ReadSize(data);
            break;
        case kProperties:
        case kMoreProperties:
        case kYetMoreProperties:
            shape.properties.Add(data, record.instance);
            break;
        case kObjectPlace:
            shape.objectAt = record.End();
            break;
        case kTextPlace:
            shape.textAt = record.End();
            break;
        default:
            break;
        }
    }

    static std::optional<ArtBox> ReadBox(std::string_view data)
    {
        if (data.size() < 16)
            return std::nullopt;
        const auto side = [&](std::size_t at) {
            return static_cast<std::int32_t>(ReadU32(data, at));
        };
        return ArtBox{side(0), side(4), side(8), side(12)};
    }

    static std::optional<SheetAnchor> ReadAnchor(std::string_view data)
    {
        SheetAnchor anchor;
        if (data.size() < 2 + 2 * anchor.fields.size())
            return std::nullopt;
        for (std::size_t i = 0; i < anchor.fields.size(); ++i)
            anchor.fields[i] = ReadU16(data, 2 + 2 * i);
        return anchor;
    }

    static std::optional<HeaderAnchor> ReadSize(std::string_view data)
    {
        if (data.size() != 8)
            return std::nullopt;
        return HeaderAnchor{static_cast<std::int32_t>(ReadU32(data, 0)),
                            static_cast<std::int32_t>(ReadU32(data, 4))};
    }

    std::string_view art_;
    ArtTree& tree_;
    std::vector<Group> groups_; // the enclosing ones
    std::size_t shapeEnd_ = 0;  // of the container of the last shape
};

} // namespace

ArtTree ReadArtTree(std::string_view art)
{
    ArtTree tree;
    TreeReader(art, tree).Read();
    return tree;
}

} // namespace orrery::xls
