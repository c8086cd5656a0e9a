#include "generate/recording_workbook.h"

#include "generate/failure.h"

#include <utility>

namespace orrery::generate {

/// Wraps a sheet of the real workbook.
class RecordingWorkbook::Sheet : public book::Worksheet {
public:
    Sheet(RecordingWorkbook& workbook, book::Worksheet& real) : workbook_(workbook), real_(real) {}

    std::string Name() const override { return real_.Name(); }
    void SetName(std::string_view name) override { real_.SetName(name); }
    void CopyAfter(book::Worksheet& after) override
    {
        real_.CopyAfter(static_cast<Sheet&>(after).real_);
    }
    book::Worksheet* Next() override { return workbook_.WrapSheet(real_.Next()); }
    void SetCell(std::int32_t row, std::int32_t column, const book::CellValue& value,
                 book::CellMember member) override
    {
        RecordedCell record{real_.Name(), {row, column}, value, std::nullopt};
        try {
            real_.SetCell(row, column, value, member);
        }
        catch (const util::Error& error) {
            if (IsApplicationLost(error))
                throw;
            record.error = error;
        }
        workbook_.cells_.push_back(std::move(record));
    }

private:
    RecordingWorkbook& workbook_;
    book::Worksheet& real_;
};

RecordingWorkbook::RecordingWorkbook(book::Workbook& workbook) : workbook_(workbook) {}

RecordingWorkbook::~RecordingWorkbook() = default;

book::Worksheet* RecordingWorkbook::FindWorksheet(std::string_view name)
{
    return WrapSheet(workbook_.FindWorksheet(name));
}

void RecordingWorkbook::SaveAs(const std::filesystem::path& /*target*/,
                               book::AccessMode /*accessMode*/)
{
}

std::vector<RecordedCell> RecordingWorkbook::Take()
{
    return std::exchange(cells_, {});
}

book::Worksheet* RecordingWorkbook::WrapSheet(book::Worksheet* sheet)
{
    if (sheet == nullptr)
        return nullptr;
    auto& wrapper = sheets_[sheet];
    if (!wrapper)
        wrapper = std::make_unique<Sheet>(*this, *sheet);
    return wrapper.get();
}

} // namespace orrery::generate
