// What happens to a run when the application fails, is busy, hangs or dies.
#include "engines/excel/application.h"
#include "engines/excel/excel_application.h"
#include "excel_test/client.h"
#include "excel_test/run_test.h"
#include "util/file_read.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <thread>

using namespace orrery;
using namespace orrery::excel_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class ExcelFailureTest : public RunTest {
protected:
    /// Checks that the run ended without a workbook and left neither a process nor an output file.
    void ExpectNothingLeft(const std::optional<std::string>& saved)
    {
        EXPECT_EQ(saved, std::nullopt);
        EXPECT_FALSE(observer_.hourglass);
        EXPECT_TRUE(TestServer::WaitForProcesses(0));
        EXPECT_FALSE(std::filesystem::exists(Target()));
    }

    std::string OpenSentence() const
    {
        return "Failed to open the calendar file \"" + util::FromPath(Target()) + "\".\r\n";
    }
};

TEST_F(ExcelFailureTest, TemplateThatCannotBeOpenedQuitsTheApplication)
{
    TestServer::SetFaults({"fail Workbooks.Open 1 The workbook is open elsewhere."});
    ExpectNothingLeft(Run(StartExcel));
    EXPECT_THAT(observer_.reports, ElementsAre(OpenSentence() + "The workbook is open elsewhere."));
    EXPECT_TRUE(server_.Has("Application#1.Visible get () -> VT_BOOL false"));
    EXPECT_TRUE(server_.Has("Application#1.Quit call ()"));
    EXPECT_TRUE(server_.Has("Application ends: it was told to"));
}

TEST_F(ExcelFailureTest, TemplateThatIsNotAWorkbookIsReportedInTheApplicationsWords)
{
    folder_.Write("Desk.xlsx", "plain text");
    ExpectNothingLeft(Run(StartExcel));
    ASSERT_THAT(observer_.reports, SizeIs(1));
    EXPECT_THAT(observer_.reports.front(), HasSubstr("is not a workbook"));
}

TEST_F(ExcelFailureTest, TemplateThatAsksForAPasswordNeverReachesTheApplication)
{
    std::filesystem::copy_file(
        places::SourceFolder() / "tests/engines/libreoffice/data/password.xlsx",
        folder_ / "Desk.xlsx", std::filesystem::copy_options::overwrite_existing);
    ExpectNothingLeft(Run(StartExcel));
    EXPECT_THAT(observer_.reports,
                ElementsAre(OpenSentence() + '"' + util::FromPath(folder_ / "Desk.xlsx") +
                            "\" is protected by a password. Remove the password in the spreadsheet "
                            "program and try again."));
    EXPECT_EQ(server_.Count("Workbooks.Open"), 0);
    EXPECT_TRUE(server_.Has("Application#1.Quit call ()"));
}

TEST_F(ExcelFailureTest, TemplateOfAnotherKindThanItsNameSaysNeverReachesTheApplication)
{
    std::filesystem::copy_file(XlsTemplate(), folder_ / "Desk.xlsx",
                               std::filesystem::copy_options::overwrite_existing);
    ExpectNothingLeft(Run(StartExcel));
    EXPECT_THAT(observer_.reports,
                ElementsAre(testing::AllOf(testing::StartsWith(OpenSentence()),
                                           HasSubstr("another kind than its name says: .xls."))));
    EXPECT_EQ(server_.Count("Workbooks.Open"), 0);
}

TEST_F(ExcelFailureTest, OutputPathThatIsTooLongIsReportedBeforeAnythingIsStarted)
{
    const auto start = [this](const generate::GenerateJob& job) {
        return engines::CreateApplication(engines::EngineChoice::Excel,
                                          {{}, generate::FilesOf(job)});
    };
    const std::string folder = util::WithTrailingSeparator(util::FromPath(folder_.Path()));
    const std::string name = "2024Desk.xlsx";
    const auto output = [&](std::size_t length) {
        return folder + std::string(length - folder.size() - 1 - name.size(), 'x') +
               util::kSeparator;
    };
    std::filesystem::create_directory(util::ToPath(output(219)));
    std::ofstream(util::ToPath(output(219) + name)) << "last year's";
    const auto tooLong =
        generate::RunGenerate({"2024", "Desk.xlsx", folder, output(219)}, sets_, start, context_);
    EXPECT_FALSE(tooLong);
    EXPECT_THAT(
        observer_.reports,
        ElementsAre('"' + output(219) + name +
                    "\" is too long a path: Excel takes 218 characters at most. Use folders "
                    "with shorter names, or choose the engine \"builtin\"."));
    EXPECT_THAT(server_.Lines(), IsEmpty());
    EXPECT_EQ(util::ReadFile(util::ToPath(output(219) + name)), "last year's");
    EXPECT_TRUE(
        generate::RunGenerate({"2024", "Desk.xlsx", folder, output(218)}, sets_, start, context_));
    EXPECT_THAT(observer_.reports, SizeIs(1));
    TestServer::CloseAll();
}

