#pragma once

#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xml/tree.h"

#include <memory>

namespace orrery::xlsx::drawing {

/// The fills and lines of the workbook's theme, which shapes refer to by number. ECMA-376 20.1.4.1
class FormatScheme {
public:
    /// Without a theme, or with a damaged one, there are none.
    explicit FormatScheme(const Package& package);

    /// The fill with that index, ECMA-376 20.1.4.2.10: from 1, backgrounds from 1001. Its
    /// placeholder colour is that of the reference.
    xml::Element Fill(int index) const;
    xml::Element Line(int index) const; ///< from 1

private:
    PartText text_;
    std::unique_ptr<xml::Tree> tree_;
};

} // namespace orrery::xlsx::drawing
