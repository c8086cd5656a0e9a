#include "cli/commands.h"

#include "book/error.h"
#include "book/fake_engines.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/file_read.h"
#include "util/paths.h"
#include "util/scratch_folder_test.h"
#include "util/text.h"

#include <gtest/gtest.h>

#include <ctime>
#include <sstream>

namespace orrery::cli {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/// A path as written in JSON.
std::string Escaped(const std::string& path)
{
    return util::Join(util::Split(path, '\\'), R"(\\)");
}

/// A portable installation in a scratch folder with the template Desk.xlsx.
class CommandsTest : public testing_support::ScratchFolderTest {
protected:
    CommandsTest()
    {
        Write("orrery.ini", "[Yearly Calendar]\nOutput=Y\n");
        fs::create_directories(folder_ / "template");
        fake::WriteWorkbookFile(folder_ / "template/Desk.xlsx", {{"Sheet1", {}}, {"Sheet2", {}}});
        system_.executable = At("");
        line_.templateName = "Desk.xlsx";
        line_.years = {"2027"};
    }

    int Run(Command command)
    {
        line_.command = command;
        out_.str("");
        err_.str("");
        Console console{out_, err_, false, &patience_, now_};
        return RunCommand(line_, system_, engines_, console);
    }

    app::SystemFolders system_;
    fake::Engines engines_;
    book::Patience patience_;
    CommandLine line_;
    std::ostringstream out_;
    std::ostringstream err_;
    std::time_t now_ = std::time(nullptr);
};

TEST_F(CommandsTest, GeneratePrintsEachSavedPath)
{
    line_.years = {"2027", "2028"};
    EXPECT_EQ(Run(Command::Generate), 0);
    EXPECT_EQ(out_.str(), At("output/2027Desk.xlsx") + "\n" + At("output/2028Desk.xlsx") + "\n");
    EXPECT_EQ(err_.str(), "");
    const auto saved = fake::ReadWorkbookFile(At("output/2028Desk.xlsx"));
    EXPECT_EQ(saved.front().name, "2028");
    EXPECT_EQ(saved.size(), 13U);
}

TEST_F(CommandsTest, GenerateStartsTheEngineForEachYearWithoutAnOpener)
{
    line_.years = {"2027", "2028"};
    Run(Command::Generate);
    ASSERT_EQ(engines_.requests.size(), 2U);
    EXPECT_FALSE(engines_.requests[0].opener || engines_.requests[1].opener);
    line_.open = true;
    engines_.requests.clear();
    Run(Command::Generate);
    ASSERT_EQ(engines_.requests.size(), 2U);
    EXPECT_TRUE(engines_.requests[0].opener && engines_.requests[1].opener);
}

TEST_F(CommandsTest, TheEngineIsToldWhichFilesItWillOpenAndSave)
{
    using Paths = std::vector<fs::path>;
    Run(Command::Generate);
    ASSERT_EQ(engines_.requests.size(), 1U);
    EXPECT_EQ(engines_.requests[0].files,
              (Paths{At("template/Desk.xlsx"), At("output/2027Desk.xlsx")}));
    Run(Command::Check);
    ASSERT_EQ(engines_.requests.size(), 2U);
    EXPECT_EQ(engines_.requests[1].files, Paths{At("template/Desk.xlsx")});
}

/// An application that was ended because the user pressed Ctrl+C.
class EndedApplication : public book::Endable {
public:
    void End() override {}
};

TEST_F(CommandsTest, CtrlCEndsTheCommand)
{
    line_.years = {"2027", "2028", "2029"};
    EndedApplication application;
    patience_.Add(application);
    patience_.GiveUp();
    EXPECT_EQ(Run(Command::Generate), 1);
    EXPECT_EQ(engines_.started, Texts()) << "it was pressed before the first year";
    EXPECT_EQ(err_.str(),
              "Error!\nError Info: Ctrl+C ended the command before all calendars were made.\n");
}

/// Presses Ctrl+C when the first application is started.
class InterruptedEngines : public fake::Engines {
public:
    std::unique_ptr<book::Application> Start(const std::string& name,
                                             book::StartRequest request) override
    {
        request.patience->Add(application_);
        request.patience->GiveUp();
        request.patience->Remove(application_);
        return fake::Engines::Start(name, std::move(request));
    }

private:
    EndedApplication application_;
};

TEST_F(CommandsTest, CtrlCLeavesOneReportOfARunThatItEnded)
{
    InterruptedEngines engines;
    engines.log.LoseAt("Worksheets(Sheet1)");
    line_.command = Command::Generate;
    line_.years = {"2027", "2028"};
    Console console{out_, err_, false, &patience_};
    EXPECT_EQ(RunCommand(line_, system_, engines, console), 1);
    EXPECT_EQ(engines.started.size(), 1U);
    EXPECT_NE(err_.str().find("does not answer any more"), std::string::npos) << err_.str();
    EXPECT_EQ(err_.str().find("Error!"), err_.str().rfind("Error!")) << "one report";
}

TEST_F(CommandsTest, CtrlCKeepsTheCalendarThatWasFinished)
{
    InterruptedEngines engines;
    line_.command = Command::Generate;
    line_.years = {"2027", "2028"};
    Console console{out_, err_, false, &patience_};
    EXPECT_EQ(RunCommand(line_, system_, engines, console), 1);
    EXPECT_EQ(out_.str(), At("output/2027Desk.xlsx") + "\n");
    EXPECT_EQ(err_.str(),
              "Error!\nError Info: Ctrl+C ended the command before all calendars were made.\n");
}

TEST_F(CommandsTest, GenerateContinuesAfterAFailedYear)
{
    line_.years = {"6553", "6554", "0", "2027"};
    EXPECT_EQ(Run(Command::Generate), 1);
    EXPECT_EQ(out_.str(), At("output/6553Desk.xlsx") + "\n" + At("output/2027Desk.xlsx") + "\n");
    EXPECT_EQ(err_.str(), "Error!\nError Info: Overflow: \"6554\" leads to a number that is too "
                          "large for its place.\nError!\nError Info: Please inupt a year.\n");
}

TEST_F(CommandsTest, GenerateFailsIfAnythingWasReported)
{
    Write("template/Desk.ini", "[Yearly Calendar]\nSheetName=Gone\n");
    EXPECT_EQ(Run(Command::Generate), 1);
    EXPECT_EQ(out_.str(), At("output/2027Desk.xlsx") + "\n");
    EXPECT_EQ(err_.str(), "Error!\nError Info: The sheet Gone does not exist.\n");
}

TEST_F(CommandsTest, GenerateAsJson)
{
    line_.json = true;
    line_.years = {"2027", "0"};
    EXPECT_EQ(Run(Command::Generate), 1);
    EXPECT_EQ(out_.str(), R"({"engine":"fake","saved":[")" + Escaped(At("output/2027Desk.xlsx")) +
                              R"("],"reports":["Please inupt a year."]})" + "\n");
    EXPECT_NE(err_.str(), "");
}

