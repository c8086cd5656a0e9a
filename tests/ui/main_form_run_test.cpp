#include "ui/main_form_support.h"

#include "book/error.h"
#include "util/error.h"
#include "util/error_text.h"

#include <chrono>
#include <stdexcept>
#include <utility>
#include <vector>

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/// Opens the window with Desk.xls and 2027.
class MainFormRunTest : public MainFormTest {
protected:
    MainForm& OpenDesk()
    {
        OpenWith("Desk.xls");
        form_->txtYear.text = "2027";
        return *form_;
    }
    Texts CallsWithoutRepaint()
    {
        Texts calls = desktop_.TakeCalls();
        std::erase(calls, "Repaint");
        return calls;
    }
};

// ---- the checks

struct ProblemCase {
    const char* name;
    const char* year;
    bool templateChosen;
    const char* message;
    bool focusesYear;
};

class RequestProblemTest : public MainFormTest, public testing::WithParamInterface<ProblemCase> {};

TEST_P(RequestProblemTest, IsShownAndItsControlGetsTheFocus)
{
    MainForm& form = Open();
    if (GetParam().templateChosen)
        Choose("Desk.xls");
    form.txtYear.text = GetParam().year;
    form.lblStatus.caption = "as it was";
    form.cmdGenerate_Click();
    EXPECT_EQ(desktop_.TakeCalls(), Texts{std::string("ShowMessage: ") + GetParam().message});
    const Control* expected = &form.cboTemplateFile;
    if (GetParam().focusesYear)
        expected = &form.txtYear;
    EXPECT_EQ(form.focus, expected);
    EXPECT_EQ(form.lblStatus.caption, "as it was");
    EXPECT_FALSE(form.prgRun.visible);
    EXPECT_EQ(engines_.started, Texts());
    EXPECT_FALSE(fs::exists(At("output")));
}

constexpr const char* kNoYear = "Please inupt a year.";
constexpr const char* kNoTemplate = "Please select a template.";

INSTANTIATE_TEST_SUITE_P(Requests, RequestProblemTest,
                         testing::Values(ProblemCase{"NoYear", "", true, kNoYear, true},
                                         ProblemCase{"Word", "abc", true, kNoYear, true},
                                         ProblemCase{"Zero", "0", true, kNoYear, true},
                                         ProblemCase{"Negative", "-5", true, kNoYear, true},
                                         ProblemCase{"YearFirst", "abc", false, kNoYear, true},
                                         ProblemCase{"NoTemplate", "2027", false, kNoTemplate,
                                                     false}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(MainFormRunTest, AYearBeyondItsWidthIsReported)
{
    MainForm& form = OpenDesk();
    form.txtYear.text = "40000";
    form.cmdGenerate_Click();
    EXPECT_EQ(desktop_.TakeCalls(),
              Texts{"Report: Overflow: \"40000\" leads to a number that is too large for its "
                    "place."});
    EXPECT_EQ(engines_.started, Texts());
}

// ---- a run that succeeds

TEST_F(MainFormRunTest, WritesBothCalendarsOfTheWorkingSets)
{
    MainForm& form = OpenDesk();
    form.working.sets.Yearly.FirstCellOfDay = {10, 3};
    form.cmdGenerate_Click();
    const auto sheets = fake::ReadWorkbookFile(At("output/2027Desk.xls"));
    ASSERT_EQ(sheets.size(), 13U);
    EXPECT_EQ(sheets[0].name, "2027");
    EXPECT_EQ(sheets[1].name, "January");
    EXPECT_EQ(sheets[12].name, "December");
    // The first of January 2027 is a Friday, the sixth day of a week that begins on Sunday. Desk's
    // parameter file puts the first day's cell at C6.
    EXPECT_EQ(sheets[1].cells.at({6, 8}), book::CellValue(std::int16_t{1}));
    EXPECT_EQ(sheets[0].cells.at({10, 8}), book::CellValue(std::int16_t{1}));
    EXPECT_EQ(ContentOf("template/Desk.ini"), "[Monthly Calendar]\nFirstCellOfDay=C6\n");
}

TEST_F(MainFormRunTest, ShowsThePathAndOpensTheFolder)
{
    MainForm& form = OpenDesk();
    form.cmdGenerate_Click();
    EXPECT_EQ(CallsWithoutRepaint(), (Texts{"Hourglass on", "Hourglass off"}));
    EXPECT_EQ(form.lblStatus.caption, "Saved as " + At("output/2027Desk.xls") + " by fake");
    EXPECT_TRUE(form.lblStatus.isLiteral);
    EXPECT_FALSE(form.prgRun.visible);
    EXPECT_TRUE(form.cmdOpenFolder.visible);
    form.cmdOpenFolder_Click();
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"Open: " + At("output")});
    form.CopySavedPath();
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"Copy: " + At("output/2027Desk.xls")});
}

