#include "engines/builtin/xls/drawing/embedded_objects.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/formula/object_parts.h"
#include "engines/builtin/xls/records/records.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <optional>
#include <utility>

namespace orrery::xls {
namespace {

/// The last part of that type, without its header.
struct Part {
    std::size_t begin = 0; // in the record's data
    std::string_view data;
};

std::optional<Part> FindPart(std::string_view data, std::uint16_t type)
{
    for (std::size_t at = 0; data.size() - at >= kPartHeader;) {
        const std::uint16_t found = ReadU16(data, at);
        const std::size_t size = ReadU16(data, at + 2);
        at += kPartHeader;
        if (found == kListPart || data.size() - at < size)
            break;
        if (found == type)
            return Part{at, data.substr(at, size)};
        at += size;
    }
    return std::nullopt;
}

/// The offset, in a picture's part, of the position of its data: after its formula, if that is only
/// the token of an embedded object. [MS-XLS] 2.5.187
std::optional<std::size_t> PositionOfData(std::string_view formula)
{
    constexpr std::size_t kToken = 8; // after two sizes and four unused bytes
    if (formula.size() <= kToken || ReadU8(formula, kToken) != kEmbeddedToken)
        return std::nullopt;
    return 2 + std::size_t{ReadU16(formula, 0)};
}

void FindInObject(const Record& record, EmbeddedPlaces& places)
{
    const auto formula = FindPart(record.data, kPictureFormulaPart);
    const auto flags = FindPart(record.data, kPictureFlagsPart);
    if (!formula || !flags || flags->data.size() < 2)
        return;
    const auto position = PositionOfData(formula->data);
    const bool inControls = (ReadU16(flags->data, 0) & kIsInControls) != 0;
    if (!position || formula->data.size() < *position + (inControls ? 8U : 4U))
        return;
    const std::size_t place = record.DataBegin() + formula->begin + *position;
    const std::uint32_t number = ReadU32(formula->data, *position);
    if (inControls)
        places.controls.push_back({place, number, ReadU32(formula->data, *position + 4)});
    else
        places.objects.push_back({place, number});
}

} // namespace

EmbeddedPlaces FindEmbedded(std::string_view sheet)
{
    EmbeddedPlaces places;
    RecordReader reader(sheet);
    while (const auto record = reader.Next()) {
        if (record->type == RecordType::Obj)
            FindInObject(*record, places);
    }
    return places;
}

std::string StorageName(std::uint32_t number)
{
    constexpr std::size_t kDigits = 8;
    std::array<char, kDigits> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr;
    const std::string text(digits.data(), end);
    return "MBD" + std::string(kDigits - text.size(), '0') + util::ToUpperAscii(text);
}

void PutEmbedding(std::string& sheet, const EmbeddedPlaces& places, const FreshEmbedding& embedding)
{
    for (std::size_t i = 0; i < embedding.objects.size(); ++i)
        PutU32(sheet, places.objects[i].place, embedding.objects[i]);
    for (std::size_t i = 0; i < embedding.controls.size(); ++i)
        PutU32(sheet, places.controls[i].place, embedding.controls[i]);
}

EmbeddedCopies::EmbeddedCopies(const std::vector<std::string>& storages,
                               const std::vector<std::string>& streams, std::string controls)
    : controls_(std::move(controls)), controlsSize_(controls_.size())
{
    for (const auto& name : storages)
        originals_.insert(util::ToUpperAscii(name));
    taken_ = originals_;
    for (const auto& name : streams)
        taken_.insert(util::ToUpperAscii(name));
}

FreshEmbedding EmbeddedCopies::AddCopy(const EmbeddedPlaces& places)
{
    FreshEmbedding embedding;
    std::map<std::uint32_t, std::uint32_t> storages;
    for (const auto& object : places.objects) {
        const auto [copy, isNew] = storages.emplace(object.number, object.number);
        if (isNew)
            copy->second = CopyStorage(object.number);
        embedding.objects.push_back(copy->second);
    }
    std::map<ByteRange, std::uint32_t> controls;
    for (const auto& control : places.controls) {
        const ByteRange stretch{control.begin, control.size};
        const auto [copy, isNew] = controls.emplace(stretch, control.begin);
        if (isNew)
            copy->second = CopyControl(stretch);
        embedding.controls.push_back(copy->second);
    }
    return embedding;
}

std::uint32_t EmbeddedCopies::CopyStorage(std::uint32_t number)
{
    const auto name = StorageName(number);
    if (originals_.count(name) == 0)
        return number;
    lastNumber_ = std::max(lastNumber_, number);
    while (!taken_.insert(StorageName(++lastNumber_)).second)
        ;
    storages_.emplace_back(name, StorageName(lastNumber_));
    return lastNumber_;
}

std::uint32_t EmbeddedCopies::CopyControl(const ByteRange& control)
{
    const auto [begin, size] = control;
    const bool isThere = begin <= controls_.size() && controls_.size() - begin >= size && size > 0;
    if (!isThere)
        return begin;
    const std::uint64_t copy = controlsSize_;
    addedControls_.push_back(control);
    controlsSize_ += size;
    return static_cast<std::uint32_t>(copy); // a file cannot become that large
}

std::string EmbeddedCopies::Controls() const
{
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(controlsSize_));
    bytes = controls_;
    for (const auto& [begin, size] : addedControls_)
        bytes.append(controls_, begin, size);
    return bytes;
}

} // namespace orrery::xls
