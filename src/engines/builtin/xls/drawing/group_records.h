#pragma once

#include "engines/builtin/xls/drawing/art_stream.h"
#include "engines/builtin/xls/drawing/drawing_places.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orrery::xls {

/// The art in the records of a drawing group in the globals.
ArtStream GroupArt(DrawingKind kind, std::string_view records);

/// Splits art into the records of a drawing group.
class GroupWriter {
public:
    /// Appends to `stream`. `model` are the old records; if they had a second record of the same
    /// type before their continuations, the new ones have one, too.
    GroupWriter(DrawingKind kind, std::string_view model, std::string& stream);

    void Append(std::string_view art);
    /// Overwrites four existing bytes of the art.
    void Put(std::size_t at, std::uint32_t value);

private:
    void BeginRecord();
    std::size_t RoomInRecord() const;

    DrawingKind kind_;
    std::string prefix_; // before the art in every record
    bool secondIsSame_ = false;
    std::string& stream_;
    std::size_t begin_; // of the first record in the stream
    std::size_t recordCount_ = 0;
    std::size_t recordBegin_ = 0;
};

} // namespace orrery::xls
