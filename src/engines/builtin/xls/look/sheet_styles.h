#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/xls/look/styles/cell_formats.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orrery::xls {

/// The styles that a sheet uses, added to its look when they are first asked for.
class SheetStyles {
public:
    SheetStyles(book::SheetLook& look, const CellFormats& formats)
        : look_(look), formats_(formats), indexes_(formats.Count(), kUnknown)
    {
        look_.styles.push_back(formats_.Style(CellFormats::kDefaultCell));
        if (CellFormats::kDefaultCell < indexes_.size())
            indexes_[CellFormats::kDefaultCell] = 0;
    }

    /// The index in the look for an index of XF; that of the default style for one that does not
    /// exist.
    std::uint32_t IndexOf(std::size_t format)
    {
        if (format >= indexes_.size())
            return 0;
        if (indexes_[format] == kUnknown) {
            indexes_[format] = static_cast<std::uint32_t>(look_.styles.size());
            look_.styles.push_back(formats_.Style(format));
        }
        return indexes_[format];
    }

private:
    static constexpr std::uint32_t kUnknown = 0xFFFFFFFF;

    book::SheetLook& look_;
    const CellFormats& formats_;
    std::vector<std::uint32_t> indexes_; // by index of XF
};

} // namespace orrery::xls