TEST_F(CommandsTest, GenerateWarnsAndSucceeds)
{
    const Error loss(book::ErrorKind::MacrosNotCopied, "Desk.xlsx", "they are cut off");
    engines_.log.losses = {loss};
    line_.years = {"2027", "2028"};
    EXPECT_EQ(Run(Command::Generate), 0);
    EXPECT_EQ(out_.str(), At("output/2027Desk.xlsx") + "\n" + At("output/2028Desk.xlsx") + "\n");
    EXPECT_EQ(err_.str(), "Warning: " + util::ErrorText(loss) + "\n") << "once for all years";
}

TEST_F(CommandsTest, GenerateAsJsonNamesWarningsIfThereAreAny)
{
    engines_.log.losses = {Error(book::ErrorKind::SignatureNotKept)};
    line_.json = true;
    EXPECT_EQ(Run(Command::Generate), 0);
    const std::string text = util::ErrorText(engines_.log.losses[0]);
    EXPECT_EQ(out_.str(), R"({"engine":"fake","saved":[")" + Escaped(At("output/2027Desk.xlsx")) +
                              R"("],"reports":[],"warnings":[")" + text + R"("]})" + "\n");
}

TEST_F(CommandsTest, GenerateWithPdfPrintsItsPathAfterTheWorkbooks)
{
    engines_.canPrintPdf = true;
    line_.pdf = true;
    line_.years = {"2027", "2028"};
    EXPECT_EQ(Run(Command::Generate), 0);
    EXPECT_EQ(out_.str(), At("output/2027Desk.xlsx") + "\n" + At("output/2027Desk.pdf") + "\n" +
                              At("output/2028Desk.xlsx") + "\n" + At("output/2028Desk.pdf") + "\n");
    EXPECT_TRUE(fs::exists(At("output/2028Desk.pdf")));
    EXPECT_EQ(engines_.log.CallsWith("PDF printer"),
              (Texts{"Start PDF printer", "Release PDF printer"}));
}

