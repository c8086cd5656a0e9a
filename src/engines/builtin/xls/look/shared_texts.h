#pragma once

#include "book/look/cell.h"
#include "engines/builtin/xls/look/styles/cell_formats.h"
#include "engines/builtin/xls/records/shared_string_reader.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// A text with the runs of characters that have other fonts.
struct FormattedText {
    std::string text; ///< UTF-8
    std::vector<book::TextRun> runs;
};

/// Makes one of the characters and runs of a record; runs that are not in the text, or not in
/// order, are left out.
FormattedText FormatText(std::u16string_view text, const std::vector<FormatRun>& runs,
                         const CellFormats& formats);

/// The texts that cells share, as far as they can be read.
class SharedTexts {
public:
    SharedTexts() = default;
    /// `records` is the SST record with its continuations; empty if there is none.
    SharedTexts(std::string_view records, const CellFormats& formats);

    /// The text, or nullptr.
    const FormattedText* Find(std::size_t index) const
    {
        return index < texts_.size() ? &texts_[index] : nullptr;
    }

private:
    std::vector<FormattedText> texts_;
};

} // namespace orrery::xls
