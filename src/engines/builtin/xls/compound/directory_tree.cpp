#include "engines/builtin/xls/compound/directory_tree.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/compound/upper_case.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <optional>
#include <utility>

namespace orrery::xls {
namespace {

constexpr std::size_t kMaxUnits = 31; // of a name, without its zero
constexpr std::size_t kNameBytes = 64;

std::u16string ParseName(std::string_view bytes)
{
    const std::size_t size = ReadU16(bytes, kNameBytes);
    const bool isSound = size >= 2 && size <= kNameBytes && size % 2 == 0;
    const std::size_t most = isSound ? size / 2 - 1 : kMaxUnits;
    std::u16string name;
    for (std::size_t i = 0; i < most; ++i) {
        const auto unit = static_cast<char16_t>(ReadU16(bytes, 2 * i));
        if (unit == 0 && !isSound)
            break;
        name += unit;
    }
    return name;
}

EntryType ParseType(std::uint8_t type)
{
    switch (type) {
    case 1:
        return EntryType::Storage;
    case 2:
        return EntryType::Stream;
    case 5:
        return EntryType::Root;
    default:
        return EntryType::Unallocated;
    }
}

/// Goes through the tree of a storage's members from left to right; `enter` is called with each
/// entry before its links are followed. Trees of other programs may be as deep as they are large,
/// so this must not be recursive.
template <typename Enter>
std::vector<EntryId> InOrder(const Directory& directory, EntryId storage, Enter enter)
{
    std::vector<EntryId> members;
    std::vector<EntryId> path;
    EntryId at = directory[storage].child;
    while (at != kNoEntry || !path.empty()) {
        for (; at != kNoEntry; at = directory[at].left) {
            enter(at);
            path.push_back(at);
        }
        const EntryId member = path.back();
        path.pop_back();
        members.push_back(member);
        at = directory[member].right;
    }
    return members;
}

/// The entries of a directory that were visited.
class Visited {
public:
    explicit Visited(const Directory& directory) : directory_(directory), visited_(directory.size())
    {
        visited_[kRootEntry] = true;
    }
    void Enter(EntryId id)
    {
        if (id >= directory_.size() ||
            (!directory_[id].IsStream() && directory_[id].type != EntryType::Storage))
            ThrowDamaged("its directory names an entry that is not there");
        if (visited_[id])
            ThrowDamaged("its directory runs in a circle");
        visited_[id] = true;
    }
    bool operator[](EntryId id) const { return visited_[id]; }

private:
    const Directory& directory_;
    std::vector<bool> visited_;
};

void SortByName(const Directory& directory, std::vector<EntryId>& members)
{
    std::sort(members.begin(), members.end(), [&](EntryId left, EntryId right) {
        return CompareNames(directory[left].name, directory[right].name) < 0;
    });
}

/// Whether each name is less than the next one.
bool IsInOrder(const Directory& directory, const std::vector<EntryId>& members)
{
    const auto disorder =
        std::adjacent_find(members.begin(), members.end(), [&](EntryId left, EntryId right) {
            return CompareNames(directory[left].name, directory[right].name) >= 0;
        });
    return disorder == members.end();
}

/// Whether no red entry has a red child and all paths down have the same number of black entries.
bool HasValidColours(const Directory& directory, EntryId storage)
{
    struct Step {
        EntryId entry;
        EntryColour above;
        std::size_t blacks;
    };
    std::optional<std::size_t> blacksOfAll;
    // The root must be black, as if it had a red parent.
    std::vector<Step> steps = {{directory[storage].child, EntryColour::Red, 0}};
    while (!steps.empty()) {
        const Step step = steps.back();
        steps.pop_back();
        if (step.entry == kNoEntry) {
            if (blacksOfAll.value_or(step.blacks) != step.blacks)
                return false;
            blacksOfAll = step.blacks;
            continue;
        }
        const DirectoryEntry& entry = directory[step.entry];
        if (entry.colour == EntryColour::Red && step.above == EntryColour::Red)
            return false;
        const std::size_t blacks = step.blacks + (entry.colour == EntryColour::Black ? 1 : 0);
        steps.push_back({entry.left, entry.colour, blacks});
        steps.push_back({entry.right, entry.colour, blacks});
    }
    return true;
}

/// Links the sorted members [begin:end) and returns their root; the top `blackLevels` levels are
/// black. Halving fills every level but the last, so the recursion is a few dozen levels deep at
/// most.
EntryId Balance(Directory& directory, const std::vector<EntryId>& members, std::size_t begin,
                std::size_t end, std::size_t blackLevels)
{
    if (begin == end)
        return kNoEntry;
    const std::size_t middle = begin + (end - begin) / 2;
    DirectoryEntry& entry = directory[members[middle]];
    entry.colour = blackLevels > 0 ? EntryColour::Black : EntryColour::Red;
    const std::size_t below = blackLevels > 0 ? blackLevels - 1 : 0;
    entry.left = Balance(directory, members, begin, middle, below);
    entry.right = Balance(directory, members, middle + 1, end, below);
    return members[middle];
}

} // namespace

DirectoryEntry ParseEntry(std::string_view bytes)
{
    DirectoryEntry entry;
    entry.type = ParseType(ReadU8(bytes, 66));
    if (entry.type == EntryType::Unallocated)
        return entry;
    entry.name = ParseName(bytes);
    entry.colour = ReadU8(bytes, 67) == 0 ? EntryColour::Red : EntryColour::Black;
    entry.left = ReadU32(bytes, 68);
    entry.right = ReadU32(bytes, 72);
    entry.child = entry.IsStorage() ? ReadU32(bytes, 76) : kNoEntry;
    const auto classId = Slice(bytes, 80, entry.classId.size());
    std::copy(classId.begin(), classId.end(), entry.classId.begin());
    entry.stateBits = ReadU32(bytes, 96);
    entry.created = ReadU64(bytes, 100);
    entry.modified = ReadU64(bytes, 108);
    entry.start = ReadU32(bytes, 116);
    entry.size = ReadU64(bytes, 120);
    return entry;
}

void AppendEntry(std::string& bytes, const DirectoryEntry& entry)
{
    assert(entry.name.size() <= kMaxUnits);
    const std::size_t begin = bytes.size();
    for (const char16_t unit : entry.name)
        AppendU16(bytes, unit);
    bytes.resize(begin + kNameBytes);
    const bool isThere = entry.type != EntryType::Unallocated;
    AppendU16(bytes, static_cast<std::uint16_t>(isThere ? 2 * entry.name.size() + 2 : 0));
    AppendU8(bytes, static_cast<std::uint8_t>(entry.type));
    AppendU8(bytes, isThere ? static_cast<std::uint8_t>(entry.colour) : 0);
    AppendU32(bytes, entry.left);
    AppendU32(bytes, entry.right);
    AppendU32(bytes, entry.child);
    bytes.append(entry.classId.data(), entry.classId.size());
    AppendU32(bytes, entry.stateBits);
    AppendU64(bytes, entry.created);
    AppendU64(bytes, entry.modified);
    AppendU32(bytes, entry.start);
    AppendU64(bytes, entry.size);
}

std::weak_ordering CompareNames(std::u16string_view left, std::u16string_view right)
{
    if (left.size() != right.size())
        return left.size() <=> right.size();
    for (std::size_t i = 0; i < left.size(); ++i) {
        const char16_t a = ToUpperUnit(left[i]);
        const char16_t b = ToUpperUnit(right[i]);
        if (a != b)
            return a <=> b;
    }
    return std::weak_ordering::equivalent;
}

std::vector<EntryId> MembersOf(const Directory& directory, EntryId storage)
{
    return InOrder(directory, storage, [](EntryId) {});
}

void LinkParents(Directory& directory)
{
    Visited passed(directory);
    std::vector<EntryId> storages = {kRootEntry};
    while (!storages.empty()) {
        const EntryId storage = storages.back();
        storages.pop_back();
        auto members = InOrder(directory, storage, [&](EntryId id) { passed.Enter(id); });
        for (const EntryId member : members) {
            directory[member].parent = storage;
            if (directory[member].IsStorage())
                storages.push_back(member);
        }
        if (IsInOrder(directory, members))
            continue;
        SortByName(directory, members);
        if (!IsInOrder(directory, members))
            ThrowDamaged("two of its streams have the same name");
    }
    for (EntryId id = 0; id < directory.size(); ++id) {
        if (!passed[id])
            directory[id] = DirectoryEntry();
    }
}

void RepairTree(Directory& directory, EntryId storage)
{
    auto members = MembersOf(directory, storage);
    if (!IsInOrder(directory, members) || !HasValidColours(directory, storage))
        BuildTree(directory, storage, std::move(members));
}

void BuildTree(Directory& directory, EntryId storage, std::vector<EntryId> members)
{
    SortByName(directory, members);
    // The full levels are black; the entries below them are red.
    const std::size_t fullLevels = std::bit_width(members.size() + 1) - 1;
    directory[storage].child = Balance(directory, members, 0, members.size(), fullLevels);
}

} // namespace orrery::xls
