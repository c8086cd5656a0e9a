#include "look/picture/picture.h"

#include "look/picture/headers.h"

namespace orrery::look {

std::string_view PictureTypeName(PictureType type)
{
    switch (type) {
    case PictureType::Png:
        return "png";
    case PictureType::Jpeg:
        return "jpeg";
    case PictureType::Gif:
        return "gif";
    case PictureType::Bmp:
        return "bmp";
    case PictureType::Tiff:
        return "tiff";
    case PictureType::Emf:
        return "emf";
    case PictureType::Wmf:
        return "wmf";
    case PictureType::Svg:
        return "svg";
    }
    return "";
}

std::optional<PictureInfo> ReadPictureInfo(std::string_view bytes)
{
    for (const auto read :
         {ReadPng, ReadJpeg, ReadGif, ReadBmp, ReadTiff, ReadEmf, ReadWmf, ReadSvg}) {
        if (const auto info = read(bytes))
            return info;
    }
    return std::nullopt;
}

std::optional<std::string> ReasonNotShown(std::string_view bytes)
{
    if (bytes.size() > kLargestPicture)
        return "it is larger than 64 MiB";
    const auto info = ReadPictureInfo(bytes);
    if (!info)
        return "it is damaged, or of an unknown kind";
    if (info->width * info->height > kMostPixels)
        return "it has more than 100,000,000 pixels";
    return std::nullopt;
}

} // namespace orrery::look
