#include "engines/builtin/open_workbook.h"

#include "engines/builtin/common/file_kind.h"
#include "engines/builtin/xls/workbook.h"
#include "engines/builtin/xlsx/workbook.h"
#include "util/error.h"
#include "util/paths.h"

namespace orrery::builtin {

std::unique_ptr<generate::Workbook> OpenWorkbookFile(const std::filesystem::path& path)
{
    switch (DetectFileKind(path)) {
    case FileKind::Compound:
        return std::make_unique<xls::Workbook>(path);
    case FileKind::OldSheet:
        throw util::Error(util::ErrorKind::OldBinaryFormat, util::FromPath(path));
    case FileKind::Other:
        break;
    }
    return std::make_unique<xlsx::Workbook>(path);
}

} // namespace orrery::builtin
