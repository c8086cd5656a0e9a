#pragma once

#include "engines/builtin/xls/drawing/drawing_places.h"
#include "engines/builtin/xls/drawing/embedded_objects.h"
#include "engines/builtin/xls/formula/formula_map.h"
#include "engines/builtin/xls/records/globals.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/sheet/sheet_places.h"
#include "engines/builtin/xls/sheet/sheet_tables.h"
#include "engines/builtin/xls/sheet/sheet_text.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace orrery::xls {

/// A sheet of the template: its substream in the workbook stream, and what is found in it when it
/// is asked for. The stream has to live as long.
class TemplateSheet {
public:
    /// `begin` is the offset of the sheet's BOF record, `limit` where the next sheet of the stream
    /// begins, or the stream ends.
    TemplateSheet(std::string_view stream, std::size_t begin, std::size_t limit, bool isWorksheet);

    /// From the sheet's BOF to its EOF record; up to the next sheet where the end is missing.
    const Span& Place() const { return place_; }
    std::string_view Bytes() const { return place_.In(stream_); }
    bool IsWhole() const { return isWhole_; }
    /// Whether its records can be read up to there.
    bool IsReadable() const { return readable_.end == place_.end; }
    /// Whether it has cells that a calendar can be written into.
    bool IsWorksheet() const { return isWorksheet_ && !places_.IsDialog(); }
    const SheetPlaces& Places() const { return places_; }

    /// The sheet as it is changed and copied. Throws Error(DamagedWorkbook) where it cannot be read
    /// to its end.
    const std::shared_ptr<const SheetText>& Text();
    /// Whether `Text` gives it. A sheet that is damaged is saved as it is.
    bool IsSound();
    /// How many cells refer to shared texts.
    std::size_t SharedTexts();

    // What is found in the records that can be read.
    const FormulaFacts& Facts();
    const DrawingPlaces& Drawings();
    const EmbeddedPlaces& Embedded();
    const TablePlaces& Tables();

    /// What lies between it and the next sheet in the stream; it belongs to nothing.
    std::string_view Tail() const { return tail_.In(stream_); }
    void SetTail(Span tail) { tail_ = tail; }

private:
    TemplateSheet(std::string_view stream, std::size_t begin, std::size_t limit, bool isWorksheet,
                  const Substream& substream);
    std::string_view Readable() const { return readable_.In(stream_); }

    std::string_view stream_;
    Span place_;
    Span readable_;
    bool isWhole_;
    Span tail_;
    bool isWorksheet_;
    SheetPlaces places_;
    std::shared_ptr<const SheetText> text_;
    std::optional<bool> isSound_;
    std::optional<std::size_t> sharedTexts_;
    std::optional<FormulaFacts> facts_;
    std::optional<DrawingPlaces> drawings_;
    std::optional<EmbeddedPlaces> embedded_;
    std::optional<TablePlaces> tables_;
};

} // namespace orrery::xls
