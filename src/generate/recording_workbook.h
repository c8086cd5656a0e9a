#pragma once

#include "book/spreadsheet.h"
#include "model/cell_ref.h"
#include "util/error.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::generate {

/// A cell that a run wrote, or failed to write.
struct RecordedCell {
    std::string sheet;
    model::CellPosition cell;
    book::CellValue value;
    std::optional<util::Error> error; ///< why it could not be written; absent if it was
};

/// Wraps a real workbook. Forwards every call except saving, and records the cells, so that a run
/// can be tried without saving. A cell that cannot be written is recorded and does not end its
/// month; a lost application does.
class RecordingWorkbook : public book::Workbook {
public:
    /// `workbook` must outlive the object.
    explicit RecordingWorkbook(book::Workbook& workbook);
    ~RecordingWorkbook() override;
    RecordingWorkbook(const RecordingWorkbook&) = delete;
    RecordingWorkbook& operator=(const RecordingWorkbook&) = delete;

    book::Worksheet* FindWorksheet(std::string_view name) override;
    /// Does nothing.
    void SaveAs(const std::filesystem::path& target, book::AccessMode accessMode) override;

    /// Returns the cells recorded since the last call, in order.
    std::vector<RecordedCell> Take();

private:
    class Sheet;
    book::Worksheet* WrapSheet(book::Worksheet* sheet);

    book::Workbook& workbook_;
    std::map<book::Worksheet*, std::unique_ptr<Sheet>> sheets_;
    std::vector<RecordedCell> cells_;
};

} // namespace orrery::generate