TEST_F(ExcelFailureTest, MacrosAreSwitchedOnAgainWhenATemplateCannotBeOpened)
{
    TestServer::SetFaults({"fail Workbooks.Open 1 No."});
    ExpectNothingLeft(Run(StartExcel));
    EXPECT_EQ(server_.Count("Application#1.AutomationSecurity put (VT_I4 3)"), 1);
    EXPECT_EQ(server_.Count("Application#1.AutomationSecurity put (VT_I4 1)"), 1);
}

TEST_F(ExcelFailureTest, TemplateIsNotOpenedIfMacrosCannotBeSwitchedOff)
{
    TestServer::SetFaults({"fail Application.AutomationSecurity 1 Not allowed."});
    ExpectNothingLeft(Run(StartExcel));
    EXPECT_THAT(observer_.reports, ElementsAre(OpenSentence() + "Not allowed."));
    EXPECT_EQ(server_.Count("Workbooks.Open"), 0);
}

TEST_F(ExcelFailureTest, FailureWithoutADescriptionGetsOne)
{
    TestServer::SetFaults({"answer Workbooks.Open 1 1 0x80070005"});
    ExpectNothingLeft(Run(StartExcel));
    ASSERT_THAT(observer_.reports, SizeIs(1));
    EXPECT_GT(observer_.reports.front().size(), OpenSentence().size());
}

TEST_F(ExcelFailureTest, SaveThatFailsQuitsTheApplication)
{
    TestServer::SetFaults({"fail Workbook.SaveAs 1 The disk is full."});
    ExpectNothingLeft(Run(StartExcel));
    EXPECT_THAT(observer_.reports,
                ElementsAre("Failed to save the calendar file.\r\nThe disk is full."));
    EXPECT_TRUE(server_.Has("Application#1.Quit call ()"));
    EXPECT_TRUE(server_.Has("Application ends: it was told to"));
}

TEST_F(ExcelFailureTest, CellThatFailsEndsOnlyItsMonth)
{
    TestServer::SetFaults({"fail Range.Value 40 The cell is protected."});
    EXPECT_EQ(Run(StartExcel), util::FromPath(Target()));
    EXPECT_THAT(observer_.reports,
                ElementsAre("Error in filling data(2024-2).\r\nThe cell is protected."));
    EXPECT_EQ(TestServer::Processes().size(), 1U);
    TestServer::CloseAll();
}

TEST_F(ExcelFailureTest, MissingSheetIsReportedAndTheRunContinues)
{
    sets_.Monthly.SheetName = "Nowhere";
    EXPECT_EQ(Run(StartExcel), util::FromPath(Target()));
    EXPECT_THAT(observer_.reports, ElementsAre("The sheet Nowhere does not exist."));
    TestServer::CloseAll();
}

TEST_F(ExcelFailureTest, QuitThatFailsLeavesNoProcess)
{
    TestServer::SetFaults(
        {"fail Workbook.SaveAs 1 The disk is full.", "fail Application.Quit 1 Not now."});
    ExpectNothingLeft(Run(StartExcel));
}

TEST_F(ExcelFailureTest, BusyApplicationIsWaitedFor)
{
    TestServer::SetFaults(
        {"answer Worksheet.Cells 5 3 0x800AC472", "answer Workbooks.Open 1 1 0x80010001",
         "answer Workbook.SaveAs 1 2 0x8001010A", "answer Application.Visible 1 1 0x800AC472"});
    EXPECT_EQ(Run(StartExcel), util::FromPath(Target()));
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_EQ(server_.Count("-> answers 0x800AC472"), 4);
    EXPECT_EQ(server_.Count("-> answers 0x80010001"), 1);
    EXPECT_EQ(server_.Count("-> answers 0x8001010A"), 2);
    TestServer::CloseAll();
}

