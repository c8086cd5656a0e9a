#pragma once

#include "engines/excel/dispatch.h"
#include "engines/excel/worksheet.h"
#include "generate/spreadsheet.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::excel {

/// A path as the application takes it: absolute, with "\", without the prefix of long paths.
std::string PathText(const std::filesystem::path& path);

class Workbook : public generate::Workbook {
public:
    /// The model outlives it.
    Workbook(Object workbook, ObjectModel& model) : workbook_(std::move(workbook)), model_(model) {}

    generate::Worksheet* FindWorksheet(std::string_view name) override;
    void SaveAs(const std::filesystem::path& target, generate::AccessMode accessMode) override;

    /// The one sheet that stands for an object of the application.
    Worksheet& SheetOf(Pointer<IDispatch> sheet);
    ObjectModel& Model() const { return model_; }

private:
    struct KnownSheet {
        Pointer<IUnknown> identity;
        std::unique_ptr<Worksheet> sheet;
    };

    const Object& Worksheets();

    Object workbook_;
    ObjectModel& model_;
    std::optional<Object> worksheets_; ///< once it was asked for
    std::vector<KnownSheet> sheets_;
};

} // namespace orrery::excel