TEST_F(CommandsTest, GenerateWithPdfAsJson)
{
    engines_.canPrintPdf = true;
    engines_.log.FailAt("Print 2028Desk.xlsx into 2028Desk.pdf", "Out of paper.");
    line_.pdf = line_.json = true;
    line_.years = {"2027", "2028"};
    EXPECT_EQ(Run(Command::Generate), 1) << "a PDF is missing";
    EXPECT_EQ(out_.str(), R"({"engine":"fake","saved":[")" + Escaped(At("output/2027Desk.xlsx")) +
                              R"(",")" + Escaped(At("output/2028Desk.xlsx")) + R"("],"pdf":[")" +
                              Escaped(At("output/2027Desk.pdf")) +
                              R"("],"reports":["Failed to make the PDF file.\nOut of paper."]})" +
                              "\n");
}

TEST_F(CommandsTest, GenerateWithPdfChecksForAPrinterFirst)
{
    line_.pdf = true;
    line_.years = {"2027", "2028"};
    EXPECT_EQ(Run(Command::Generate), 1);
    EXPECT_EQ(out_.str(), "");
    EXPECT_EQ(err_.str(), "Error!\nError Info: A PDF needs Excel on Windows or LibreOffice on "
                          "Linux, which is not available here. Install it, let Orrery make "
                          "the PDF (--pdf-by builtin), or generate the calendar without a PDF.\n");
    EXPECT_EQ(engines_.started, Texts());
    EXPECT_FALSE(fs::exists(At("output")));
}

TEST_F(CommandsTest, GenerateWithPdfIsAskedOfTheOneThatIsNamed)
{
    line_.pdf = true;
    line_.years = {"2027"};
    engines_.canPrintPdf = engines_.canPrintItself = true;
    for (const char* const by : {"", "office", "builtin"}) {
        line_.pdfBy = by;
        EXPECT_EQ(Run(Command::Generate), 0);
    }
    using enum book::PdfBy;
    EXPECT_EQ(engines_.printsBy, (std::vector{Office, Office, BuiltIn}));
}

TEST_F(CommandsTest, GenerateWithPdfByTheProgramNeedsItsLibrary)
{
    line_.pdf = engines_.canPrintPdf = true;
    line_.pdfBy = "builtin";
    line_.years = {"2027"};
    EXPECT_EQ(Run(Command::Generate), 1);
    EXPECT_EQ(err_.str(), "Error!\nError Info: A PDF by Orrery itself needs a library of Orrery "
                          "that is not here. Install Orrery again, or generate the calendar "
                          "without a PDF.\n");
    EXPECT_FALSE(fs::exists(At("output")));
}

TEST_F(CommandsTest, GenerateReadsTheParameterFileOverTheDefaults)
{
    Write("template/Desk.ini", "[Monthly Calendar]\nOutput=N\n[Yearly Calendar]\n"
                               "FirstCellOfDay=D10\n");
    line_.years = {"2023"}; // begins on a Sunday
    EXPECT_EQ(Run(Command::Generate), 0);
    const auto saved = fake::ReadWorkbookFile(At("output/2023Desk.xlsx"));
    ASSERT_EQ(saved.size(), 2U);
    EXPECT_EQ(saved[0].cells.begin()->first, (std::pair<std::int32_t, std::int32_t>{10, 4}));
}

TEST_F(CommandsTest, ATemplateThatIsAPathHasItsFolderAsTemplateFolder)
{
    fs::create_directories(folder_ / "mine");
    fs::rename(folder_ / "template/Desk.xlsx", folder_ / "mine/Wall.xlsx");
    fs::remove_all(folder_ / "template");
    Write("mine/Wall.ini", "[Monthly Calendar]\nOutput=N\n");
    line_.templateName = At("mine/Wall.xlsx");
    EXPECT_EQ(Run(Command::Generate), 0);
    EXPECT_EQ(fake::ReadWorkbookFile(At("output/2027Wall.xlsx")).size(), 2U);
    EXPECT_FALSE(fs::exists(At("template"))) << "nobody asked for that folder";
}

