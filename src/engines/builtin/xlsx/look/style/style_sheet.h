#pragma once

#include "book/look/cell_style.h"
#include "book/look/table.h"
#include "engines/builtin/xlsx/look/style/style_lists.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::xlsx {

/// The styles of a workbook: the styles part, with the theme's colours and fonts.
class StyleSheet {
public:
    /// Of a workbook without styles: its only format is the default one.
    explicit StyleSheet(builtin::ThemeColors theme);
    /// Reads a styles part. Damaged elements are as in a workbook without styles. Throws
    /// Error(DamagedWorkbook) if the text is not well-formed.
    StyleSheet(builtin::ThemeColors theme, std::string_view xml);

    /// At least one.
    std::size_t CountFormats() const { return lists_.formats.size(); }
    /// The style of cells with that format (`s` of a cell); one that is missing is as format 0.
    book::CellStyle Format(std::size_t index) const;
    /// What a conditional format sets, or nullptr.
    const book::PartialStyle* Differential(std::size_t index) const;
    /// A table style by its name: one of the workbook's own, else a built-in one.
    std::optional<book::TableStyle> FindTableStyle(std::string_view name) const;
    /// The font of the style "Normal".
    const book::Font& NormalFont() const;
    const ColorScheme& Colors() const { return lists_.colors; }

private:
    CellFormat WithBase(const CellFormat& format) const;
    std::string NumberFormatOf(std::size_t id) const;

    StyleLists lists_;
};

} // namespace orrery::xlsx
