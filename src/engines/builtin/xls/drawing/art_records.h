#pragma once

#include "engines/builtin/xls/drawing/art_stream.h"
#include "engines/builtin/xls/records/records.h"

#include <cstddef>
#include <vector>

namespace orrery::xls {

// HFPICTURE, a picture of a header or footer. [MS-XLS] 2.4.138
inline constexpr std::size_t kHeaderPictureFlags = 12;     ///< offset
inline constexpr std::size_t kHeaderPictureArt = 14;       ///< offset
inline constexpr std::uint8_t kHeaderPictureContinues = 4; ///< fContinue, a flag

/// Finds the records of a sheet that contain office art. A sheet's art is split wherever an object
/// follows, and continues after the object's own records, in MSODRAWING or CONTINUE records.
/// [MS-XLS] 2.1.7.20.5
class ArtRecords {
public:
    struct Sheet {
        ArtStream drawing;
        std::vector<ArtStream> selections; ///< of shapes, in MSODRAWINGSELECTION records
    };

    void Add(const Record& record);

    /// The sheet's substream and those of its charts.
    const std::vector<Sheet>& Substreams() const { return substreams_; }
    /// The pictures of headers and footers.
    const std::vector<ArtStream>& HeaderPictures() const { return headerPictures_; }

private:
    enum class Owner { Nobody, Art, Object, Text };

    void AddContinuation(const Record& record);
    void AddToText(const Record& record);
    void AddHeaderPicture(const Record& record);

    std::vector<Sheet> substreams_;
    std::vector<std::size_t> open_; // indexes of the enclosing substreams
    std::vector<ArtStream> headerPictures_;
    Owner owner_ = Owner::Nobody; // of the next CONTINUE record
    std::size_t textLeft_ = 0;    // remaining characters
    std::size_t runsLeft_ = 0;    // remaining bytes of their formatting
};

} // namespace orrery::xls