TEST_F(CommandsTest, AnUnknownTemplateIsReported)
{
    line_.templateName = "Gone.xlsx";
    EXPECT_EQ(Run(Command::Generate), 1);
    EXPECT_EQ(err_.str(), "Error!\nError Info: \"" + At("template/Gone.xlsx") +
                              "\" was not found. Check the name and the folder.\n");
    EXPECT_FALSE(fs::exists(At("output")));
}

TEST_F(CommandsTest, AnUnreadableFileIsNotTreatedAsMissing)
{
    for (const char* file : {"template/Desk.xlsx", "template/Desk.ini", "orrery.ini"}) {
        fs::rename(folder_ / "template", folder_ / "sound");
        fs::copy(folder_ / "sound", folder_ / "template");
        fs::remove(folder_ / file);
        fs::create_directory(folder_ / file);
        if (std::string(file) == "orrery.ini")
            line_.settingsFile = At(file);
        for (const Command command : {Command::Generate, Command::Parameters, Command::Check}) {
            EXPECT_EQ(Run(command), 1) << file;
            EXPECT_EQ(out_.str(), "") << file;
            EXPECT_EQ(err_.str(), "Error!\nError Info: \"" + At(file) +
                                      "\" is not a regular file: it is a folder. Only regular "
                                      "files are read and replaced: use another name, or put a "
                                      "file in its place.\n");
        }
        fs::remove_all(folder_ / "template");
        fs::rename(folder_ / "sound", folder_ / "template");
    }
    EXPECT_FALSE(fs::exists(folder_ / "output"));
}

TEST_F(CommandsTest, AParameterFileBeyondTheLimitIsReported)
{
    Write("template/Desk.ini", "");
    fs::resize_file(folder_ / "template/Desk.ini", (16U << 20U) + 1);
    EXPECT_EQ(Run(Command::Generate), 1);
    EXPECT_EQ(err_.str(), "Error!\nError Info: \"" + At("template/Desk.ini") +
                              "\" is larger than 16 MiB, which no text file of this program is. "
                              "Check that it is the right file.\n");
}

TEST_F(CommandsTest, ATemplateFolderThatCannotBeListedIsReported)
{
    line_.templateFolder = At("none");
    EXPECT_EQ(Run(Command::Templates), 1);
    EXPECT_EQ(err_.str(), "Error!\nError Info: \"" + At("none/") +
                              "\" was not found. Check the name and the folder.\n");
    line_.templateFolder = At("orrery.ini");
    EXPECT_EQ(Run(Command::Templates), 1);
    EXPECT_NE(err_.str().find("cannot be read"), std::string::npos) << err_.str();
}

TEST_F(CommandsTest, CheckReportsAnUnreadableHolidayFile)
{
    Write("orrery.ini", "[Monthly Calendar]\nHolidayFile=Own.txt\n");
    Write("holiday/Own.txt", "");
    fs::resize_file(folder_ / "holiday/Own.txt", (16U << 20U) + 1);
    EXPECT_EQ(Run(Command::Check), 1);
    EXPECT_EQ(out_.str(), "Holidays: \"" + At("holiday/Own.txt") +
                              "\" is larger than 16 MiB, which no text file of this program is. "
                              "Check that it is the right file.\n");
    Write("template/Desk.ini", "[Monthly Calendar]\n");
    EXPECT_EQ(Run(Command::Check), 0) << "the template has holidays of its own: none";
}

TEST_F(CommandsTest, AMissingEngineIsReportedOnce)
{
    line_.years = {"2027", "2028"};
    line_.engine = "excel";
    EXPECT_EQ(Run(Command::Generate), 1);
    EXPECT_EQ(err_.str(), "Error!\nError Info: The engine \"excel\" is not available here; choose "
                          "the engine \"builtin\", which needs no other program.\n");
    EXPECT_FALSE(fs::exists(At("output")));
}

TEST_F(CommandsTest, TheSettingsNameTheEngineUnlessTheCommandLineDoes)
{
    Write("orrery.ini", "[Environment]\nEngine=excel\n");
    EXPECT_EQ(Run(Command::Generate), 1);
    line_.engine = "fake";
    EXPECT_EQ(Run(Command::Generate), 0);
}

TEST_F(CommandsTest, FoldersOfTheCommandLineReplaceThoseOfTheSettings)
{
    line_.outputFolder = At("here/./too");
    EXPECT_EQ(Run(Command::Generate), 0);
    EXPECT_EQ(out_.str(), At("here/too/2027Desk.xlsx") + "\n");
    line_.templateFolder = At("elsewhere");
    EXPECT_EQ(Run(Command::Generate), 1);
}

