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

/// The command-line program with these arguments. Its output goes to a file.
class StartedProgram {
public:
    StartedProgram(const std::string& arguments, std::filesystem::path output, DWORD flags = 0)
        : output_(std::move(output))
    {
        SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
        // The program's console, which outlives it for a moment, may hold the file, too.
        const HANDLE file =
            CreateFileW(output_.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                        &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = file;
        startup.hStdError = file;
        std::wstring command = L'"' +
                               std::filesystem::absolute(places::ConsoleProgram()).wstring() +
                               L"\" " + automation::Wide(arguments);
        EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, flags, nullptr,
                                   nullptr, &startup, &process_));
        CloseHandle(file);
    }
    ~StartedProgram()
    {
        CloseHandle(process_.hProcess);
        CloseHandle(process_.hThread);
    }
    StartedProgram(const StartedProgram&) = delete;
    StartedProgram& operator=(const StartedProgram&) = delete;

    DWORD Id() const { return process_.dwProcessId; }
    /// Waits for the end and returns the exit code.
    DWORD ExitCode() const
    {
        WaitForSingleObject(process_.hProcess, INFINITE);
        DWORD code = 0;
        GetExitCodeProcess(process_.hProcess, &code);
        return code;
    }
    /// Waits for the end and returns what was printed.
    std::string Output() const
    {
        ExitCode();
        std::ifstream written(output_, std::ios::binary);
        return {std::istreambuf_iterator<char>(written), {}};
    }

private:
    std::filesystem::path output_;
    PROCESS_INFORMATION process_ = {};
};

class ProgramWithExcelTest : public RunTest {
protected:
    std::string Generate(const std::string& options)
    {
        return StartedProgram(Arguments("2024", options), folder_ / "printed.txt").Output();
    }
    std::string Arguments(const std::string& years, const std::string& options) const
    {
        const auto quoted = [](const std::filesystem::path& path) {
            return '"' + util::FromPath(path) + '"';
        };
        return "generate " + quoted(folder_ / "Desk.xlsx") + ' ' + years + " --output-folder " +
               quoted(folder_ / "out") + ' ' + options;
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

/// Presses Ctrl+C in the console of a process, which has one of its own.
void PressCtrlC(DWORD process)
{
    FreeConsole();
    ASSERT_TRUE(AttachConsole(process));
    SetConsoleCtrlHandler(nullptr, TRUE); // not for this program, which is in the console now
    EXPECT_TRUE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0));
    FreeConsole();
    AttachConsole(ATTACH_PARENT_PROCESS);
    SetConsoleCtrlHandler(nullptr, FALSE);
}

TEST_F(ProgramWithExcelTest, CtrlCEndsAnExcelThatDoesNotAnswerAndTheCommand)
{
    TestServer::SetFaults({"hang Range.Value 50"});
    const StartedProgram program(Arguments("2024-2030", "--engine excel"), folder_ / "printed.txt",
                                 CREATE_NO_WINDOW);
    while (server_.Count("-> hangs") == 0)
        Sleep(20);
    PressCtrlC(program.Id());
    EXPECT_EQ(program.ExitCode(), 1U);
    EXPECT_THAT(program.Output(), HasSubstr("the run was cancelled"));
    EXPECT_EQ(server_.Count("Application begins"), 1) << "no other year was begun";
    EXPECT_TRUE(TestServer::WaitForProcesses(0));
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "out"));
}

} // namespace