TEST_F(MainFormRunTest, WithoutASavedWorkbookNoPathIsCopied)
{
    MainForm& form = OpenDesk();
    EXPECT_FALSE(form.HasSavedPath());
    form.CopySavedPath();
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
}

TEST_F(MainFormRunTest, ShowsWhichApplicationWroteTheWorkbook)
{
    const std::string saved = "Saved as " + At("output/2027Desk.xls");
    MainForm& form = OpenDesk();
    for (const auto& [engine, title] : {std::pair("excel", "Excel"),
                                        {"builtin", "the built-in engine"},
                                        {"libreoffice", "LibreOffice"}}) {
        engines_.resolved = engine;
        form.cmdGenerate_Click();
        EXPECT_EQ(form.lblStatus.caption, saved + " by " + title);
    }
}

TEST_F(MainFormRunTest, TheSavedWorkbookIsOpenedForTheUser)
{
    OpenDesk().cmdGenerate_Click();
    EXPECT_EQ(engines_.started, Texts{"fake"});
    desktop_.TakeCalls();
    const book::StartRequest& request = engines_.requests.at(0);
    ASSERT_TRUE(request.opener);
    request.opener("2027Desk.xls");
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"Open: 2027Desk.xls"});
}

TEST_F(MainFormRunTest, TheEngineIsToldWhichFilesItWillOpenAndSave)
{
    OpenDesk().cmdGenerate_Click();
    EXPECT_EQ(engines_.requests.at(0).files,
              (std::vector<fs::path>{At("template/Desk.xls"), At("output/2027Desk.xls")}));
}

TEST_F(MainFormRunTest, ProgressIsShownMonthByMonth)
{
    MainForm& form = OpenDesk();
    Texts statuses;
    std::vector<int> done;
    desktop_.onRepaint = [&] {
        EXPECT_TRUE(form.prgRun.visible);
        EXPECT_FALSE(form.cmdOpenFolder.visible);
        EXPECT_EQ(form.prgRun.total, 24);
        statuses.push_back(form.lblStatus.caption);
        done.push_back(form.prgRun.done);
    };
    form.cmdGenerate_Click();
    ASSERT_EQ(statuses.size(), 26U);
    EXPECT_EQ(statuses[0], "Writing 2027Desk.xls");
    EXPECT_EQ(statuses[3], "Writing 2027Desk.xls: monthly calendar, month 3 of 12");
    EXPECT_EQ(statuses[12], "Writing 2027Desk.xls: monthly calendar, month 12 of 12");
    EXPECT_EQ(statuses[13], "Writing 2027Desk.xls: yearly calendar, month 1 of 12");
    EXPECT_EQ(statuses[24], "Writing 2027Desk.xls: yearly calendar, month 12 of 12");
    EXPECT_EQ(statuses[25], "Saving 2027Desk.xls");
    EXPECT_EQ(done[25], 24);
    for (int step = 0; step <= 24; ++step)
        EXPECT_EQ(done[static_cast<std::size_t>(step)], step);
}

