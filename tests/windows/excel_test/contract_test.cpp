#include "book/spreadsheet_contract.h"
#include "engines/excel/application.h"
#include "excel_test/test_server.h"
#include "excel_test/workbooks.h"
#include "saved_sheets.h"

using namespace orrery;

namespace {

/// Registers the server for all tests of the program, each of which starts its own instance.
class RegisteredServer : public testing::Environment {
public:
    void SetUp() override { server_ = std::make_unique<excel_test::TestServer>(); }
    void TearDown() override
    {
        EXPECT_TRUE(excel_test::TestServer::WaitForProcesses(0));
        server_.reset();
    }

private:
    std::unique_ptr<excel_test::TestServer> server_;
};

const testing::Environment* const kServer =
    testing::AddGlobalTestEnvironment(new RegisteredServer); // the framework deletes it

contract::Engine XlsxContract()
{
    contract::Engine engine;
    engine.name = "ExcelXlsx";
    engine.extension = ".xlsx";
    engine.rows = 1048576;
    engine.columns = 16384;
    engine.start = [] {
        excel_test::TestServer::SetLanguage("en");
        return excel::CreateApplication();
    };
    engine.makeTemplate = [](const std::filesystem::path& path) {
        std::filesystem::copy_file(excel_test::XlsxTemplate(), path);
    };
    engine.read = test::ReadXlsx;
    return engine;
}

contract::Engine XlsContract()
{
    contract::Engine engine = XlsxContract();
    engine.name = "ExcelXls";
    engine.extension = ".xls";
    engine.rows = 65536;
    engine.columns = 256;
    engine.makeTemplate = [](const std::filesystem::path& path) {
        std::filesystem::copy_file(excel_test::XlsTemplate(), path);
    };
    engine.read = test::ReadXls;
    return engine;
}

/// An Excel that understands dates, numbers and words in German.
contract::Engine GermanContract()
{
    contract::Engine engine = XlsxContract();
    engine.name = "GermanExcelXlsx";
    engine.start = [] {
        excel_test::TestServer::SetLanguage("de");
        return excel::CreateApplication();
    };
    return engine;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Excel, SpreadsheetContract,
                         testing::Values(XlsxContract(), XlsContract(), GermanContract()),
                         contract::NameOf);
