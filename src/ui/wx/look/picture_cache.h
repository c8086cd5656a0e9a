#pragma once

#include <wx/graphics.h>

#include <cstddef>
#include <map>
#include <string_view>
#include <utility>

namespace orrery::ui::wx {

/// The decoded pictures of a workbook. Bytes are known by their address, so they stay where they
/// are until the cache is cleared.
class PictureCache {
public:
    /// The picture for the context's renderer; nothing if it cannot be drawn. Valid until the next
    /// call.
    const wxGraphicsBitmap* Find(wxGraphicsContext& context, std::string_view bytes);
    void Clear();

private:
    struct Entry {
        wxGraphicsBitmap bitmap; ///< null if the picture cannot be drawn
        double pixels = 0;
    };
    static Entry Decode(wxGraphicsContext& context, std::string_view bytes);

    std::map<std::pair<const char*, std::size_t>, Entry> entries_;
    double pixels_ = 0; ///< of all entries
};

} // namespace orrery::ui::wx