TEST_F(MainFormRunTest, TheFileIsNamedAfterTheParsedYear)
{
    MainForm& form = OpenDesk();
    form.txtYear.text = " 2027.4 ";
    form.cmdGenerate_Click();
    EXPECT_EQ(form.lblStatus.caption, "Saved as " + At("output/2027Desk.xls") + " by fake");
}

TEST_F(MainFormRunTest, ShowsWhatTheSavedWorkbookLacks)
{
    const Error loss(book::ErrorKind::MacrosNotCopied, "Desk.xls", "they are cut off");
    engines_.log.losses = {loss};
    MainForm& form = OpenDesk();
    form.cmdGenerate_Click();
    EXPECT_EQ(CallsWithoutRepaint(),
              (Texts{"Hourglass on", "ShowMessage: " + util::ErrorText(loss), "Hourglass off"}));
    EXPECT_EQ(form.lblStatus.caption, "Saved as " + At("output/2027Desk.xls") + " by fake");
}

// ---- a run that fails

TEST_F(MainFormRunTest, AMissingEngineIsReported)
{
    Write("orrery.ini", "[Environment]\nEngine=excel\n");
    MainForm& form = OpenDesk();
    form.cmdGenerate_Click();
    EXPECT_EQ(CallsWithoutRepaint(),
              (Texts{"Hourglass on",
                     "Report: The engine \"excel\" is not available here; choose the engine "
                     "\"builtin\", which needs no other program.",
                     "Hourglass off"}));
    EXPECT_EQ(form.lblStatus.caption, "2027Desk.xls was not finished.");
    EXPECT_FALSE(form.prgRun.visible);
    EXPECT_FALSE(form.cmdOpenFolder.visible);
}

TEST_F(MainFormRunTest, AFailedSaveHidesTheFolderOfAnEarlierRun)
{
    MainForm& form = OpenDesk();
    form.cmdGenerate_Click();
    engines_.log.FailAt("SaveAs 2028Desk.xls", "The disk is full.");
    form.txtYear.text = "2028";
    desktop_.TakeCalls();
    form.cmdGenerate_Click();
    EXPECT_EQ(
        CallsWithoutRepaint(),
        (Texts{"Hourglass on", "Report: Failed to save the calendar file.\r\nThe disk is full.",
               "Hourglass off"}));
    EXPECT_EQ(form.lblStatus.caption, "2028Desk.xls was not finished.");
    EXPECT_FALSE(form.cmdOpenFolder.visible);
    EXPECT_FALSE(form.prgRun.visible);
}

TEST_F(MainFormRunTest, TheHourglassAlwaysDisappears)
{
    MainForm& form = OpenDesk();
    desktop_.onRepaint = [] { throw std::runtime_error("no window"); };
    form.cmdGenerate_Click();
    const Texts calls = CallsWithoutRepaint();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.back(), "Hourglass off");
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Hourglass on"), 1);
    EXPECT_FALSE(form.prgRun.visible);
    desktop_.onRepaint = {};
    form.cmdGenerate_Click();
    EXPECT_EQ(form.lblStatus.caption, "Saved as " + At("output/2027Desk.xls") + " by fake");
}

// ---- an application that does not answer

/// Counts how often it is ended.
class StuckApplication : public book::Endable {
public:
    void End() override { ++ends; }
    int ends = 0;
};

/// The engine does not answer when it has written March.
class MainFormWaitingTest : public MainFormRunTest {
protected:
    /// Lets a call go on for these times.
    void RunWithWaiting(const std::vector<std::chrono::seconds>& times)
    {
        desktop_.onRepaint = [this, times] {
            const bool isMarch = form_->prgRun.done == 3;
            if (!isMarch || std::exchange(hasWaited_, true))
                return;
            book::Patience& patience = *engines_.requests.back().patience;
            patience.Add(stuck_);
            for (const auto& time : times)
                patience.OnWaiting(time);
            patience.Remove(stuck_);
        };
        OpenDesk().cmdGenerate_Click();
    }

