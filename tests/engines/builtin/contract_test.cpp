#include "engines/builtin/application.h"

#include "book/spreadsheet_contract.h"
#include "places/places.h"
#include "saved_sheets.h"

#include <filesystem>

using namespace orrery;

namespace {

const std::filesystem::path kTests = places::SourceFolder() / "tests/engines/builtin";
const auto kTemplate = kTests / "xlsx" / "data" / "contract.xlsx";

contract::Engine XlsxContract()
{
    contract::Engine engine;
    engine.name = "BuiltInXlsx";
    engine.extension = ".xlsx";
    engine.rows = 1048576;
    engine.columns = 16384;
    engine.start = [] { return builtin::CreateApplication({}); };
    engine.makeTemplate = [](const std::filesystem::path& path) {
        std::filesystem::copy_file(kTemplate, path);
    };
    engine.read = test::ReadXlsx;
    return engine;
}

contract::Engine XlsContract()
{
    contract::Engine engine;
    engine.name = "BuiltInXls";
    engine.extension = ".xls";
    engine.rows = 65536;
    engine.columns = 256;
    engine.start = [] { return builtin::CreateApplication({}); };
    engine.makeTemplate = [](const std::filesystem::path& path) {
        std::filesystem::copy_file(kTests / "xls" / "data" / "contract.xls", path);
    };
    engine.read = test::ReadXls;
    return engine;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(BuiltIn, SpreadsheetContract,
                         testing::Values(XlsxContract(), XlsContract()), contract::NameOf);

TEST(BuiltInApplicationTest, BecomingVisibleOpensWhatWasSavedLast)
{
    const auto target = std::filesystem::path(testing::TempDir()) / "opened.xlsx";
    std::vector<std::filesystem::path> opened;
    const auto application = builtin::CreateApplication(
        [&](const std::filesystem::path& path) { opened.push_back(path); });
    application->SetVisible(true);
    EXPECT_TRUE(opened.empty()) << "nothing was saved yet";
    application->SetVisible(false);
    application->OpenWorkbook(kTemplate, true).SaveAs(target, book::AccessMode::NoChange);
    EXPECT_TRUE(opened.empty());
    application->SetVisible(true);
    EXPECT_EQ(opened, std::vector{target});
    EXPECT_TRUE(application->Visible());
    std::filesystem::remove(target);
}
