#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xls/records/globals.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

using builtin::TextPatch;

/// The current name of the sheet that the template calls `name`; nothing if it keeps its name.
using SheetNameLookup = std::function<std::optional<std::string>(std::string_view name)>;

/// Places in a substream that contain a sheet's name or say which sheet they belong to, other than
/// formulas. Read once from the template's bytes; the model and its copies share it.
class SheetPlaces {
public:
    explicit SheetPlaces(std::string_view bytes);

    /// Selects or deselects the sheet. [MS-XLS] 2.4.346
    void Select(std::string& bytes, bool selected) const;
    /// Gives the sheet's part of each custom view the id of another sheet. [MS-XLS] 2.4.339
    void SetTabId(std::string& bytes, std::uint16_t id) const;
    /// The code name, which ties the sheet to its module of the macros; nothing if there is none or
    /// it cannot be read. [MS-XLS] 2.4.51
    std::optional<std::string> CodeName(std::string_view bytes) const;
    /// Gives a copy a code name of its own, or takes it away.
    void SetCodeName(TextPatch& patch, const std::optional<std::string>& name) const;
    /// Renames sheets in links to places in the workbook and in sources of consolidations and pivot
    /// tables.
    void Rename(TextPatch& patch, std::string_view bytes, const SheetNameLookup& nameOf) const;
    /// Whether the substream is a dialog's, not a worksheet's. [MS-XLS] 2.4.351
    bool IsDialog() const { return isDialog_; }

private:
    std::vector<std::size_t> windows_; // data of WINDOW2
    std::vector<std::size_t> views_;   // data of USERSVIEWBEGIN
    std::vector<Span> codeNames_;
    std::vector<Span> hyperlinks_;
    std::vector<Span> sources_; // DCONREF
    bool isDialog_ = false;
};

} // namespace orrery::xls
