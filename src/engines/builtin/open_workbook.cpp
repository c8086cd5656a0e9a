#include "engines/builtin/open_workbook.h"

#include "book/error.h"
#include "engines/builtin/common/error_path.h"
#include "engines/builtin/xls/workbook.h"
#include "engines/builtin/xlsx/workbook.h"
#include "engines/common/file_kind.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/paths.h"

#include <cstdint>

namespace orrery::builtin {

namespace {

/// The limit is that of an unpacked .xlsx workbook: the whole file is held in memory.
void CheckSize(const std::filesystem::path& path)
{
    constexpr std::uint64_t kMax = std::uint64_t{1} << 30U;
    if (util::InputFile(path).Size() > kMax)
        throw util::Error(book::ErrorKind::TooLargeUnpacked, util::FromPath(path),
                          "more than 1 GiB");
}

std::unique_ptr<book::Workbook> OpenByContent(const std::filesystem::path& path)
{
    switch (engines::DetectFileKind(path)) {
    case engines::FileKind::Compound:
        CheckSize(path);
        return std::make_unique<xls::Workbook>(path);
    case engines::FileKind::OldSheet:
        throw util::Error(book::ErrorKind::OldBinaryFormat, util::FromPath(path));
    case engines::FileKind::Other:
        break;
    }
    return std::make_unique<xlsx::Workbook>(path);
}

} // namespace

std::unique_ptr<book::Workbook> OpenWorkbookFile(const std::filesystem::path& path)
{
    return WithErrorPath(path, [&] { return OpenByContent(path); });
}

} // namespace orrery::builtin
