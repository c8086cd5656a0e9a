#include "engines/builtin/structure_protection.h"

#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/workbook_part.h"
#include "util/error.h"

namespace orrery::builtin {

bool HasProtectedStructure(const std::filesystem::path& path)
{
    try {
        const xlsx::Package package(path);
        const std::string& part = package.MainPart();
        return xlsx::WorkbookPart(package.ReadXml(part), part).IsStructureProtected();
    }
    catch (const util::Error&) { // other programs repair some damaged files
        return false;
    }
}

} // namespace orrery::builtin
