// Which engine does the work, and the message if there is no Excel.
#include "automation/registry.h"
#include "automation/wide_text.h"
#include "engines/engine_choice.h"
#include "engines/excel/application.h"
#include "excel_test/run_test.h"
#include "places/places.h"
#include "util/error_text.h"

#include <windows.h>

#include <fstream>

using namespace orrery;
using namespace orrery::excel_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class EngineChoiceWithExcelTest : public RunTest {
protected:
    Starter Installed(const std::string& name)
    {
        return [this, name] { return engines_.Start(name, {}); };
    }

    engines::InstalledEngines engines_;
};

TEST_F(EngineChoiceWithExcelTest, AutoIsExcelIfItIsRegistered)
{
    EXPECT_TRUE(excel::IsInstalled());
    EXPECT_EQ(engines_.Resolve("auto"), "excel");
    EXPECT_EQ(engines_.Resolve("excel"), "excel");
    EXPECT_EQ(engines_.Resolve("builtin"), "builtin");
    EXPECT_EQ(Run(Installed("auto")), util::FromPath(Target()));
    EXPECT_TRUE(server_.Has("Application begins"));
    TestServer::CloseAll();
}

TEST_F(EngineChoiceWithExcelTest, BuiltInStartsNoExcel)
{
    EXPECT_EQ(Run(Installed("builtin")), util::FromPath(Target()));
    EXPECT_THAT(server_.Lines(), IsEmpty());
}

TEST_F(EngineChoiceWithExcelTest, AutoIsBuiltInIfExcelIsNotRegistered)
{
    TestServer::Unregister();
    EXPECT_FALSE(excel::IsInstalled());
    EXPECT_EQ(engines_.Resolve("auto"), "builtin");
    EXPECT_EQ(Run(Installed("auto")), util::FromPath(Target()));
    EXPECT_THAT(server_.Lines(), IsEmpty());
}

TEST_F(EngineChoiceWithExcelTest, MissingExcelIsOneSentenceThatSuggestsTheBuiltInEngine)
{
    TestServer::Unregister();
    EXPECT_EQ(Run(StartExcel), std::nullopt);
    EXPECT_THAT(observer_.reports, ElementsAre(HasSubstr("\"builtin\"")));
    EXPECT_FALSE(observer_.hourglass);
}

TEST_F(EngineChoiceWithExcelTest, RegistrationThatLeadsNowhereCountsAsMissing)
{
    const std::string key =
        "Software\\Classes\\CLSID\\" +
        automation::ReadText(HKEY_LOCAL_MACHINE, "Software\\Classes\\Excel.Application\\CLSID",
                             "") +
        "\\LocalServer32";
    automation::WriteText(HKEY_LOCAL_MACHINE, key, "", "\"C:\\gone\\EXCEL.EXE\" /automation");
    EXPECT_EQ(Run(StartExcel), std::nullopt);
    EXPECT_THAT(observer_.reports, ElementsAre(HasSubstr("\"builtin\"")));
    TestServer::Unregister();
}

/// Runs the command-line program and returns its standard output.
std::string RunProgram(const std::string& arguments, const std::filesystem::path& output)
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const HANDLE file = CreateFileW(output.c_str(), GENERIC_WRITE, 0, &inherited, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = file;
    startup.hStdError = file;
    std::wstring command = L'"' + std::filesystem::absolute(places::ConsoleProgram()).wstring() +
                           L"\" " + automation::Wide(arguments);
    PROCESS_INFORMATION process = {};
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                               &startup, &process));
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    CloseHandle(file);
    std::ifstream written(output, std::ios::binary);
    return {std::istreambuf_iterator<char>(written), {}};
}

class ProgramWithExcelTest : public RunTest {
protected:
    std::string Generate(const std::string& options)
    {
        const auto quoted = [](const std::filesystem::path& path) {
            return '"' + util::FromPath(path) + '"';
        };
        return RunProgram("generate " + quoted(folder_ / "Desk.xlsx") + " 2024 --output-folder " +
                              quoted(folder_ / "out") + ' ' + options,
                          folder_ / "printed.txt");
    }
};

TEST_F(ProgramWithExcelTest, JsonSaysWhichEngineRan)
{
    EXPECT_THAT(Generate("--engine excel --json"), HasSubstr("\"engine\":\"excel\""));
    EXPECT_TRUE(server_.Has("Application#1 released"));
    EXPECT_TRUE(std::filesystem::exists(Target()));
    TestServer::CloseAll();
    EXPECT_THAT(Generate("--json"), HasSubstr("\"engine\":\"excel\"")) << "auto";
    TestServer::CloseAll();
    EXPECT_THAT(Generate("--engine builtin --json"), HasSubstr("\"engine\":\"builtin\""));
    TestServer::Unregister();
    EXPECT_THAT(Generate("--json"), HasSubstr("\"engine\":\"builtin\"")) << "auto";
    EXPECT_THAT(Generate("--engine excel"), HasSubstr("choose the engine \"builtin\""));
}

} // namespace
