#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::xls {

/// A picture as a file of its format.
struct PictureFile {
    std::string type; ///< as `book::Drawing::pictureType`
    std::string bytes;
};

/// A picture of the workbook: the record of its format ("OfficeArtBlip"). Metafiles are unpacked
/// and get the headers that their files have; "pict" of the Macintosh is not known. Nothing if the
/// picture is damaged, of another kind, or longer than `most` bytes. Never throws.
/// [MS-ODRAW] 2.2.23 to 2.2.31
std::optional<PictureFile> ReadPictureFile(std::uint16_t type, std::uint16_t instance,
                                           std::string_view data, std::size_t most);

} // namespace orrery::xls
