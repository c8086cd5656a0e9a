#pragma once

#include "book/error.h"
#include "engines/common/file_kind.h"
#include "util/error.h"
#include "util/paths.h"

#include <filesystem>

namespace orrery::builtin {

/// Throws Error(TooLargeUnpacked) for a file over 1 GiB, the limit of an unpacked .xlsx workbook:
/// the whole of an .xls file is held in memory.
void CheckCompoundSize(const std::filesystem::path& path);

/// The result of `openXls(path)` or of `openXlsx(path)`, which have the same type, by the content
/// of the file. Throws Error: OldBinaryFormat, TooLargeUnpacked, and what these throw.
template <typename OpenXls, typename OpenXlsx>
auto OpenByContent(const std::filesystem::path& path, OpenXls openXls, OpenXlsx openXlsx)
{
    switch (engines::DetectFileKind(path)) {
    case engines::FileKind::Compound:
        CheckCompoundSize(path);
        return openXls(path);
    case engines::FileKind::OldSheet:
        throw util::Error(book::ErrorKind::OldBinaryFormat, util::FromPath(path));
    case engines::FileKind::Other:
        break;
    }
    return openXlsx(path);
}

} // namespace orrery::builtin