TEST_F(ExcelFailureTest, MessageFilterOfTheApplicationIsWaitedFor)
{
    TestServer::SetFaults({"reject Workbooks.Open 1 3", "retry Range.Value 20 2"});
    EXPECT_EQ(Run(StartExcel), util::FromPath(Target()));
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_EQ(server_.Count("Filter rejects a call"), 3);
    EXPECT_EQ(server_.Count("Filter asks to retry later"), 2);
    TestServer::CloseAll();
}

/// Time that passes only in pauses.
class PausedClock : public excel::Clock {
public:
    explicit PausedClock(std::chrono::milliseconds& passed) : passed_(passed) {}
    std::chrono::milliseconds Now() const override { return passed_; }
    void Pause(std::chrono::milliseconds time) override { passed_ += time; }

private:
    std::chrono::milliseconds& passed_;
};

/// Starts an instance as the engine does, but with another clock.
std::unique_ptr<book::Application> StartWithClock(std::chrono::milliseconds& passed)
{
    const auto start = [] {
        excel::Pointer<IDispatch> object;
        const automation::Variant application = StartServer();
        EXPECT_NE(application.AsObject(), nullptr);
        application.AsObject()->QueryInterface(IID_IDispatch, object.ReceiveAny());
        return excel::Instance{std::move(object), TestServer::Process()};
    };
    return std::make_unique<excel::ExcelApplication>(start, std::make_unique<PausedClock>(passed));
}

class ExcelBusyTest : public ExcelFailureTest,
                      public testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(ExcelBusyTest, OneThatStaysBusyIsGivenUpAfterAMinuteWithOneReport)
{
    TestServer::SetFaults({std::string("answer Worksheet.Cells 20 1000000 ") + GetParam().second});
    std::chrono::milliseconds passed{0};
    ExpectNothingLeft(Run([&] { return StartWithClock(passed); }));
    ASSERT_THAT(observer_.reports, SizeIs(1));
    EXPECT_THAT(observer_.reports.front(), HasSubstr("Error in filling data(2024-1).\r\n"));
    EXPECT_THAT(observer_.reports.front(), HasSubstr("busy"));
    EXPECT_GE(passed, std::chrono::seconds(59));
    EXPECT_LE(passed, std::chrono::seconds(62));
}

INSTANTIATE_TEST_SUITE_P(Answers, ExcelBusyTest,
                         testing::Values(std::pair{"Rejected", "0x80010001"},
                                         std::pair{"RetryLater", "0x8001010A"},
                                         std::pair{"CellIsEdited", "0x800AC472"}),
                         [](const auto& instance) { return std::string(instance.param.first); });

struct Death {
    const char* name;
    const char* order;
    bool saved = false; ///< the workbook had been saved
};

class ExcelDeathTest : public ExcelFailureTest, public testing::WithParamInterface<Death> {};

TEST_P(ExcelDeathTest, EndsTheRunWithOneReportAndNoProcess)
{
    TestServer::SetFaults({std::string("die ") + GetParam().order});
    const auto saved = Run(StartExcel);
    EXPECT_EQ(server_.Count("-> dies"), 1);
    EXPECT_THAT(observer_.reports, SizeIs(1));
    EXPECT_FALSE(observer_.hourglass);
    EXPECT_TRUE(TestServer::WaitForProcesses(0));
    EXPECT_EQ(std::filesystem::exists(Target()), GetParam().saved);
    EXPECT_EQ(saved.has_value(), GetParam().saved);
}