    StuckApplication stuck_;
    bool hasWaited_ = false;
};

TEST_F(MainFormWaitingTest, NothingIsShownForAMinute)
{
    RunWithWaiting({std::chrono::seconds(1), std::chrono::seconds(59)});
    EXPECT_TRUE(hasWaited_);
    EXPECT_EQ(CallsWithoutRepaint(), (Texts{"Hourglass on", "Hourglass off"}));
    EXPECT_FALSE(form_->cmdCancel.visible);
}

TEST_F(MainFormWaitingTest, ThenCancelIsShownUntilThereIsAnAnswer)
{
    std::vector<bool> visible;
    desktop_.onLetPress = [&] {
        EXPECT_TRUE(form_->cmdCancel.visible);
        EXPECT_FALSE(form_->prgRun.visible) << "the sentence needs the room";
        EXPECT_TRUE(form_->cmdCancel.enabled);
        EXPECT_EQ(form_->focus, &form_->cmdCancel);
        EXPECT_EQ(form_->lblStatus.caption,
                  "The spreadsheet program has not answered for a minute.");
        visible.push_back(true);
    };
    RunWithWaiting({std::chrono::seconds(59), std::chrono::seconds(60), std::chrono::seconds(61)});
    EXPECT_EQ(visible.size(), 2U);
    EXPECT_EQ(CallsWithoutRepaint(), (Texts{"Hourglass on", "LetPress: cmdCancel",
                                            "LetPress: cmdCancel", "Hourglass off"}));
    EXPECT_EQ(stuck_.ends, 0);
    EXPECT_FALSE(form_->cmdCancel.visible);
    EXPECT_EQ(form_->focus, &form_->cmdGenerate);
    EXPECT_EQ(form_->lblStatus.caption, "Saved as " + At("output/2027Desk.xls") + " by fake");
}

TEST_F(MainFormWaitingTest, CancelEndsTheApplication)
{
    desktop_.onLetPress = [&] { form_->cmdCancel_Click(); };
    RunWithWaiting({std::chrono::seconds(60)});
    EXPECT_EQ(stuck_.ends, 1);
    EXPECT_TRUE(form_->cmdCancel.enabled) << "for the next run";
    EXPECT_FALSE(form_->cmdCancel.visible);
}

TEST_F(MainFormWaitingTest, CancelCanBePressedOnce)
{
    desktop_.onLetPress = [&] {
        form_->cmdCancel_Click();
        EXPECT_FALSE(form_->cmdCancel.enabled);
    };
    RunWithWaiting({std::chrono::seconds(60)});
}

TEST_F(MainFormWaitingTest, CancelDoesNothingBetweenRuns)
{
    RunWithWaiting({});
    form_->cmdCancel_Click();
    EXPECT_EQ(stuck_.ends, 0);
}

TEST_F(MainFormWaitingTest, ThePrinterCanBeGivenUp)
{
    engines_.canPrintPdf = true;
    OpenDesk();
    form_->chkPdf.checked = true;
    form_->cmdGenerate_Click();
    EXPECT_NE(engines_.printerPatience, nullptr);
    EXPECT_EQ(engines_.printerPatience, engines_.requests.back().patience);
}

// ---- the PDF

class MainFormPdfTest : public MainFormRunTest {
protected:
    MainFormPdfTest() { engines_.canPrintPdf = true; }
    MainForm& OpenDeskAsPdf()
    {
        MainForm& form = OpenDesk();
        TickPdf();
        return form;
    }
    void TickPdf()
    {
        form_->chkPdf.Toggle();
        form_->chkPdf_Click();
    }
};

