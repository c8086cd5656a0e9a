#pragma once

#include "book/look/workbook_view.h"
#include "engines/builtin/xls/formula_text/formula_names.h"
#include "engines/builtin/xls/look/drawing/read_drawings.h"
#include "engines/builtin/xls/look/shared_texts.h"
#include "engines/builtin/xls/look/styles/cell_formats.h"
#include "engines/builtin/xls/records/globals.h"

#include <cstddef>
#include <optional>
#include <string>

namespace orrery::xls {

/// What the looks of all sheets are read from.
class LookSource {
public:
    /// Takes a workbook stream, decrypted. Throws Error(OldBinaryFormat, DamagedWorkbook).
    explicit LookSource(std::string stream);
    LookSource(const LookSource&) = delete;
    LookSource& operator=(const LookSource&) = delete;

    const std::string& Stream() const { return stream_; }
    const Globals& Book() const { return globals_; }
    const FormulaNames& Names() const { return names_; }
    const CellFormats& Formats() const { return formats_; }
    /// The texts that cells share, read when they are first asked for.
    const SharedTexts& Texts();
    DrawingReader& Drawings() { return drawings_; }
    const book::WorkbookLook& Look() const { return look_; }

private:
    DrawingStyles StylesOfDrawings() const;
    void ReadRecords();
    void ReadSheets();
    void ReadNames();

    std::string stream_;
    Globals globals_;
    FormulaNames names_;
    CellFormats formats_;
    DrawingReader drawings_;
    std::optional<SharedTexts> texts_;
    book::WorkbookLook look_;
};

} // namespace orrery::xls
