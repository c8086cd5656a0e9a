#include "engines/libreoffice/plugin/office_application.h"

#include "book/spreadsheet_contract.h"
#include "engines/builtin/saved_sheets.h"
#include "office.h"
#include "places/places.h"

#include <filesystem>

using namespace orrery;

namespace {

const std::filesystem::path kTemplates = places::SourceFolder() / "tests/engines/builtin";

contract::Engine LibreOfficeContract(const std::string& format)
{
    contract::Engine engine;
    engine.extension = "." + format;
    engine.start = [] {
        return std::make_unique<libreoffice::OfficeApplication>(libreoffice::test::Options());
    };
    engine.makeTemplate = [format](const std::filesystem::path& path) {
        std::filesystem::copy_file(kTemplates / format / "data" / ("contract." + format), path);
    };
    return engine;
}

contract::Engine XlsxContract()
{
    auto engine = LibreOfficeContract("xlsx");
    engine.name = "LibreOfficeXlsx";
    engine.rows = 1048576;
    engine.columns = 16384;
    engine.read = orrery::test::ReadXlsx;
    return engine;
}

contract::Engine XlsContract()
{
    auto engine = LibreOfficeContract("xls");
    engine.name = "LibreOfficeXls";
    engine.rows = 65536;
    engine.columns = 256;
    engine.read = orrery::test::ReadXls;
    return engine;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(LibreOffice, SpreadsheetContract,
                         testing::Values(XlsxContract(), XlsContract()), contract::NameOf);