INSTANTIATE_TEST_SUITE_P(
    Members, ExcelDeathTest,
    testing::Values(
        Death{"FirstSwitch", "Application.DisplayAlerts 1"},
        Death{"LastSwitchOff", "Application.ScreenUpdating 1"},
        Death{"Workbooks", "Application.Workbooks 1"},
        Death{"MacrosOff", "Application.AutomationSecurity 1"},
        Death{"MacrosOn", "Application.AutomationSecurity 2"}, Death{"Open", "Workbooks.Open 1"},
        Death{"Worksheets", "Workbook.Worksheets 1"}, Death{"MonthlySheet", "Sheets._Default 1"},
        Death{"YearlySheet", "Sheets._Default 2"}, Death{"FirstName", "Worksheet.Name 1"},
        Death{"FifthName", "Worksheet.Name 5"}, Death{"Copy", "Worksheet.Copy 3"},
        Death{"NextOfCopy", "Worksheet.Next 3"}, Death{"NextMonth", "Worksheet.Next 14"},
        Death{"FirstCell", "Worksheet.Cells 1"}, Death{"CellOfMay", "Worksheet.Cells 130"},
        Death{"CellOfYear", "Worksheet.Cells 500"}, Death{"Value", "Range.Value 100"},
        Death{"YearlyName", "Worksheet.Name 13"}, Death{"SaveAs", "Workbook.SaveAs 1"},
        Death{"FirstSwitchOn", "Application.Interactive 2", true},
        Death{"BecomesVisible", "Application.Visible 2", true},
        Death{"LastSwitchOn", "Application.DisplayAlerts 2", true},
        Death{"IsVisible", "Application.Visible 3", true}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_F(ExcelFailureTest, DeathAtQuitLeavesTheReportOfTheFailureBefore)
{
    TestServer::SetFaults(
        {"fail Workbooks.Open 1 The workbook is open elsewhere.", "die Application.Quit 1"});
    ExpectNothingLeft(Run(StartExcel));
    ASSERT_THAT(observer_.reports, testing::Not(IsEmpty()));
    EXPECT_EQ(observer_.reports.front(), OpenSentence() + "The workbook is open elsewhere.");
}

/// Its user ends an application that hangs, for want of another way.
TEST_F(ExcelFailureTest, HangingApplicationThatIsEndedEndsTheRun)
{
    TestServer::SetFaults({"hang Range.Value 50"});
    std::thread user([this] {
        while (server_.Count("-> hangs") == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        TestServer::KillAll();
    });
    ExpectNothingLeft(Run(StartExcel));
    user.join();
    EXPECT_THAT(observer_.reports, ElementsAre(HasSubstr("Error in filling data(2024-2).\r\n")));
}

/// A user who gives up when Excel hangs for a while; its start alone may take longer.
class ShortPatience : public book::Patience {
public:
    explicit ShortPatience(const TestServer& server) : server_(server) {}
    void OnWaiting(std::chrono::milliseconds time) noexcept override
    {
        longest = std::max(longest, time);
        if (time > std::chrono::milliseconds(700) && server_.Count("-> hangs") > 0)
            GiveUp();
    }
    std::chrono::milliseconds longest{0}; ///< time of a call

private:
    const TestServer& server_;
};

/// An Excel that does not answer, and is given up.
class ExcelCancelTest : public ExcelFailureTest {
protected:
    std::optional<std::string> RunWith(book::Patience& patience)
    {
        return Run([&patience] {
            return engines::CreateApplication(engines::EngineChoice::Excel, {{}, {}, &patience});
        });
    }
};

TEST_F(ExcelCancelTest, CancelEndsAnExcelThatDoesNotAnswerWithOneReport)
{
    TestServer::SetFaults({"hang Range.Value 50"});
    ShortPatience patience(server_);
    ExpectNothingLeft(RunWith(patience));
    EXPECT_THAT(observer_.reports,
                ElementsAre("Error in filling data(2024-2).\r\n\"Excel\" does not answer any more: "
                            "the run was cancelled. Generate the calendar again."));
}

TEST_F(ExcelCancelTest, CancelEndsAnExcelThatDoesNotAnswerAtItsStart)
{
    TestServer::SetFaults({"hang Class.Create 1"});
    ShortPatience patience(server_);
    ExpectNothingLeft(RunWith(patience));
    EXPECT_THAT(observer_.reports, ElementsAre("\"Excel\" does not answer any more: the run was "
                                               "cancelled. Generate the calendar again."));
}

TEST_F(ExcelCancelTest, InterruptFromAnotherThreadEndsExcelInTheMiddleOfACall)
{
    TestServer::SetFaults({"hang Workbook.SaveAs 1"});
    book::Patience patience;
    std::thread user([this, &patience] {
        while (server_.Count("-> hangs") == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_TRUE(patience.GiveUp());
    });
    ExpectNothingLeft(RunWith(patience));
    user.join();
    EXPECT_THAT(observer_.reports,
                ElementsAre(testing::AllOf(testing::StartsWith("Failed to save the calendar file."),
                                           HasSubstr("the run was cancelled"))));
}

TEST_F(ExcelCancelTest, InterruptBetweenCallsEndsTheRunAtTheNextOne)
{
    book::Patience patience;
    observer_.monthDone = [&patience](generate::CalendarKind kind, std::int16_t month) {
        if (kind == generate::CalendarKind::Monthly && month == 3)
            patience.GiveUp();
    };
    ExpectNothingLeft(RunWith(patience));
    EXPECT_THAT(observer_.reports, ElementsAre(HasSubstr("the run was cancelled")));
}

TEST_F(ExcelCancelTest, ShortCallsAskForNoPatience)
{
    ShortPatience patience(server_);
    EXPECT_EQ(RunWith(patience), util::FromPath(Target()));
    EXPECT_LT(patience.longest, std::chrono::seconds(20));
    EXPECT_FALSE(patience.GiveUp()) << "the calendar is the user's";
    EXPECT_THAT(observer_.reports, IsEmpty());
    TestServer::CloseAll();
}

TEST_F(ExcelFailureTest, NextRunWorksAfterADeath)
{
    TestServer::SetFaults({"die Worksheet.Cells 10"});
    EXPECT_EQ(Run(StartExcel), std::nullopt);
    TestServer::SetFaults({});
    EXPECT_EQ(Run(StartExcel), util::FromPath(Target()));
    EXPECT_THAT(observer_.reports, SizeIs(1));
    TestServer::CloseAll();
}

/// Windows may open what the user double-clicks in the instance of a run.
class SharedExcelTest : public ExcelFailureTest {
protected:
    /// A fault: the user opens a workbook at this call.
    std::string UserOpensAt(const std::string& call) const
    {
        const auto path = folder_.Path() / "Mine.xlsx";
        std::filesystem::copy_file(XlsxTemplate(), path);
        return "open " + call + ' ' + util::FromPath(path);
    }
    /// Checks that the instance shows the user's workbook, and only that.
    void ExpectLeftToItsUser()
    {
        EXPECT_EQ(server_.Count("The user opens "), 1);
        ExpectLeft();
    }
    /// The same of an instance that need not have another workbook.
    void ExpectLeft()
    {
        EXPECT_EQ(server_.Count("Workbook#1.Close call (VT_BOOL false)"), 1);
        EXPECT_EQ(server_.Count(".Quit"), 0);
        for (const char* const name : {"Interactive", "ScreenUpdating", "Visible", "DisplayAlerts"})
            EXPECT_TRUE(server_.Has(std::string("Application#1.") + name + " put (VT_BOOL true)"))
                << name;
        EXPECT_FALSE(TestServer::WaitForProcesses(0, std::chrono::milliseconds(500)));
        TestServer::CloseAll();
    }
};

TEST_F(SharedExcelTest, FailedSaveLeavesTheWorkbookOfTheUserOpen)
{
    TestServer::SetFaults(
        {UserOpensAt("Worksheet.Copy 3"), "fail Workbook.SaveAs 1 The disk is full."});
    EXPECT_EQ(Run(StartExcel), std::nullopt);
    EXPECT_THAT(observer_.reports,
                ElementsAre("Failed to save the calendar file.\r\nThe disk is full."));
    EXPECT_FALSE(std::filesystem::exists(Target()));
    ExpectLeftToItsUser();
}

TEST_F(SharedExcelTest, RunThatBreaksOffLeavesTheWorkbookOfTheUserOpen)
{
    TestServer::SetFaults(
        {UserOpensAt("Worksheet.Copy 3"), "fail Application.Interactive 2 Not now."});
    EXPECT_EQ(Run(StartExcel), util::FromPath(Target())) << "it was saved before";
    EXPECT_THAT(observer_.reports, ElementsAre("Not now."));
    ExpectLeftToItsUser();
}

TEST_F(SharedExcelTest, SwitchesAreOnAlthoughOurWorkbookCannotBeClosed)
{
    TestServer::SetFaults({UserOpensAt("Worksheet.Copy 3"),
                           "fail Workbook.SaveAs 1 The disk is full.",
                           "fail Workbook.Close 1 Not now."});
    EXPECT_EQ(Run(StartExcel), std::nullopt);
    EXPECT_THAT(observer_.reports,
                ElementsAre("Failed to save the calendar file.\r\nThe disk is full.", "Not now."));
    ExpectLeftToItsUser();
}

TEST_F(SharedExcelTest, InstanceThatShowsAWindowIsLeftToItsUser)
{
    TestServer::SetFaults({"show Worksheet.Copy 4", "fail Workbook.SaveAs 1 The disk is full."});
    EXPECT_EQ(Run(StartExcel), std::nullopt);
    EXPECT_THAT(observer_.reports,
                ElementsAre("Failed to save the calendar file.\r\nThe disk is full."));
    ExpectLeft();
}

TEST_F(SharedExcelTest, InterruptedRunGivesTheInstanceBackToItsUser)
{
    TestServer::SetFaults({UserOpensAt("Worksheet.Copy 3"), "show Worksheet.Copy 4"});
    book::Patience patience;
    observer_.monthDone = [&patience](generate::CalendarKind kind, std::int16_t month) {
        if (kind == generate::CalendarKind::Monthly && month == 3)
            patience.GiveUp();
    };
    EXPECT_EQ(
        Run([&patience] {
            return engines::CreateApplication(engines::EngineChoice::Excel, {{}, {}, &patience});
        }),
        std::nullopt);
    EXPECT_THAT(observer_.reports, ElementsAre(HasSubstr("the run was cancelled")));
    EXPECT_FALSE(std::filesystem::exists(Target()));
    ExpectLeftToItsUser();
}

TEST_F(SharedExcelTest, BusyInstanceThatIsGivenUpIsLeftIfItShowsAWorkbook)
{
    TestServer::SetFaults({UserOpensAt("Worksheet.Copy 3"), "show Worksheet.Copy 4",
                           "answer Worksheet.Cells 20 1000000 0x80010001"});
    std::chrono::milliseconds passed{0};
    EXPECT_EQ(Run([&] { return StartWithClock(passed); }), std::nullopt);
    EXPECT_THAT(observer_.reports, SizeIs(1));
    EXPECT_EQ(TestServer::Processes().size(), 1U);
}

/// The call is cancelled then, but not under Wine: there the user ends Excel.
TEST_F(SharedExcelTest, CancelLeavesAnInstanceThatShowsAWorkbook)
{
    TestServer::SetFaults(
        {UserOpensAt("Worksheet.Copy 3"), "show Worksheet.Copy 4", "hang Range.Value 50"});
    ShortPatience patience(server_);
    std::thread user([&patience] {
        while (!patience.IsOver())
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        EXPECT_EQ(TestServer::Processes().size(), 1U) << "it was ended";
        TestServer::KillAll();
    });
    EXPECT_EQ(
        Run([&patience] {
            return engines::CreateApplication(engines::EngineChoice::Excel, {{}, {}, &patience});
        }),
        std::nullopt);
    user.join();
    EXPECT_THAT(observer_.reports, ElementsAre(HasSubstr("the run was cancelled")));
}

TEST_F(SharedExcelTest, FinishedCalendarIsBesideTheWorkbookOfTheUser)
{
    TestServer::SetFaults({UserOpensAt("Worksheet.Copy 3")});
    EXPECT_EQ(Run(StartExcel), util::FromPath(Target()));
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_EQ(server_.Count(".Close"), 0);
    TestServer::CloseAll();
}

TEST_F(ExcelFailureTest, InstanceOfTheUserIsLeftAlone)
{
    const Apartment apartment;
    const auto ofUser = StartServer();
    ASSERT_NE(ofUser.AsObject(), nullptr);
    EXPECT_EQ(Put(ofUser, "Visible", automation::Variant::Boolean(true)).result, S_OK);
    TestServer::SetFaults({"die Worksheet.Cells 10"});
    EXPECT_EQ(Run(StartExcel), std::nullopt);
    EXPECT_TRUE(TestServer::WaitForProcesses(1));
    EXPECT_EQ(Get(ofUser, "Name").value.AsText(), "Microsoft Excel");
}

} // namespace
