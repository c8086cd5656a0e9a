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

/// How the cells of a sheet use the shared strings.
struct StringUse {
    std::size_t references = 0; ///< cells that refer to one
    std::size_t used = 0;       ///< one more than the highest index among them
};

/// A sheet of the template: its substream in the workbook stream, and what is read from it on
/// demand. The stream must outlive it.
class TemplateSheet {
public:
    /// `begin` is the offset of the sheet's BOF record, `limit` the beginning of the next sheet in
    /// the stream, or the stream's end.
    TemplateSheet(std::string_view stream, std::size_t begin, std::size_t limit, bool isWorksheet);

    /// From the sheet's BOF to its EOF record, or to the next sheet if EOF is missing.
    const Span& Place() const { return place_; }
    std::string_view Bytes() const { return place_.In(stream_); }
    bool IsWhole() const { return isWhole_; }
    /// Whether its records can be read to that end.
    bool IsReadable() const { return readable_.end == place_.end; }
    /// Whether it has cells that a calendar can be written to.
    bool IsWorksheet() const { return isWorksheet_ && !places_.IsDialog(); }
    const SheetPlaces& Places() const { return places_; }

    /// The sheet as it is changed and copied. Throws Error(DamagedWorkbook) if it cannot be read to
    /// its end.
    const std::shared_ptr<const SheetText>& Text();
    /// Whether `Text` does not throw. A damaged sheet is saved as it is.
    bool IsIntact();

    // Read from the records that can be read.
    const StringUse& Strings();
    const FormulaFacts& Facts();
    const DrawingPlaces& Drawings();
    const EmbeddedPlaces& Embedded();
    const TablePlaces& Tables();

    /// The bytes between it and the next sheet in the stream, which belong to nothing.
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
    std::optional<bool> isIntact_;
    std::optional<StringUse> strings_;
    std::optional<FormulaFacts> facts_;
    std::optional<DrawingPlaces> drawings_;
    std::optional<EmbeddedPlaces> embedded_;
    std::optional<TablePlaces> tables_;
};

} // namespace orrery::xls
