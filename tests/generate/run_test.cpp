#include "generate/run.h"

#include "book/error.h"
#include "book/fake_spreadsheet.h"
#include "generate/run_support.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/scratch_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

using namespace orrery;
using generate::GenerateJob;
using generate::GenerateRequest;
using generate::RequestField;
using std::int16_t;
using Texts = std::vector<std::string>;

namespace fs = std::filesystem;

namespace {

// ---- the checks

struct YearCase {
    const char* name;
    const char* text;
    std::optional<int> expected; ///< nothing if the year is refused
};

class ReadYearTest : public testing::TestWithParam<YearCase> {};

TEST_P(ReadYearTest, AcceptsNumbersFromOne)
{
    const auto year = generate::ReadYear(GetParam().text);
    EXPECT_EQ(year ? std::optional<int>(*year) : std::nullopt, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ReadYearTest,
    testing::Values(YearCase{"Plain", "2024", 2024}, YearCase{"BlanksAround", " 2024 ", 2024},
                    YearCase{"One", "1", 1}, YearCase{"Largest", "32767", 32767},
                    YearCase{"HalfToEven", "2024.5", 2024}, YearCase{"Exponent", "2e3", 2000},
                    YearCase{"Word", "abc", std::nullopt}, YearCase{"Empty", "", std::nullopt},
                    YearCase{"Zero", "0", std::nullopt}, YearCase{"Negative", "-5", std::nullopt},
                    YearCase{"RoundsToZero", "0.5", std::nullopt},
                    YearCase{"TrailingWord", "2024 AD", std::nullopt}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ReadYearTest, OverflowsBeyondSixteenBits)
{
    EXPECT_THROW(generate::ReadYear("40000"), util::OverflowError);
    EXPECT_THROW(generate::ReadYear("32768"), util::OverflowError);
    EXPECT_THROW(generate::ReadYear("-40000"), util::OverflowError);
}

TEST(CheckRequestTest, ChecksTheYearBeforeTheTemplate)
{
    const auto checked = generate::CheckRequest({"abc", "", "t/", "o/"});
    const auto& problem = std::get<generate::RequestProblem>(checked);
    EXPECT_EQ(problem.field, RequestField::Year);
    EXPECT_EQ(problem.message, "Please inupt a year.");
}

TEST(CheckRequestTest, AsksForATemplate)
{
    const auto checked = generate::CheckRequest({"2024", "", "t/", "o/"});
    const auto& problem = std::get<generate::RequestProblem>(checked);
    EXPECT_EQ(problem.field, RequestField::Template);
    EXPECT_EQ(problem.message, "Please select a template.");
}

TEST(CheckRequestTest, BuildsThePaths)
{
    const auto checked = generate::CheckRequest({"2024", "Desk.xls", "/cal/t/", "/cal/o/"});
    const auto& job = std::get<GenerateJob>(checked);
    EXPECT_EQ(job.year, 2024);
    EXPECT_EQ(job.templatePath, "/cal/t/Desk.xls");
    EXPECT_EQ(job.outputPath, "/cal/o/2024Desk.xls");
}

// ---- the run

/// Also logs events as calls, which shows their order.
class LoggingObserver : public fake::ListObserver {
public:
    explicit LoggingObserver(fake::CallLog& log) : log_(log) {}
    void Report(const std::string& text) override
    {
        log_.Record("Report");
        ListObserver::Report(text);
    }
    void Warn(const std::string& text) override
    {
        log_.Record("Warn");
        ListObserver::Warn(text);
    }
    void SetHourglass(bool on) override { log_.Record(on ? "Hourglass" : "Arrow"); }

private:
    fake::CallLog& log_;
};

class RunTest : public testing::Test {
protected:
    RunTest() : observer_(log_), names_(fake::TestNames()), context_{names_, observer_}
    {
        request_ = {"2024", "Desk.fake", Folder("template"), Folder("output")};
        fs::create_directory(folder_ / "template");
        fake::WriteWorkbookFile(folder_ / "template" / "Desk.fake",
                                {{"Sheet1", {{{1, 1}, "kept"}}}, {"Sheet2", {}}});
        sets_.Monthly = fake::DaysOnly();
        sets_.Yearly = fake::YearOfDays();
    }

    std::string Folder(const char* name) const
    {
        return util::WithTrailingSeparator(util::FromPath((folder_ / name).make_preferred()));
    }
    fs::path Output() const { return folder_ / "output" / "2024Desk.fake"; }

    std::optional<std::string> Run()
    {
        const auto saved = generate::RunGenerate(
            request_, sets_, [this](const GenerateJob& /*job*/) { return Start(); }, context_);
        return saved ? std::optional(saved->workbook) : std::nullopt;
    }

    std::unique_ptr<book::Application> Start()
    {
        log_.Record("Start application");
        return std::make_unique<fake::Application>(log_);
    }

    /// All calls except those to sheets and cells.
    Texts Outline() const
    {
        Texts outline;
        std::copy_if(log_.Calls().begin(), log_.Calls().end(), std::back_inserter(outline),
                     [](const std::string& call) {
                         return call.find('(') == std::string::npos &&
                                call.find('.') == std::string::npos;
                     });
        return outline;
    }

    testing_support::ScratchFolder scratch_;
    const fs::path& folder_ = scratch_.Path();
    fake::CallLog log_;
    LoggingObserver observer_;
    model::NameTables names_;
    generate::Context context_;
    GenerateRequest request_;
    model::ParameterSets sets_;
};

TEST_F(RunTest, SavesTheCalendarAndLeavesTheApplicationVisible)
{
    EXPECT_EQ(Run(), util::FromPath(Output()));
    const auto saved = fake::ReadWorkbookFile(Output());
    ASSERT_EQ(saved.size(), 13U);
    EXPECT_EQ(saved[0].name, "2024");
    EXPECT_EQ(saved[0].cells.size(), 367U);
    EXPECT_EQ(saved[1].name, "January");
    EXPECT_EQ(saved[12].name, "December");
    EXPECT_EQ(saved[12].cells.size(), 31U);
    EXPECT_TRUE(observer_.reports.empty());
    EXPECT_TRUE(observer_.problems.empty());
}

TEST_F(RunTest, GoesThroughTheStepsInOrder)
{
    Run();
    Texts calls = log_.Calls();
    std::erase_if(calls, [](const std::string& call) {
        return call.find(") = ") != std::string::npos || call.find(".Name") != std::string::npos ||
               call.find(".Next") != std::string::npos || call.find(".Copy") != std::string::npos;
    });
    EXPECT_EQ(calls, (Texts{"Hourglass", "Start application", "DisplayAlerts = false",
                            "Visible = false", "Interactive = false", "ScreenUpdating = false",
                            "Open Desk.fake read-only", "Worksheets(Sheet2)", "Worksheets(Sheet1)",
                            "SaveAs 2024Desk.fake", "Interactive = true", "ScreenUpdating = true",
                            "Visible = true", "DisplayAlerts = true", "Release workbook",
                            "Visible?", "Release application", "Arrow"}));
}

TEST_F(RunTest, WarnsOfWhatTheSavedCalendarLacks)
{
    log_.losses = {Error(book::ErrorKind::MacrosNotCopied, "Desk.fake", "they are cut off"),
                   Error(book::ErrorKind::SignatureNotKept, "Desk.fake")};
    EXPECT_EQ(Run(), util::FromPath(Output()));
    EXPECT_EQ(observer_.warnings,
              (Texts{util::ErrorText(log_.losses[0]), util::ErrorText(log_.losses[1])}));
    EXPECT_TRUE(observer_.reports.empty());
    const auto& calls = log_.Calls();
    const auto saved = std::find(calls.begin(), calls.end(), "SaveAs 2024Desk.fake");
    ASSERT_GE(calls.end() - saved, 4);
    EXPECT_EQ(Texts(saved + 1, saved + 4), (Texts{"Warn", "Warn", "Interactive = true"}))
        << "before the application is shown";
}

TEST_F(RunTest, DoesNotWarnOfACalendarThatIsNotSaved)
{
    log_.losses = {Error(book::ErrorKind::SignatureNotKept, "Desk.fake")};
    log_.FailAt("SaveAs 2024Desk.fake", "The disk is full.");
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_TRUE(observer_.warnings.empty());
}

TEST_F(RunTest, StopsAtTheChecks)
{
    request_.yearText = "-5";
    EXPECT_EQ(Run(), std::nullopt);
    request_.yearText = "2024";
    request_.templateFile = "";
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(observer_.problems, (Texts{"Please inupt a year.", "Please select a template."}));
    EXPECT_TRUE(log_.Calls().empty());
    EXPECT_FALSE(fs::exists(folder_ / "output"));
}

TEST_F(RunTest, ReportsAYearThatDoesNotFit)
{
    request_.yearText = "40000";
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(observer_.reports.size(), 1U);
    EXPECT_EQ(log_.Calls(), (Texts{"Report"}));
}

TEST_F(RunTest, StoresEasterOfTheYear)
{
    Run();
    EXPECT_EQ(context_.easter, holidays::MakeDate(2024, 3, 31));
    request_.yearText = "2025";
    Run();
    EXPECT_EQ(context_.easter, holidays::MakeDate(2025, 4, 20));
}

TEST_F(RunTest, ReportsAYearWhoseEasterOverflows)
{
    request_.yearText = "6554";
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(log_.Calls(), (Texts{"Report"})); // no hourglass, no application
}

TEST_F(RunTest, SavesAnUnchangedCopyWhenBothCalendarsAreOff)
{
    sets_.Monthly.Output = sets_.Yearly.Output = false;
    EXPECT_TRUE(Run());
    EXPECT_EQ(fake::ReadWorkbookFile(Output()),
              fake::ReadWorkbookFile(folder_ / "template" / "Desk.fake"));
}

TEST_F(RunTest, ReplacesAnExistingOutputFile)
{
    fs::create_directory(folder_ / "output");
    std::ofstream(Output()) << "last year's";
    EXPECT_TRUE(Run());
    EXPECT_EQ(fake::ReadWorkbookFile(Output()).size(), 13U);
}

TEST_F(RunTest, AnOutputFileMarkedReadOnlyStays)
{
    fs::create_directory(folder_ / "output");
    util::ReplaceFile(Output(), "the user's own");
    fs::permissions(Output(), fs::perms::owner_read | fs::perms::group_read);
    EXPECT_EQ(Run(), std::nullopt);
    fs::permissions(Output(), fs::perms::owner_all);
    EXPECT_EQ(util::ReadFile(Output()), "the user's own");
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_NE(observer_.reports[0].find("cannot be written"), std::string::npos);
}

TEST_F(RunTest, AFolderWithTheOutputsNameStays)
{
    fs::create_directories(Output());
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_TRUE(fs::is_directory(Output()));
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_NE(observer_.reports[0].find("is not a regular file: it is a folder"),
              std::string::npos);
}

/// Creates a link; false if that is not possible here.
bool CanLink(const fs::path& to, const fs::path& link)
{
    std::error_code failure;
    fs::create_directories(link.parent_path());
    fs::create_symlink(to, link, failure);
    return !failure;
}

TEST_F(RunTest, ALinkWithTheOutputsNameIsReplacedButNotItsTarget)
{
    util::ReplaceFile(folder_ / "own", "the user's own");
    for (const char* goal : {"own", "nowhere"}) {
        if (!CanLink(folder_ / goal, Output()))
            GTEST_SKIP() << "no links here";
        EXPECT_EQ(Run(), util::FromPath(Output())) << goal;
        EXPECT_FALSE(fs::is_symlink(Output())) << goal;
        EXPECT_EQ(fake::ReadWorkbookFile(Output()).size(), 13U) << goal;
        fs::remove(Output());
    }
    EXPECT_EQ(util::ReadFile(folder_ / "own"), "the user's own");
    EXPECT_FALSE(fs::exists(folder_ / "nowhere"));
}

TEST_F(RunTest, ATemplateThatIsALinkToTheOutputStays)
{
    const fs::path file = folder_ / "template" / "Desk.fake";
    fs::create_directory(folder_ / "output");
    fs::rename(file, Output());
    if (!CanLink(Output(), file))
        GTEST_SKIP() << "no links here";
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(fake::ReadWorkbookFile(file).size(), 2U);
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_NE(observer_.reports[0].find("Choose another output folder."), std::string::npos);
}

TEST_F(RunTest, CreatesTheOutputFolderWithItsParents)
{
    request_.outputFolder = Folder("a/b/c");
    EXPECT_EQ(Run(), request_.outputFolder + "2024Desk.fake");
}

TEST_F(RunTest, ContinuesAfterAFailedMonthlyCalendar)
{
    sets_.Monthly.SheetName = "Missing";
    EXPECT_TRUE(Run());
    EXPECT_EQ(observer_.reports, (Texts{"The sheet Missing does not exist."}));
    const auto saved = fake::ReadWorkbookFile(Output());
    EXPECT_EQ(saved[0].name, "2024");
    EXPECT_EQ(saved[1].name, "Sheet2");
}

TEST_F(RunTest, ATemplateThatCannotBeOpenedIsReportedUnderTheOutputPath)
{
    log_.FailAt("Open Desk.fake read-only", "It is damaged.");
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(observer_.reports, (Texts{"Failed to open the calendar file \"" +
                                        util::FromPath(Output()) + "\".\r\nIt is damaged."}));
    EXPECT_EQ(Outline(), (Texts{"Hourglass", "Start application", "DisplayAlerts = false",
                                "Visible = false", "Interactive = false", "ScreenUpdating = false",
                                "Report", "Visible?", "Quit", "Release application", "Arrow"}));
    EXPECT_FALSE(fs::exists(Output()));
}

TEST_F(RunTest, ATemplateDeletedAfterItWasChosenLeavesNoWorkbook)
{
    fs::remove(folder_ / "template" / "Desk.fake");
    EXPECT_EQ(Run(), std::nullopt);
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_TRUE(observer_.reports[0].starts_with("Failed to open the calendar file \""));
    EXPECT_FALSE(fs::exists(Output()));
}

TEST_F(RunTest, ChecksTheOutputBeforeOpeningTheTemplate)
{
    fs::create_directories(Output()); // a folder has the output's name
    EXPECT_EQ(Run(), std::nullopt);
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_TRUE(observer_.reports[0].starts_with("Failed to open the calendar file \"" +
                                                 util::FromPath(Output()) + "\".\r\n"));
    EXPECT_TRUE(log_.CallsWith("Open").empty());
    EXPECT_EQ(log_.CallsWith("Quit").size(), 1U);
}

TEST_F(RunTest, AnOutputFolderThatCannotBeMadeIsReported)
{
    std::ofstream(folder_ / "output") << "a file where the folder should be";
    EXPECT_EQ(Run(), std::nullopt);
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_TRUE(observer_.reports[0].starts_with("Failed to open the calendar file \""));
    EXPECT_TRUE(log_.CallsWith("Open").empty());
    EXPECT_EQ(util::ReadFile(folder_ / "output"), "a file where the folder should be");
}

TEST_F(RunTest, AFailedSaveQuitsAndLeavesNoFile)
{
    log_.FailAt("SaveAs 2024Desk.fake", "The disk is full.");
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(observer_.reports, (Texts{"Failed to save the calendar file.\r\nThe disk is full."}));
    EXPECT_FALSE(fs::exists(Output()));
    const Texts& calls = log_.Calls();
    EXPECT_EQ((Texts{calls.end() - 6, calls.end()}),
              (Texts{"SaveAs 2024Desk.fake", "Report", "Visible?", "Quit", "Release application",
                     "Arrow"}));
    EXPECT_TRUE(log_.CallsWith("= true").empty());
}

TEST_F(RunTest, AnApplicationThatCannotBeStartedIsReportedUnderAnHourglass)
{
    log_.FailAt("Start application", "There is none.");
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(observer_.reports, (Texts{"There is none."}));
    EXPECT_EQ(log_.Calls(), (Texts{"Hourglass", "Start application", "Report", "Arrow"}));
}

class SwitchTest : public RunTest, public testing::WithParamInterface<const char*> {};

TEST_P(SwitchTest, ASwitchThatFailsEndsTheRunWithoutQuitting)
{
    log_.FailAt(GetParam(), "The switch is stuck.");
    const bool isAfterSaving = std::string_view(GetParam()).ends_with("true");
    EXPECT_EQ(Run().has_value(), isAfterSaving) << "what is saved stays saved";
    EXPECT_EQ(observer_.reports, (Texts{"The switch is stuck."}));
    const Texts& calls = log_.Calls();
    EXPECT_EQ((Texts{calls.end() - 4, calls.end()}),
              (Texts{GetParam(), "Release application", "Report", "Arrow"}));
    EXPECT_TRUE(log_.CallsWith("Quit").empty());
}

INSTANTIATE_TEST_SUITE_P(Switches, SwitchTest,
                         testing::Values("DisplayAlerts = false", "Visible = false",
                                         "Interactive = false", "ScreenUpdating = false",
                                         "Interactive = true", "ScreenUpdating = true",
                                         "Visible = true", "DisplayAlerts = true"));

// ---- a lost application

struct LossCase {
    const char* name;
    const char* call;     ///< the call at which the application is lost
    const char* sentence; ///< first line of the one report
};

class LossTest : public RunTest, public testing::WithParamInterface<LossCase> {};

TEST_P(LossTest, EndsTheRunInOneReportAndLeavesNoFile)
{
    log_.LoseAt(GetParam().call);
    EXPECT_EQ(Run(), std::nullopt);
    std::string sentence = GetParam().sentence;
    if (const auto at = sentence.find("OUTPUT"); at != std::string::npos)
        sentence.replace(at, 6, util::FromPath(Output()));
    EXPECT_EQ(observer_.reports,
              (Texts{sentence + "\"Fake\" does not answer any more: it has ended. Generate the "
                                "calendar again."}));
    EXPECT_FALSE(fs::exists(Output()));
    const Texts& calls = log_.Calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Report"), 1);
    EXPECT_EQ(calls.back(), "Arrow");
    const auto lost = std::find(calls.begin(), calls.end(), GetParam().call);
    const Texts after(lost + 1, calls.end());
    EXPECT_EQ(std::count(after.begin(), after.end(), "Release application"), 1);
    EXPECT_EQ(after.size(), 3U) << "nothing more is asked of it";
}

INSTANTIATE_TEST_SUITE_P(
    Calls, LossTest,
    testing::Values(
        LossCase{"Switch", "Interactive = false", ""},
        LossCase{"Open", "Open Desk.fake read-only",
                 "Failed to open the calendar file \"OUTPUT\".\r\n"},
        LossCase{"FindSheet", "Worksheets(Sheet2)", "Error in making monthly calendar.\r\n"},
        LossCase{"NameModel", "Sheet2.Name = January", "Error in making monthly calendar.\r\n"},
        LossCase{"Copy", "February.Copy after February", "Error in making monthly calendar.\r\n"},
        LossCase{"NextOfCopy", "March.Next", "Error in making monthly calendar.\r\n"},
        LossCase{"NameCopy", "March (2).Name = April", "Error in making monthly calendar.\r\n"},
        LossCase{"Day", "March(5,7) = 1 Value", "Error in filling data(2024-3).\r\n"},
        LossCase{"NameYear", "Sheet1.Name = 2024", "Error in making yearly calendar.\r\n"},
        LossCase{"DayOfYear", "2024(5,3) = 1 Value", "Error in filling data(2024-1).\r\n"},
        LossCase{"Save", "SaveAs 2024Desk.fake", "Failed to save the calendar file.\r\n"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(RunTest, ACalendarIsSavedEvenIfTheApplicationIsLostAfterwards)
{
    log_.LoseAt("Visible = true");
    EXPECT_EQ(Run(), util::FromPath(Output()));
    EXPECT_EQ(observer_.reports.size(), 1U);
    EXPECT_EQ(fake::ReadWorkbookFile(Output()).size(), 13U);
}

TEST_F(RunTest, AnApplicationLostAtTheStartKeepsTheOldFile)
{
    fs::create_directory(folder_ / "output");
    std::ofstream(Output()) << "last year's";
    log_.LoseAt("DisplayAlerts = false");
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(observer_.reports.size(), 1U);
    EXPECT_EQ(util::ReadFile(Output()), "last year's");
}

TEST_F(RunTest, RepeatsTheSameCalendar)
{
    EXPECT_TRUE(Run());
    const auto first = util::ReadFile(Output());
    EXPECT_TRUE(Run());
    EXPECT_EQ(util::ReadFile(Output()), first);
}

TEST_F(RunTest, OpensAWorkbookOnlyAfterCheckingTheOutput)
{
    fake::Application application(log_);
    const GenerateJob job{2024, request_.templateFolder + "Desk.fake", util::FromPath(Output())};
    book::Workbook* const workbook = generate::OpenCalendarWorkbook(application, job, context_);
    ASSERT_NE(workbook, nullptr);
    EXPECT_EQ(fs::file_size(Output()), 0U);
    EXPECT_TRUE(generate::SaveCalendar(*workbook, job.outputPath, context_));
    EXPECT_GT(fs::file_size(Output()), 0U);
}

} // namespace