TEST_F(CommandsTest, AnotherSettingsFileHasItsOwnFolders)
{
    Write("other/mine.ini", "[Environment]\nOutputPath=" + At("saved") + "\n");
    fs::create_directories(folder_ / "other/template");
    fs::copy_file(folder_ / "template/Desk.xlsx", folder_ / "other/template/Two.xlsx");
    line_.settingsFile = At("other/mine.ini");
    line_.templateName = "Two.xlsx";
    EXPECT_EQ(Run(Command::Generate), 0);
    EXPECT_EQ(out_.str(), At("saved/2027Two.xlsx") + "\n");
}

TEST_F(CommandsTest, TemplatesAreListedByNameWithoutOtherFiles)
{
    for (const char* name : {"B.XLS", "Desk.ini", "notes.txt", "A.xlsx", "C.xlsm"})
        Write(std::string("template/") + name, "");
    EXPECT_EQ(Run(Command::Templates), 0);
    EXPECT_EQ(out_.str(), "A.xlsx\nB.XLS\nDesk.xlsx\n");
    line_.json = true;
    EXPECT_EQ(Run(Command::Templates), 0);
    EXPECT_EQ(out_.str(), R"({"folder":")" + Escaped(At("template/")) +
                              R"(","templates":["A.xlsx","B.XLS","Desk.xlsx"]})" + "\n");
}

TEST_F(CommandsTest, ParametersArePrintedAsAParameterFile)
{
    Write("template/Desk.ini", "[Monthly Calendar]\nSheetName=Page\nHoliday1=1225,,Christmas\n");
    EXPECT_EQ(Run(Command::Parameters), 0);
    EXPECT_TRUE(out_.str().starts_with("[Monthly Calendar]\nOutput=Y\nSheetName=Page\n"));
    EXPECT_NE(out_.str().find("\nHoliday1=1225,,Christmas\n\n[Yearly Calendar]\nOutput=Y\n"),
              std::string::npos);
    EXPECT_EQ(out_.str().find('\r'), std::string::npos);
}

TEST_F(CommandsTest, ParametersAsJsonHaveEveryKey)
{
    Write("template/Desk.ini", "[Monthly Calendar]\nHoliday1=1225,,Christmas\n");
    line_.json = true;
    EXPECT_EQ(Run(Command::Parameters), 0);
    for (const char* member :
         {R"("monthly":{"Output":true,"SheetName":"Sheet2","FirstDayOfWeek":0,)",
          R"("FirstCellOfDay":"B5","ColIntervalOfDay":1,"RowIntervalOfDay":5,)",
          R"("OutWeekday":false,"FirstCellOfWeekday":"B4","WeekdayName":["Sunday",)",
          R"("OutMonth":false,"FirstCellOfMonth":"B3","MonthName":["January",)",
          R"("OutYear":false,"FirstCellOfYear":"B1","OutHoliday":false,)",
          R"("FirstCellOfHoliday":"B6","MultiHolidays":0,)",
          R"("Holidays":[{"DateCode":1225,"Kind":0,"Name":"Christmas"}]})",
          R"("Holidays":[],"MonthLayout":3,"ColIntervalOfMonth":8,"RowIntervalOfMonth":9}})"})
        EXPECT_NE(out_.str().find(member), std::string::npos) << member;
}

TEST_F(CommandsTest, CheckFindsNothingInAGoodTemplate)
{
    EXPECT_EQ(Run(Command::Check), 0);
    EXPECT_EQ(out_.str(),
              "Desk.xlsx: every sheet is there and every cell of 2027 lies inside it.\n");
    EXPECT_EQ(engines_.log.Calls().front(), "DisplayAlerts = false");
    EXPECT_EQ(engines_.log.CallsWith("Open"), (Texts{"Open Desk.xlsx read-only"}));
    EXPECT_EQ(engines_.log.CallsWith("Quit").size(), 1U);
    EXPECT_FALSE(fs::exists(At("output")));
}

