#include "engines/builtin/open_workbook.h"

#include "engines/builtin/xls/workbook.h"
#include "engines/builtin/xlsx/workbook.h"
#include "engines/common/file_kind.h"
#include "util/error.h"
#include "util/paths.h"

namespace orrery::builtin {

std::unique_ptr<generate::Workbook> OpenWorkbookFile(const std::filesystem::path& path)
{
    switch (engines::DetectFileKind(path)) {
    case engines::FileKind::Compound:
        return std::make_unique<xls::Workbook>(path);
    case engines::FileKind::OldSheet:
        throw util::Error(util::ErrorKind::OldBinaryFormat, util::FromPath(path));
    case engines::FileKind::Other:
        break;
    }
    return std::make_unique<xlsx::Workbook>(path);
}

} // namespace orrery::builtin
