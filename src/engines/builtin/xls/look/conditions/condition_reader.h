#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/xls/formula_text/formula_names.h"
#include "engines/builtin/xls/look/conditions/condition_visuals.h"
#include "engines/builtin/xls/look/records/look_records.h"
#include "engines/builtin/xls/look/styles/cell_formats.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// Reads the conditional formats of a sheet.
class ConditionReader {
public:
    ConditionReader(book::SheetLook& look, const FormulaNames& names, const CellFormats& formats)
        : look_(look), names_(names), formats_(formats)
    {
    }

    /// Reads the record if it belongs to conditional formats; else returns false. Throws
    /// Error(DamagedWorkbook).
    bool Read(const LookRecord& record);
    /// Gives the look what was read.
    void Finish();

private:
    struct Rule {
        book::ConditionalRule rule;
        bool isReadable = false; ///< a rule that is not keeps its place, by which others name it
    };
    struct Format {
        std::uint16_t id = 0;
        std::vector<book::CellRange> ranges;
        std::vector<Rule> rules;
        bool isNew = false; ///< it has rules of newer versions only
    };

    void ReadFormat(std::string_view data, bool isNew);
    void ReadExtension(std::string_view data);
    void AddRule(const LookRecord& record, bool isNew);
    ConditionContext ContextOf(const Format& format) const;
    Format* Find(std::uint16_t id);

    book::SheetLook& look_;
    const FormulaNames& names_;
    const CellFormats& formats_;
    std::vector<Format> formatsRead_;
    std::optional<std::size_t>
        extended_; ///< the format that the next rule of newer versions is for
    std::size_t rules_ = 0;
};

} // namespace orrery::xls