TEST_F(MainFormPdfTest, IsOfferedOnlyIfItCanBeMade)
{
    EXPECT_TRUE(Open().chkPdf.visible);
    EXPECT_FALSE(form_->chkPdf.checked);
    engines_.canPrintPdf = false;
    EXPECT_FALSE(Open().chkPdf.visible);
}

TEST_F(MainFormPdfTest, IsMadeByWhoeverIsThere)
{
    OpenDeskAsPdf().cmdGenerate_Click();
    EXPECT_EQ(engines_.printsBy, std::vector{book::PdfBy::Any});
}

TEST_F(MainFormPdfTest, TheChoiceIsRemembered)
{
    OpenDeskAsPdf();
    EXPECT_NE(ContentOf("orrery.ini").find("Pdf=Y"), std::string::npos);
    EXPECT_TRUE(Open().chkPdf.checked);
    TickPdf();
    EXPECT_FALSE(Open().chkPdf.checked);
}

TEST_F(MainFormPdfTest, AChoiceThatCannotBeSavedIsAnErrorAndReverted)
{
    Open();
    fs::remove(At("orrery.ini"));
    fs::create_directories(At("orrery.ini")); // no file can be written there
    form_->chkPdf.Toggle();
    EXPECT_THROW(form_->chkPdf_Click(), Error);
    EXPECT_FALSE(form_->chkPdf.checked);
}

TEST_F(MainFormPdfTest, IsBesideTheWorkbookAndTheStatusNamesBoth)
{
    MainForm& form = OpenDeskAsPdf();
    Texts statuses;
    desktop_.onRepaint = [&] { statuses.push_back(form.lblStatus.caption); };
    form.cmdGenerate_Click();
    EXPECT_EQ(CallsWithoutRepaint(), (Texts{"Hourglass on", "Hourglass off"}));
    EXPECT_EQ(statuses.back(), "Making 2027Desk.pdf");
    EXPECT_EQ(ContentOf("output/2027Desk.pdf").substr(0, 13), "2027\nJanuary\n");
    EXPECT_EQ(form.lblStatus.caption,
              "Saved by fake as " + At("output/2027Desk.xls") + " and 2027Desk.pdf");
    EXPECT_EQ(engines_.log.CallsWith("PDF printer"),
              (Texts{"Start PDF printer", "Release PDF printer"}));
}

TEST_F(MainFormPdfTest, IsMadeOnlyOnRequest)
{
    MainForm& form = OpenDesk();
    form.cmdGenerate_Click();
    EXPECT_EQ(engines_.log.CallsWith("PDF"), Texts());
    EXPECT_EQ(form.lblStatus.caption, "Saved as " + At("output/2027Desk.xls") + " by fake");
}

TEST_F(MainFormPdfTest, IsNotMadeIfTheCheckBoxIsHidden)
{
    OpenDeskAsPdf();
    engines_.canPrintPdf = false;
    MainForm& form = OpenDesk(); // the settings still say Y
    form.cmdGenerate_Click();
    EXPECT_EQ(engines_.log.CallsWith("PDF"), Texts());
    EXPECT_EQ(form.lblStatus.caption, "Saved as " + At("output/2027Desk.xls") + " by fake");
}

TEST_F(MainFormPdfTest, AFailureIsReportedAndTheWorkbookStays)
{
    MainForm& form = OpenDeskAsPdf();
    engines_.log.FailAt("Print 2027Desk.xls into 2027Desk.pdf", "Out of paper.");
    form.cmdGenerate_Click();
    EXPECT_EQ(CallsWithoutRepaint(),
              (Texts{"Hourglass on", "Report: Failed to make the PDF file.\r\nOut of paper.",
                     "Hourglass off"}));
    EXPECT_EQ(form.lblStatus.caption,
              "Saved as " + At("output/2027Desk.xls") + " by fake, but not as PDF");
    EXPECT_TRUE(form.cmdOpenFolder.visible);
}

} // namespace
} // namespace orrery::ui