TEST_F(CommandsTest, CheckPrintsALineForEachFinding)
{
    Write("template/Desk.ini", "[Monthly Calendar]\nSheetName=Gone\n[Yearly Calendar]\n"
                               "SheetName=Gone too\n");
    EXPECT_EQ(Run(Command::Check), 1);
    EXPECT_EQ(out_.str(), "Monthly calendar: The sheet Gone does not exist.\n"
                          "Yearly calendar: The sheet Gone too does not exist.\n");
    EXPECT_EQ(err_.str(), "");
    line_.json = true;
    EXPECT_EQ(Run(Command::Check), 1);
    EXPECT_EQ(out_.str(), R"({"template":")" + Escaped(At("template/Desk.xlsx")) +
                              R"(","year":2027,"findings":["Monthly calendar: The sheet Gone does)"
                              R"( not exist.","Yearly calendar: The sheet Gone too does not exist)"
                              R"(."]})"
                              "\n");
}

TEST_F(CommandsTest, CheckTellsWhichHolidaysAreNotRead)
{
    Write("template/Desk.ini", "[Monthly Calendar]\nHoliday1=0101,DAY,a\nHoliday2=1 May,DAY,b\n"
                               "[Yearly Calendar]\n\nHoliday1=99999,EASTER,typo\n");
    EXPECT_EQ(Run(Command::Check), 1);
    EXPECT_EQ(out_.str(),
              "Desk.ini, line 3: The date \"1 May\" is not a number. Write the month and "
              "the day, such as 1225.\n"
              "Desk.ini, line 6: The number \"99999\" is too large. Nothing after this "
              "line is read.\n");
}

TEST_F(CommandsTest, CheckTellsWhichRegionTheHolidaysDoNotKnow)
{
    Write("template/Desk.ini",
          "[Monthly Calendar]\nHoliday1= # Regions: BY Bayern\nHoliday2=0101,DAY,a\n"
          "[Yearly Calendar]\nHoliday1=0101,DAY,a\n"
          "[Holidays]\nMonthlyRegion=BY\nYearlyRegion=XX\n");
    EXPECT_EQ(Run(Command::Check), 1);
    EXPECT_EQ(out_.str(),
              "Yearly calendar: The holidays know no region XX. It gets the days of the "
              "whole country.\n");
}

TEST_F(CommandsTest, CheckTellsWhichLinesOfTheHolidayFilesAreNotRead)
{
    Write("orrery.ini", "[Monthly Calendar]\nHolidayFile=Own.txt\n"
                        "[Yearly Calendar]\nHolidayFile=Own.txt\n");
    Write("holiday/Own.txt", "# own days\n0101,DAY,a\n0230,DAY,b\n");
    EXPECT_EQ(Run(Command::Check), 1);
    EXPECT_EQ(out_.str(),
              "Own.txt, line 3: The date \"0230\" does not exist. Write the month and the "
              "day, such as 1225.\n");
}

TEST_F(CommandsTest, CheckUsesThisYearByDefault)
{
    now_ = 1939291200; // noon in Greenwich on 15 June 2031
    line_.years.clear();
    line_.json = true;
    EXPECT_EQ(Run(Command::Check), 0);
    EXPECT_NE(out_.str().find("\"year\":2031,"), std::string::npos) << out_.str();
}

TEST_F(CommandsTest, CheckReportsATemplateThatCannotBeOpened)
{
    Write("template/Desk.xlsx", "no workbook");
    line_.json = true;
    EXPECT_EQ(Run(Command::Check), 1);
    EXPECT_TRUE(err_.str().starts_with("Error!\nError Info: "));
    EXPECT_TRUE(out_.str().starts_with("{\"reports\":[\""));
    EXPECT_EQ(engines_.log.CallsWith("Quit").size(), 1U);
}

TEST_F(CommandsTest, CheckReadsAHolidayFile)
{
    Write("holiday/Here.txt", "0101,DAY,New Year\n> days 2\n");
    line_.templateName = "Here.txt";
    EXPECT_EQ(Run(Command::Check), 0);
    EXPECT_EQ(out_.str(), "Here.txt: every line is understood; 1 rule.\n");
    Write("holiday/Here.txt", "0101,DAY,New Year\n1101,SAT ON AFTER,All Saints\n");
    EXPECT_EQ(Run(Command::Check), 1);
    EXPECT_EQ(out_.str(), "Here.txt, line 2: The kind \"SAT ON AFTER\" is not known. Did you mean "
                          "\"SAT ON OR AFTER\"?\n");
}

TEST_F(CommandsTest, CheckNamesARegionThatTheFileDoesNotList)
{
    Write("holiday/Here.txt", "# Regions: BY Bayern\n0601,FIXED,Feast\n> only in BY SN\n"
                              "# Further file: Club\n0602,DAY,Party\n> only in SN\n");
    line_.templateName = "Here.txt";
    EXPECT_EQ(Run(Command::Check), 1);
    EXPECT_EQ(out_.str(), "Here.txt, line 2: the region SN is not in the line \"# Regions:\".\n");
}

