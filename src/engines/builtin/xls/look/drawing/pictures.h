#pragma once

#include "engines/builtin/xls/drawing/art_stream.h"
#include "engines/builtin/xls/drawing/drawing_places.h"
#include "engines/builtin/xls/look/drawing/picture_file.h"
#include "engines/builtin/xls/look/drawing/shape_properties.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The pictures of a workbook and what its shapes have in common. Pictures are read when they are
/// first asked for, at most 64 MiB of them. [MS-ODRAW] 2.2.12
class Pictures {
public:
    static constexpr std::size_t kMostBytes = 64U << 20U;

    struct Picture {
        std::shared_ptr<const std::string> bytes; ///< of its file; nullptr if it cannot be read
        std::string type;
        bool isTooLarge = false; ///< it or those before it
    };

    /// The records of a drawing group in the globals with their continuations; empty if there are
    /// none. They must outlive this object.
    Pictures(DrawingKind kind, std::string_view records);

    /// By the number that shapes use, from 1.
    const Picture& Find(std::uint32_t number);
    bool IsEmpty() const { return entries_.empty(); }
    /// The properties of shapes that do not say otherwise.
    const ShapeProperties& Defaults() const { return defaults_; }

private:
    Picture Read(const ArtRecord& entry);

    ArtStream art_;
    std::vector<ArtRecord> entries_;
    std::map<std::uint32_t, Picture> read_;
    std::size_t left_ = kMostBytes;
    std::string defaultBytes_;
    ShapeProperties defaults_;
};

} // namespace orrery::xls
