#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/xls/look/formula_results.h"
#include "engines/builtin/xls/look/look_source.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/xls/look/records/look_records.h"
#include "engines/builtin/xls/look/sheet_styles.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>

namespace orrery::xls {

/// Reads the records of cells into the look of a sheet.
class CellReader {
public:
    CellReader(book::SheetLook& look, LookSource& source, SheetStyles& styles);

    /// Reads the record if it belongs to cells; else returns false. Throws Error(DamagedWorkbook).
    bool Read(const LookRecord& record);
    /// Ends the reading: the cells are in order, each once, with their formulas.
    void Finish();

private:
    struct Place {
        std::uint16_t row;
        std::uint16_t column;
        std::uint16_t format;
    };
    static Place ReadPlace(ByteCursor& cursor);
    /// A new cell, or nullptr if it is outside the sheet or one too many.
    book::Cell* Add(const Place& place);
    void Set(const Place& place, book::CellContent content);
    void ReadBlanks(ByteCursor cursor);
    void ReadNumbers(ByteCursor cursor);
    void ReadSharedText(ByteCursor cursor);
    void ReadOwnText(const LookRecord& record);
    void ReadBoolOrError(ByteCursor cursor);
    void ReadFormula(const LookRecord& record);
    void SetText(book::Cell& cell, const FormattedText& text, std::int32_t richText);
    void SetText(book::Cell& cell, std::string text);
    bool TakeText(std::size_t bytes);
    void Order();

    book::SheetLook& look_;
    LookSource& source_;
    SheetStyles& styles_;
    FormulaResults formulas_;
    std::unordered_map<std::uint32_t, std::int32_t> richTexts_; // by index of the shared text
    std::size_t textBytes_ = 0;
    bool isFull_ = false;
};

} // namespace orrery::xls