TEST_F(CommandsTest, HolidaysAreSortedAndNamedAsWritten)
{
    Write("holiday/Here.txt", "1225, DAY, Christmas\n1, EASTER, Easter Monday\n"
                              "0505,MON,Last of May\nno rule\n0101,DAY,A\n0101,DAY,B\n");
    line_.holidayFiles = {"Here.txt"};
    EXPECT_EQ(Run(Command::Holidays), 0);
    EXPECT_EQ(out_.str(), "2027-01-01\tA\n2027-01-01\tB\n2027-03-29\t Easter Monday\n"
                          "2027-05-31\tLast of May\n2027-12-25\t Christmas\n");
}

TEST_F(CommandsTest, ARuleWithoutADateIsNotPrinted)
{
    Write("holiday/a.txt", "0005,MON,in no month\n0101,DAY,New Year\n");
    line_.years = {"1970"};
    line_.holidayFiles = {"a.txt"};
    EXPECT_EQ(Run(Command::Holidays), 0);
    EXPECT_EQ(out_.str(), "1970-01-01\tNew Year\n");
}

TEST_F(CommandsTest, HolidaysOfAParameterFileAndAsJson)
{
    Write("template/Desk.ini", "[Monthly Calendar]\nHoliday1=0101,,Monthly\n[Yearly Calendar]\n"
                               "Holiday1=0102,,Yearly\n");
    line_.holidayFiles = {"Desk.ini"};
    line_.section = "monthly";
    EXPECT_EQ(Run(Command::Holidays), 0);
    EXPECT_EQ(out_.str(), "2027-01-01\tMonthly\n");
    line_.holidayFiles = {At("template/Desk.ini")};
    line_.section = "yearly";
    line_.json = true;
    EXPECT_EQ(Run(Command::Holidays), 0);
    EXPECT_EQ(out_.str(), R"({"year":2027,"holidays":[{"date":"2027-01-02","name":"Yearly"}]})"
                          "\n");
}

TEST_F(CommandsTest, HolidaysOfARegionInALanguage)
{
    Write("holiday/Here.txt", "0501,DAY,Labour Day\n> name de Tag der Arbeit; if Sat also next "
                              "workday\n0601,FIXED,Feast\n> only in BY\n0602,FIXED,Bank\n"
                              "> kind bank\n");
    line_.holidayFiles = {"Here.txt"};
    EXPECT_EQ(Run(Command::Holidays), 0);
    EXPECT_EQ(out_.str(), "2027-05-01\tLabour Day\n2027-05-03\tLabour Day (observed)\n");
    line_.region = "by";
    line_.language = "DE";
    line_.allKinds = true;
    EXPECT_EQ(Run(Command::Holidays), 0);
    EXPECT_EQ(out_.str(), "2027-05-01\tTag der Arbeit\n2027-05-03\tTag der Arbeit (observed)\n"
                          "2027-06-01\tFeast\n2027-06-02\tBank\n");
}

TEST_F(CommandsTest, HolidaysForCalendarPrograms)
{
    Write("holiday/Here.txt", "0501,DAY,Labour Day\n0601,FIXED,Feast\n");
    line_.holidayFiles = {"Here.txt"};
    line_.icsFile = "-";
    EXPECT_EQ(Run(Command::Holidays), 0);
    const std::string calendar = out_.str();
    EXPECT_TRUE(calendar.starts_with("BEGIN:VCALENDAR\r\n")) << calendar;
    EXPECT_NE(calendar.find("X-WR-CALNAME:Here\r\n"), std::string::npos) << calendar;
    EXPECT_NE(calendar.find("SUMMARY:Feast\r\n"), std::string::npos) << calendar;
    line_.icsFile = At("Here.ics");
    EXPECT_EQ(Run(Command::Holidays), 0);
    EXPECT_EQ(out_.str(), "");
    EXPECT_EQ(util::ReadFile(util::ToPath(At("Here.ics"))), calendar);
    line_.json = true;
    EXPECT_EQ(Run(Command::Holidays), 0);
    EXPECT_EQ(out_.str().substr(0, 12), R"({"year":2027)");
}

