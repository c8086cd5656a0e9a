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

/// A value that was written, or could not be.
struct RecordedCell {
    std::string sheet;
    model::CellPosition cell;
    book::CellValue value;
    std::optional<util::Error> error; ///< why it could not be written
};

/// A workbook in front of a real one. Passes every call on but saving, and records the cells: so a
/// run can be tried and looked at before it is made. A cell that cannot be written is recorded and
/// does not end its month; an application that is gone does.
class RecordingWorkbook : public book::Workbook {
public:
    /// The workbook outlives this one.
    explicit RecordingWorkbook(book::Workbook& workbook);
    ~RecordingWorkbook() override;
    RecordingWorkbook(const RecordingWorkbook&) = delete;
    RecordingWorkbook& operator=(const RecordingWorkbook&) = delete;

    book::Worksheet* FindWorksheet(std::string_view name) override;
    /// Saves nothing.
    void SaveAs(const std::filesystem::path& target, book::AccessMode accessMode) override;

    /// What was recorded since the last time, in order.
    std::vector<RecordedCell> Take();

private:
    class Sheet;
    book::Worksheet* StandInFor(book::Worksheet* sheet);

    book::Workbook& workbook_;
    std::map<book::Worksheet*, std::unique_ptr<Sheet>> sheets_;
    std::vector<RecordedCell> cells_;
};

} // namespace orrery::generate
