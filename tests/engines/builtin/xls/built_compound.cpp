#include "xls/built_compound.h"

#include "engines/builtin/xls/compound/bytes.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <utility>

namespace orrery::xls::test {
namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr std::uint32_t kEnd = 0xFFFFFFFE;

struct Entry {
    const Node* node = nullptr; // none for the root
    std::uint32_t left = kNone;
    std::uint32_t right = kNone;
    std::uint32_t child = kNone;
    std::uint32_t start = kEnd;
    std::uint64_t size = 0;
};

class Builder {
public:
    Builder(const std::vector<Node>& members, const Layout& layout) : layout_(layout)
    {
        entries_.emplace_back();
        AddMembers(0, members);
    }

    std::string Build()
    {
        CountSectors();
        for (Entry& entry : entries_)
            Place(entry);
        entries_[0].start = Write(mini_);
        entries_[0].size = mini_.size();
        const std::uint32_t miniFat = Write(Numbers(miniFat_));
        const std::uint32_t miniFatCount = SectorsFor(4 * miniFat_.size());
        const std::uint32_t directory = Write(DirectoryBytes());
        return Finish(miniFat, miniFatCount, directory);
    }

private:
    void AddMembers(std::uint32_t storage, const std::vector<Node>& members)
    {
        std::vector<const Node*> sorted;
        for (const Node& member : members)
            sorted.push_back(&member);
        std::sort(sorted.begin(), sorted.end(), [](const Node* a, const Node* b) {
            return std::pair(a->name.size(), a->name) < std::pair(b->name.size(), b->name);
        });
        if (layout_.shape == TreeShape::Reversed)
            std::reverse(sorted.begin(), sorted.end());
        const auto first = static_cast<std::uint32_t>(entries_.size());
        for (const Node* node : sorted) {
            const auto id = static_cast<std::uint32_t>(entries_.size());
            entries_.push_back({});
            entries_.back().node = node;
            (id == first ? entries_[storage].child : entries_[id - 1].right) = id;
        }
        for (std::uint32_t i = 0; i < sorted.size(); ++i)
            AddMembers(first + i, sorted[i]->members);
    }

    std::uint32_t SectorsFor(std::size_t bytes) const
    {
        return static_cast<std::uint32_t>((bytes + layout_.sectorSize - 1) / layout_.sectorSize);
    }

    // Counts all sectors first, so that they can be dealt out in any order.
    void CountSectors()
    {
        std::size_t mini = 0;
        std::size_t count = 0;
        for (const Entry& entry : entries_) {
            const std::size_t size = entry.node == nullptr ? 0 : entry.node->bytes.size();
            if (size < 4096)
                mini += (size + 63) / 64;
            else
                count += SectorsFor(size);
        }
        count += SectorsFor(64 * mini) + SectorsFor(4 * mini) + SectorsFor(128 * entries_.size());
        const std::size_t perFat = layout_.sectorSize / 4;
        while (fats_ * perFat < count + fats_ + difats_) {
            ++fats_;
            difats_ = fats_ <= 109 ? 0 : (fats_ - 109 + perFat - 2) / (perFat - 1);
        }
        order_.resize(count + fats_ + difats_);
        std::iota(order_.begin(), order_.end(), 0U);
        if (layout_.seed != 0)
            std::shuffle(order_.begin(), order_.end(), std::mt19937(layout_.seed));
        fat_.resize(order_.size(), kNone);
        sectors_.resize(order_.size() * layout_.sectorSize);
    }

    std::uint32_t Deal() { return order_.at(dealt_++); }

    std::uint32_t Write(const std::string& bytes)
    {
        std::uint32_t first = kEnd;
        std::uint32_t before = kEnd;
        for (std::size_t at = 0; at < bytes.size(); at += layout_.sectorSize) {
            const std::uint32_t sector = Deal();
            (before == kEnd ? first : fat_[before]) = sector;
            const std::string piece = bytes.substr(at, layout_.sectorSize);
            sectors_.replace(sector * layout_.sectorSize, piece.size(), piece);
            fat_[sector] = kEnd;
            before = sector;
        }
        return first;
    }

    void Place(Entry& entry)
    {
        if (entry.node == nullptr || entry.node->isStorage)
            return;
        const std::string& bytes = entry.node->bytes;
        entry.size = bytes.size();
        if (bytes.size() >= 4096) {
            entry.start = Write(bytes);
            return;
        }
        for (std::size_t at = 0; at < bytes.size(); at += 64) {
            const auto sector = static_cast<std::uint32_t>(miniFat_.size());
            (at == 0 ? entry.start : miniFat_.back()) = sector;
            miniFat_.push_back(kEnd);
            mini_ += bytes.substr(at, 64);
            mini_.resize(64 * miniFat_.size());
        }
    }