TEST_F(CommandsTest, HolidaysNeverReplaceTheirFile)
{
    Write("holiday/Here.txt", "0501,DAY,Labour Day\n");
    line_.holidayFiles = {"Here.txt"};
    line_.icsFile = At("holiday/Here.txt");
    EXPECT_EQ(Run(Command::Holidays), 1);
    EXPECT_NE(err_.str().find("would replace the holiday file"), std::string::npos) << err_.str();
    EXPECT_EQ(util::ReadFile(util::ToPath(At("holiday/Here.txt"))), "0501,DAY,Labour Day\n");
}

TEST_F(CommandsTest, HolidaysOfARegionThatNoFileHas)
{
    Write("holiday/Here.txt",
          "# Regions: BY Bayern; BW Baden\n0601,FIXED,Feast\n> only in BY SN\n");
    line_.holidayFiles = {"Here.txt"};
    line_.region = "XX";
    EXPECT_EQ(Run(Command::Holidays), 1);
    EXPECT_EQ(out_.str(), "");
    EXPECT_NE(err_.str().find("The holidays know no region \"XX\""), std::string::npos);
    EXPECT_NE(err_.str().find("BY, BW, SN"), std::string::npos);
    line_.region = "bw";
    EXPECT_EQ(Run(Command::Holidays), 0);
}

TEST_F(CommandsTest, HolidaysOfSeveralFilesAndYears)
{
    Write("holiday/a.txt", "a comment\n0101,DAY,New Year\n");
    Write("holiday/b.txt", "0101,DAY,Ben\n> born 2000\n");
    line_.holidayFiles = {"a.txt", At("holiday/b.txt")};
    line_.years = {"2027", "2028"};
    EXPECT_EQ(Run(Command::Holidays), 0);
    EXPECT_EQ(out_.str(), "2027-01-01\tNew Year\n2027-01-01\tBen (27)\n"
                          "2028-01-01\tNew Year\n2028-01-01\tBen (28)\n");
    line_.years = {"2027"};
    line_.json = true;
    EXPECT_EQ(Run(Command::Holidays), 0);
    const auto day = [this](const std::string& name, const std::string& file, int line) {
        JsonWriter rule;
        rule.BeginObject().Key("file").Text(At("holiday/" + file)).Key("line").Number(line);
        return R"({"date":"2027-01-01","name":")" + name + R"(","kind":"public","rule":)" +
               rule.EndObject().Result() + R"(,"substitute":false,"estimated":false})";
    };
    const std::string expected = R"({"year":2027,"holidays":[)" + day("New Year", "a.txt", 2) +
                                 ',' + day("Ben (27)", "b.txt", 1) + "]}\n";
    EXPECT_EQ(out_.str(), expected);
}

TEST_F(CommandsTest, HolidaysOfAMissingFileOrYear)
{
    line_.holidayFiles = {"Gone.txt"};
    EXPECT_EQ(Run(Command::Holidays), 1);
    EXPECT_NE(err_.str().find(At("holiday/Gone.txt")), std::string::npos);
    line_.holidayFiles = {At("template/Desk.xlsx")};
    line_.years = {"7000"};
    line_.json = true;
    EXPECT_EQ(Run(Command::Holidays), 1);
    EXPECT_EQ(out_.str(), R"({"reports":["Overflow: \"7000\" leads to a number that is too large )"
                          R"(for its place."]})"
                          "\n");
}

TEST_F(CommandsTest, EasterNeedsNoSettingsAndTouchesNoFolder)
{
    fs::remove_all(folder_ / "template");
    line_.years = {"2024", "1818", "2038"};
    EXPECT_EQ(Run(Command::Easter), 0);
    EXPECT_EQ(out_.str(), "2024-03-31\n1818-03-22\n2038-04-25\n");
    EXPECT_FALSE(fs::exists(At("template")));
    line_.years = {"2025", "40000"};
    line_.json = true;
    EXPECT_EQ(Run(Command::Easter), 1);
    EXPECT_EQ(out_.str(), R"({"easter":[{"year":2025,"date":"2025-04-20"}],"reports":["Overflow: )"
                          R"(\"40000\" leads to a number that is too large for its place."]})"
                          "\n");
}

TEST_F(CommandsTest, UnwritableOutputIsAFailure)
{
    out_.setstate(std::ios::badbit);
    line_.command = Command::Easter;
    Console console{out_, err_};
    EXPECT_EQ(RunCommand(line_, system_, engines_, console), 1);
    EXPECT_NE(err_.str(), "");
}

} // namespace
} // namespace orrery::cli
