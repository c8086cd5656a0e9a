#include "engines/builtin/open_view.h"

#include "engines/builtin/common/error_path.h"
#include "engines/builtin/open_by_content.h"
#include "engines/builtin/xls/look/look.h"
#include "engines/builtin/xlsx/look/look.h"

namespace orrery::builtin {

std::unique_ptr<book::WorkbookView> OpenWorkbookView(const std::filesystem::path& path)
{
    return WithErrorPath(path, [&] { return OpenByContent(path, xls::OpenLook, xlsx::OpenLook); });
}

} // namespace orrery::builtin