    static std::string Numbers(const std::vector<std::uint32_t>& numbers)
    {
        std::string bytes;
        for (const std::uint32_t number : numbers)
            AppendU32(bytes, number);
        return bytes;
    }

    std::string DirectoryBytes() const
    {
        std::string bytes;
        for (const Entry& entry : entries_) {
            const std::u16string name = entry.node == nullptr ? u"Root Entry" : entry.node->name;
            std::string text;
            for (const char16_t unit : name)
                AppendU16(text, unit);
            text.resize(64);
            AppendU16(text, static_cast<std::uint16_t>(2 * name.size() + 2));
            text += static_cast<char>(entry.node == nullptr ? 5 : entry.node->isStorage ? 1 : 2);
            text += '\1';
            text += Numbers({entry.left, entry.right, entry.child});
            text += entry.node == nullptr ? std::string() : entry.node->classId;
            text.resize(96);
            AppendU32(text, entry.node == nullptr ? 0 : entry.node->stateBits);
            AppendU64(text, 0);
            AppendU64(text, entry.node == nullptr ? 0 : entry.node->modified);
            AppendU32(text, entry.start);
            AppendU64(text, entry.size);
            bytes += text;
        }
        return bytes;
    }

    std::string Finish(std::uint32_t miniFat, std::uint32_t miniFatCount, std::uint32_t directory)
    {
        std::vector<std::uint32_t> fatSectors;
        for (std::size_t i = 0; i < fats_; ++i)
            fat_.at(fatSectors.emplace_back(Deal())) = 0xFFFFFFFD;
        std::vector<std::uint32_t> difatSectors;
        for (std::size_t i = 0; i < difats_; ++i)
            fat_.at(difatSectors.emplace_back(Deal())) = 0xFFFFFFFC;
        const std::size_t perFat = layout_.sectorSize / 4;
        fat_.resize(fats_ * perFat, kNone);
        for (std::size_t i = 0; i < fats_; ++i) {
            const auto begin = fat_.begin() + static_cast<std::ptrdiff_t>(i * perFat);
            sectors_.replace(fatSectors[i] * layout_.sectorSize, layout_.sectorSize,
                             Numbers({begin, begin + static_cast<std::ptrdiff_t>(perFat)}));
        }
        fatSectors.resize(109 + difats_ * (perFat - 1), kNone);
        for (std::size_t i = 0; i < difats_; ++i) {
            const auto begin =
                fatSectors.begin() + static_cast<std::ptrdiff_t>(109 + i * (perFat - 1));
            std::vector<std::uint32_t> list(begin, begin + static_cast<std::ptrdiff_t>(perFat - 1));
            list.push_back(i + 1 < difats_ ? difatSectors[i + 1] : kEnd);
            sectors_.replace(difatSectors[i] * layout_.sectorSize, layout_.sectorSize,
                             Numbers(list));
        }
        fatSectors.resize(109);

        std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
        header.resize(24);
        const bool isVersion3 = layout_.sectorSize == 512;
        for (const unsigned number :
             {0x3EU, isVersion3 ? 3U : 4U, 0xFFFEU, isVersion3 ? 9U : 12U, 6U})
            AppendU16(header, static_cast<std::uint16_t>(number));
        header.resize(40);
        header +=
            Numbers({isVersion3 ? 0 : SectorsFor(128 * entries_.size()),
                     static_cast<std::uint32_t>(fats_), directory, 0, 4096, miniFat, miniFatCount,
                     difats_ == 0 ? kEnd : difatSectors[0], static_cast<std::uint32_t>(difats_)});
        header += Numbers(fatSectors);
        header.resize(layout_.sectorSize);
        return header + sectors_;
    }

    Layout layout_;
    std::vector<Entry> entries_;
    std::size_t fats_ = 0;
    std::size_t difats_ = 0;
    std::vector<std::uint32_t> order_;
    std::size_t dealt_ = 0;
    std::vector<std::uint32_t> fat_;
    std::string sectors_;
    std::vector<std::uint32_t> miniFat_;
    std::string mini_;
};

} // namespace

Node Stream(std::u16string name, std::string bytes)
{
    return {std::move(name), std::move(bytes)};
}

Node Storage(std::u16string name, std::vector<Node> members)
{
    return {std::move(name), {}, true, std::move(members)};
}

std::string BuildCompound(const std::vector<Node>& members, const Layout& layout)
{
    return Builder(members, layout).Build();
}

std::string Noise(std::size_t size, unsigned seed)
{
    std::string bytes(size, '\0');
    std::uint32_t state = seed;
    for (char& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

} // namespace orrery::xls::test
