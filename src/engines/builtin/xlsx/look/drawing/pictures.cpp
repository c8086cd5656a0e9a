#include "engines/builtin/xlsx/look/drawing/pictures.h"

#include "util/error.h"

namespace orrery::xlsx::drawing {
namespace {

bool HasAt(std::string_view bytes, std::size_t at, std::string_view what)
{
    return bytes.size() >= at + what.size() && bytes.substr(at, what.size()) == what;
}

} // namespace

std::string_view PictureType(std::string_view bytes)
{
    using namespace std::string_view_literals;
    constexpr std::size_t kHead = 1024;
    if (HasAt(bytes, 0, "\x89PNG\r\n\x1A\n"))
        return "png";
    if (HasAt(bytes, 0, "\xFF\xD8\xFF"))
        return "jpeg";
    if (HasAt(bytes, 0, "GIF8"))
        return "gif";
    if (HasAt(bytes, 0, "BM"))
        return "bmp";
    if (HasAt(bytes, 0, "\x01\0\0\0"sv) && HasAt(bytes, 40, " EMF"))
        return "emf";
    if (HasAt(bytes, 0, "\xD7\xCD\xC6\x9A"sv) || HasAt(bytes, 0, "\x01\0\x09\0"sv) ||
        HasAt(bytes, 0, "\x02\0\x09\0"sv))
        return "wmf";
    if (HasAt(bytes, 0, "II*\0"sv) || HasAt(bytes, 0, "MM\0*"sv))
        return "tiff";
    return bytes.substr(0, kHead).find("<svg") != bytes.npos ? "svg" : "";
}

std::shared_ptr<const std::string> Pictures::Read(const std::string& part)
{
    const auto [place, isNew] = read_.try_emplace(PartKey(part));
    const std::uint64_t size = package_.SizeOf(part);
    if (isNew && size <= kMaxBytes - bytes_) {
        place->second = package_.Read(part);
        bytes_ += size;
    }
    if (!place->second)
        ++(size > kMaxBytes - bytes_ ? tooLarge : unknown);
    return place->second;
}

bool Pictures::LoadPart(const std::string& part, std::string_view relationship,
                        book::Drawing& drawing)
{
    const Relationship* found = package_.RelationshipsOf(part).FindById(relationship);
    if (found == nullptr || found->External) {
        ++(found == nullptr ? unknown : linked);
        return false;
    }
    const auto bytes = Read(ResolveTarget(part, found->Target));
    if (!bytes)
        return false;
    const std::string_view type = PictureType(*bytes);
    if (type.empty()) {
        ++unknown;
        return false;
    }
    drawing.picture = bytes;
    drawing.pictureType = type;
    return true;
}

bool Pictures::Load(const std::string& part, std::string_view relationship, book::Drawing& drawing)
{
    try {
        return LoadPart(part, relationship, drawing);
    }
    catch (const util::Error&) {
        ++unknown; // missing or damaged: the rest of the sheet is still worth seeing
        return false;
    }
}

} // namespace orrery::xlsx::drawing
