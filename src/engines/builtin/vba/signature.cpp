#include "engines/builtin/vba/signature.h"

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "util/error.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace orrery::vba {
namespace {

constexpr std::uint32_t kSignatureProperty = 0x18; // GKPIDDSI_DIGSIG
constexpr std::string_view
    kDocumentSummary("\x02\xD5\xCD\xD5\x9C\x2E\x1B\x10\x93\x97\x08\x00\x2B\x2C\xF9\xAE", 16);

// Offsets in the stream, and the size of an id with an offset in its list of sets.
constexpr std::size_t kSetCount = 24;
constexpr std::size_t kSets = 28;
constexpr std::size_t kSetEntry = 20;
// The same in a set, for its list of properties.
constexpr std::size_t kPropertyCount = 4;
constexpr std::size_t kProperties = 8;
constexpr std::size_t kPropertyEntry = 8;

struct Property {
    std::uint32_t id;
    std::size_t offset; ///< of its value in the set
};

struct PropertySet {
    std::size_t begin = 0; ///< in the stream
    std::size_t size = 0;
    std::vector<Property> properties;
};

PropertySet ReadSet(std::string_view stream, std::size_t begin)
{
    PropertySet set;
    set.begin = begin;
    set.size = xls::ReadU32(stream, begin);
    const auto bytes = xls::Slice(stream, begin, set.size);
    const std::size_t count = xls::ReadU32(bytes, kPropertyCount);
    const std::size_t firstValue = kProperties + count * kPropertyEntry;
    for (std::size_t at = kProperties; at < firstValue; at += kPropertyEntry) {
        const Property property{xls::ReadU32(bytes, at), xls::ReadU32(bytes, at + 4)};
        if (property.offset < firstValue || property.offset > set.size)
            xls::ThrowTooShort();
        set.properties.push_back(property);
    }
    return set;
}

/// The bytes up to the next value of the set.
std::size_t SizeOfValue(const PropertySet& set, const Property& property)
{
    std::size_t end = set.size;
    for (const Property& other : set.properties) {
        if (&other != &property && other.offset >= property.offset)
            end = std::min(end, other.offset);
    }
    return end - property.offset;
}

void Put(builtin::TextPatch& patch, std::size_t at, std::size_t value)
{
    std::string bytes;
    xls::AppendU32(bytes, static_cast<std::uint32_t>(value));
    patch.Replace(at, at + sizeof(std::uint32_t), std::move(bytes));
}

/// Takes a property out of its set. Returns the bytes that go.
std::size_t Remove(builtin::TextPatch& patch, const PropertySet& set, const Property& removed)
{
    const std::size_t size = SizeOfValue(set, removed);
    Put(patch, set.begin, set.size - kPropertyEntry - size);
    Put(patch, set.begin + kPropertyCount, set.properties.size() - 1);
    std::size_t at = set.begin + kProperties;
    for (const Property& property : set.properties) {
        const std::size_t before = kPropertyEntry + (property.offset > removed.offset ? size : 0);
        if (&property == &removed)
            patch.Remove(at, at + kPropertyEntry);
        else
            Put(patch, at + 4, property.offset - before);
        at += kPropertyEntry;
    }
    patch.Remove(set.begin + removed.offset, set.begin + removed.offset + size);
    return kPropertyEntry + size;
}

/// The offsets of the sets, by position.
std::vector<std::size_t> ReadOffsets(std::string_view stream)
{
    const std::size_t count = xls::ReadU32(stream, kSetCount);
    const std::size_t end = kSets + count * kSetEntry;
    std::vector<std::size_t> offsets;
    for (std::size_t at = kSets; at < end; at += kSetEntry) {
        offsets.push_back(xls::ReadU32(stream, at + 16));
        if (offsets.back() < end)
            xls::ThrowTooShort();
    }
    return offsets;
}

std::optional<std::string> RemoveSignature(std::string_view stream)
{
    const auto offsets = ReadOffsets(stream);
    const auto isSummary = [&](std::size_t set) {
        return stream.substr(kSets + set * kSetEntry, 16) == kDocumentSummary;
    };
    std::size_t which = 0;
    while (which < offsets.size() && !isSummary(which))
        ++which;
    if (which == offsets.size())
        return std::nullopt;
    const PropertySet set = ReadSet(stream, offsets[which]);
    const auto signature =
        std::find_if(set.properties.begin(), set.properties.end(),
                     [](const Property& each) { return each.id == kSignatureProperty; });
    if (signature == set.properties.end())
        return std::nullopt;
    builtin::TextPatch patch;
    const std::size_t gone = Remove(patch, set, *signature);
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        if (offsets[i] > set.begin)
            Put(patch, kSets + i * kSetEntry + 16, offsets[i] - gone);
    }
    std::string changed = patch.Apply(stream);
    changed.resize(stream.size()); // zeros at the end mean nothing
    return changed;
}

} // namespace

std::optional<std::string> WithoutSignature(std::string_view properties)
{
    try {
        return RemoveSignature(properties);
    }
    catch (const util::Error&) {
        return std::nullopt;
    }
}

} // namespace orrery::vba
