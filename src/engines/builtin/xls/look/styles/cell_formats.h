#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xls/look/styles/font_table.h"
#include "engines/builtin/xls/look/styles/look_colors.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The formats of a workbook: what its records FONT, FORMAT, XF, XFEXT, STYLE, PALETTE and THEME
/// say together.
class CellFormats {
public:
    static constexpr std::size_t kDefaultCell = 15; ///< index of the format of cells without one

    /// Takes the data of a record of the globals, continuations joined; records of other types are
    /// ignored. A damaged record is left out and counted.
    void Add(std::uint16_t type, std::string_view data);
    /// The style of a cell by its index of XF; the default one for an index that does not exist.
    /// Cell formats are complete: what the parent format says counted when the file was written.
    /// [MS-XLS] 2.5.20 (fAtrNum)
    book::CellStyle Style(std::size_t format) const;
    std::size_t Count() const { return formats_.size(); }
    /// The code of a number format. [MS-XLS] 2.4.126
    std::string NumberFormat(std::uint16_t id) const;
    book::Font Font(std::size_t index) const { return fonts_.Find(index, colors_); }
    /// The font of the style "Normal".
    book::Font NormalFont() const;
    const LookColors& Colors() const { return colors_; }
    /// Ends the adding: extensions of formats that a program changed afterwards, without knowing of
    /// them, are dropped.
    void Finish();
    /// How many records were left out.
    std::size_t Damaged() const { return damaged_; }

private:
    void Read(std::uint16_t type, std::string_view data);
    void AddNumberFormat(std::string_view data);
    void AddExtension(std::string_view data);
    void AddStyle(std::string_view data);

    LookColors colors_;
    FontTable fonts_;
    std::map<std::uint16_t, std::string> numberFormats_;
    std::vector<std::string> formats_;              // data of XF
    std::map<std::size_t, std::string> extensions_; // data of XFEXT by the index of XF
    std::optional<std::uint32_t> checksum_;         // of all XF, as it was when they were extended
    std::size_t normal_ = 0;                        // index of XF
    std::size_t damaged_ = 0;
};

} // namespace orrery::xls
