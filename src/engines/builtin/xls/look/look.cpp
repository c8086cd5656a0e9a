#include "engines/builtin/xls/look/look.h"

#include "engines/builtin/common/error_path.h"
#include "engines/builtin/xls/look/look_source.h"
#include "engines/builtin/xls/look/sheet_reader.h"
#include "engines/builtin/xls/records/workbook_stream.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orrery::xls {
namespace {

std::string ReadStream(const std::filesystem::path& path)
{
    const CompoundFile file(ReadWholeFile(path));
    return ReadWorkbookStream(file, FindWorkbookStream(file)).bytes;
}

/// What default columns are wider than their digits, in digits. The files do not hold it;
/// spreadsheet programs add a little more than one, and more to small fonts: 271/256 for 10 points.
double DefaultPadding(const book::Font& normal)
{
    constexpr double kTwips = 20; // in a point
    return (40960 / std::max(normal.size * kTwips - 15, 60.0) + 50) / 256;
}

class View : public book::WorkbookView {
public:
    explicit View(std::string stream) : source_(std::move(stream))
    {
        sheets_.resize(source_.Look().sheets.size());
    }

    const book::WorkbookLook& Workbook() const override { return source_.Look(); }

    const book::SheetLook& Sheet(std::size_t index) override
    {
        auto& sheet = sheets_.at(index);
        if (!sheet)
            sheet = std::make_unique<book::SheetLook>(ReadSheetLook(source_, index));
        sheet->basePadding = DefaultPadding(Workbook().normalFont);
        sheet->areRowsWholePixels = false;
        return *sheet;
    }

private:
    LookSource source_;
    std::vector<std::unique_ptr<book::SheetLook>> sheets_; // null until they are asked for
};

} // namespace

std::unique_ptr<book::WorkbookView> OpenLook(const std::filesystem::path& path)
{
    return builtin::WithErrorPath(path, [&]() -> std::unique_ptr<book::WorkbookView> {
        return std::make_unique<View>(ReadStream(path));
    });
}

} // namespace orrery::xls
