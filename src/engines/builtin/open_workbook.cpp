#include "engines/builtin/open_workbook.h"

#include "engines/builtin/common/error_path.h"
#include "engines/builtin/open_by_content.h"
#include "engines/builtin/xls/workbook.h"
#include "engines/builtin/xlsx/workbook.h"

namespace orrery::builtin {
namespace {

template <typename Book> std::unique_ptr<book::Workbook> Open(const std::filesystem::path& path)
{
    return std::make_unique<Book>(path);
}

} // namespace

std::unique_ptr<book::Workbook> OpenWorkbookFile(const std::filesystem::path& path)
{
    return WithErrorPath(
        path, [&] { return OpenByContent(path, Open<xls::Workbook>, Open<xlsx::Workbook>); });
}

} // namespace orrery::builtin
