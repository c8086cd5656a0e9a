#include "engines/excel/excel_application.h"

#include "book/error.h"
#include "fake_object.h"
#include "util/error_text.h"
#include "util/paths.h"

#include <gtest/gtest.h>

namespace orrery::excel {
namespace {

using book::CellMember;
using Texts = std::vector<std::string>;

class ExcelApplicationTest : public testing::Test {
protected:
    ExcelApplicationTest()
    {
        world_.answers["Application.Workbooks"] = fake::GiveObject(world_, "Workbooks");
        world_.answers["Workbooks.Open"] = fake::GiveObject(world_, "Workbook");
        world_.answers["Workbook.Worksheets"] = fake::GiveObject(world_, "Worksheets");
        world_.answers["Worksheets."] = fake::GiveObject(world_, "Worksheet");
        world_.answers["Worksheet.Cells"] = fake::GiveObject(world_, "Range");
        application_ = std::make_unique<ExcelApplication>(
            [this] {
                return Instance{fake::MakeObject(world_, "Application"), std::nullopt};
            },
            std::make_unique<fake::PausedClock>());
    }
    ~ExcelApplicationTest() override
    {
        application_.reset();
        world_.answers.clear();
        EXPECT_EQ(world_.objects, 0) << "no reference is kept";
    }

    book::Workbook& Open() { return application_->OpenWorkbook(LR"(C:\t\Desk.xls)", true); }

    /// The calls since the last time, without lookups of ids.
    Texts TakeCalls()
    {
        Texts calls = std::move(world_.calls);
        world_.calls.clear();
        std::erase_if(calls, [](const std::string& call) { return call.starts_with("id "); });
        return calls;
    }

    fake::World world_;
    std::unique_ptr<ExcelApplication> application_;
};

TEST_F(ExcelApplicationTest, Switches)
{
    application_->SetDisplayAlerts(false);
    application_->SetVisible(false);
    application_->SetInteractive(true);
    application_->SetScreenUpdating(true);
    EXPECT_EQ(TakeCalls(), (Texts{"Application.DisplayAlerts put (BOOL false)",
                                  "Application.Visible put (BOOL false)",
                                  "Application.Interactive put (BOOL true)",
                                  "Application.ScreenUpdating put (BOOL true)"}));
}

TEST_F(ExcelApplicationTest, MayComeToTheFrontBeforeItIsShown)
{
    ExcelApplication application(
        [this] {
            return Instance{fake::MakeObject(world_, "Application"), std::nullopt,
                            [this] { world_.calls.push_back("may come to the front"); }};
        },
        std::make_unique<fake::PausedClock>());
    application.SetVisible(false);
    application.SetVisible(true);
    EXPECT_EQ(TakeCalls(), (Texts{"Application.Visible put (BOOL false)", "may come to the front",
                                  "Application.Visible put (BOOL true)"}));
}

TEST_F(ExcelApplicationTest, ReadsWhetherItIsVisible)
{
    world_.answers["Application.Visible"] = fake::GiveBool(true);
    EXPECT_TRUE(application_->Visible());
    world_.answers["Application.Visible"] = fake::GiveBool(false);
    EXPECT_FALSE(application_->Visible());
    EXPECT_EQ(TakeCalls(), (Texts{"Application.Visible get ()", "Application.Visible get ()"}));
}

TEST_F(ExcelApplicationTest, OpensATemplateReadOnlyAndOmitsTheRest)
{
    Open();
    EXPECT_EQ(TakeCalls(),
              (Texts{"Application.Workbooks get ()", "Application.AutomationSecurity put (I4 3)",
                     "Workbooks.Open call (BSTR \"C:\\t\\Desk.xls\", omitted, BOOL true)",
                     "Application.AutomationSecurity put (I4 1)"}));
}

TEST_F(ExcelApplicationTest, OpensNothingThatTheCheckRefuses)
{
    std::filesystem::path checked;
    StartOptions options;
    options.checkBeforeOpening = [&](const std::filesystem::path& path) {
        checked = path;
        throw Error(book::ErrorKind::PasswordProtected);
    };
    ExcelApplication application(
        [this] {
            return Instance{fake::MakeObject(world_, "Application"), std::nullopt};
        },
        std::make_unique<fake::PausedClock>(), options);
    EXPECT_THROW(application.OpenWorkbook(LR"(C:\t\Desk.xls)", true), Error);
    EXPECT_EQ(checked, LR"(C:\t\Desk.xls)");
    EXPECT_EQ(TakeCalls(), Texts());
}

TEST_F(ExcelApplicationTest, FindsSheetsThroughOneCollection)
{
    auto& workbook = Open();
    TakeCalls();
    auto* const sheet = workbook.FindWorksheet("Pl\xC3\xA4ne");
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(workbook.FindWorksheet("Other"), sheet) << "the same object is the same sheet";
    EXPECT_EQ(TakeCalls(),
              (Texts{"Workbook.Worksheets get ()", "Worksheets. get+call (BSTR \"Pl\xC3\xA4ne\")",
                     "Worksheets. get+call (BSTR \"Other\")"}));
}

TEST_F(ExcelApplicationTest, AMissingSheetIsNullptr)
{
    auto& workbook = Open();
    for (const fake::Answer& answer :
         {fake::Refuse(DISP_E_BADINDEX),
          fake::Explain(L"Subscript", static_cast<SCODE>(0x800A0009)),
          fake::Explain(L"Invalid index.", DISP_E_BADINDEX), fake::GiveNoObject()}) {
        world_.answers["Worksheets."] = answer;
        EXPECT_EQ(workbook.FindWorksheet("None"), nullptr);
    }
    world_.answers["Worksheets."] = fake::Refuse(E_OUTOFMEMORY);
    EXPECT_THROW(workbook.FindWorksheet("None"), CallFailure);
}

TEST_F(ExcelApplicationTest, RenamesAndCopiesSheets)
{
    auto* const sheet = Open().FindWorksheet("Plan");
    world_.answers["Worksheet.Name"] = fake::GiveText("Plan");
    EXPECT_EQ(sheet->Name(), "Plan");
    world_.answers.erase("Worksheet.Name");
    TakeCalls();
    sheet->SetName("January");
    sheet->CopyAfter(*sheet);
    world_.answers["Worksheet.Next"] = fake::GiveObject(world_, "Worksheet");
    auto* const copy = sheet->Next();
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, sheet);
    EXPECT_EQ(sheet->Next(), copy);
    world_.answers["Worksheet.Next"] = fake::GiveNoObject();
    EXPECT_EQ(copy->Next(), nullptr);
    EXPECT_EQ(TakeCalls(), (Texts{"Worksheet.Name put (BSTR \"January\")",
                                  "Worksheet.Copy call (omitted, object)", "Worksheet.Next get ()",
                                  "Worksheet.Next get ()", "Worksheet.Next get ()"}));
}

TEST_F(ExcelApplicationTest, WritesACellInTwoCalls)
{
    auto* const sheet = Open().FindWorksheet("Plan");
    TakeCalls();
    sheet->SetCell(6, 2, std::int16_t{2027}, CellMember::Default);
    sheet->SetCell(65536, 256, std::string("Neujahr"), CellMember::Value);
    EXPECT_EQ(TakeCalls(), (Texts{"Worksheet.Cells get+call (I4 6, I4 2)", "Range. put (I2 2027)",
                                  "Worksheet.Cells get+call (I4 65536, I4 256)",
                                  "Range.Value put (BSTR \"Neujahr\")"}));
    sheet->SetCell(1, 1, std::int16_t{1}, CellMember::Value);
    EXPECT_EQ(world_.calls.size(), 2U) << "all ids are known by now";
}

TEST_F(ExcelApplicationTest, SavesWithoutAChangeOfAccess)
{
    auto& workbook = Open();
    TakeCalls();
    workbook.SaveAs(LR"(C:\out\2027Desk.xls)", book::AccessMode::NoChange);
    EXPECT_EQ(TakeCalls(),
              (Texts{"Workbook.SaveAs call (BSTR \"C:\\out\\2027Desk.xls\", omitted, omitted, "
                     "omitted, omitted, omitted, I4 1)"}));
}

TEST_F(ExcelApplicationTest, ReleasesAWorkbookThatStaysOpen)
{
    auto& workbook = Open();
    workbook.FindWorksheet("Plan");
    TakeCalls();
    application_->ReleaseWorkbook(workbook);
    EXPECT_EQ(TakeCalls(), Texts{});
}

TEST_F(ExcelApplicationTest, Quits)
{
    Open();
    TakeCalls();
    application_->Quit();
    EXPECT_EQ(TakeCalls(), (Texts{"Application.Workbooks get ()", "Workbooks.Count get ()",
                                  "Application.Quit call ()"}));
}

const Texts kLeft = {"Application.Workbooks get ()",
                     "Workbooks.Count get ()",
                     "Application.Interactive put (BOOL true)",
                     "Application.ScreenUpdating put (BOOL true)",
                     "Application.Visible put (BOOL true)",
                     "Workbook.Close call (BOOL false)",
                     "Application.DisplayAlerts put (BOOL true)"};

TEST_F(ExcelApplicationTest, IsLeftToItsUserInsteadOfEndedIfItHasOtherWorkbooks)
{
    Open();
    world_.answers["Workbooks.Count"] = fake::GiveNumber(2);
    TakeCalls();
    application_->Quit();
    EXPECT_EQ(TakeCalls(), kLeft);
    application_.reset();
    EXPECT_EQ(TakeCalls(), Texts()) << "it belongs to its user";
}

TEST_F(ExcelApplicationTest, IsLeftToItsUserAfterAnError)
{
    Open();
    world_.answers["Workbooks.Count"] = fake::GiveNumber(2);
    TakeCalls();
    application_.reset(); // as when a run ends without Quit
    EXPECT_EQ(TakeCalls(), kLeft);
}

TEST_F(ExcelApplicationTest, QuitsAfterAnErrorIfNobodyKnowsItsProcess)
{
    Open();
    TakeCalls();
    application_.reset();
    EXPECT_EQ(TakeCalls(), (Texts{"Application.Workbooks get ()", "Workbooks.Count get ()",
                                  "Application.Quit call ()"}));
}

TEST_F(ExcelApplicationTest, EveryStepIsTriedBeforeItIsLeftToItsUser)
{
    Open();
    world_.answers["Workbooks.Count"] = fake::GiveNumber(2);
    world_.answers["Application.Interactive"] = fake::Explain(L"Not now.", 0);
    world_.answers["Workbook.Close"] = fake::Refuse(E_FAIL);
    TakeCalls();
    try {
        application_->Quit();
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(util::ErrorText(error), "Not now.") << "the first failure";
    }
    EXPECT_EQ(TakeCalls(), kLeft);
}

TEST_F(ExcelApplicationTest, IsLeftToItsUserAlthoughTheRunWasGivenUp)
{
    book::Patience patience;
    StartOptions options;
    options.patience = &patience;
    auto application = std::make_unique<ExcelApplication>(
        [this] {
            return Instance{fake::MakeObject(world_, "Application"), std::nullopt};
        },
        std::make_unique<fake::PausedClock>(), options);
    application->OpenWorkbook(LR"(C:\t\Desk.xls)", true);
    world_.answers["Workbooks.Count"] = fake::GiveNumber(2);
    patience.GiveUp(); // it cannot be ended: nobody knows its process
    EXPECT_THROW(application->SetVisible(false), Error);
    TakeCalls();
    application.reset();
    EXPECT_EQ(TakeCalls(), kLeft);
}

TEST_F(ExcelApplicationTest, ItsUserGetsItWithAlerts)
{
    application_->SetDisplayAlerts(false);
    application_->SetVisible(true);
    world_.answers["Application.DisplayAlerts"] = fake::Refuse(E_FAIL);
    EXPECT_THROW(application_->SetDisplayAlerts(true), Error);
    world_.answers.erase("Application.DisplayAlerts");
    TakeCalls();
    application_.reset();
    EXPECT_EQ(TakeCalls(), Texts{"Application.DisplayAlerts put (BOOL true)"});
}

TEST_F(ExcelApplicationTest, EndsQuietlyIfItCannotBeAskedAboutOtherWorkbooks)
{
    Open();
    world_.answers["Workbooks.Count"] = fake::Refuse(RPC_E_DISCONNECTED);
    EXPECT_NO_THROW(application_.reset());
}

TEST_F(ExcelApplicationTest, MakesNoCallsOnceItIsGone)
{
    auto* const sheet = Open().FindWorksheet("Plan");
    TakeCalls();
    world_.answers["Range.Value"] = fake::Refuse(RPC_E_DISCONNECTED);
    std::string text;
    for (int i = 0; i < 2; ++i) {
        try {
            sheet->SetCell(1, 1, std::int16_t{1}, CellMember::Value);
            FAIL() << "nothing was thrown";
        }
        catch (const Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::ApplicationLost);
            text = util::ErrorText(error);
        }
        EXPECT_EQ(TakeCalls().size(), i == 0 ? 2U : 0U);
    }
    EXPECT_TRUE(text.starts_with("\"Excel\" does not answer any more: ")) << text;
    EXPECT_THROW(application_->Quit(), Error);
    EXPECT_EQ(TakeCalls(), Texts{});
}

TEST_F(ExcelApplicationTest, CanBeGivenUpWhileItLives)
{
    book::Patience patience;
    {
        StartOptions options;
        options.patience = &patience;
        ExcelApplication application(
            [this, &patience] {
                EXPECT_FALSE(patience.GiveUp()) << "there is none yet";
                return Instance{fake::MakeObject(world_, "Application"), std::nullopt};
            },
            std::make_unique<fake::PausedClock>(), options);
        EXPECT_TRUE(patience.GiveUp());
        EXPECT_THROW(application.SetVisible(false), Error);
        EXPECT_EQ(TakeCalls(), Texts());
    }
    EXPECT_FALSE(patience.GiveUp());
}

TEST_F(ExcelApplicationTest, AStartThatFailsIsPassedOn)
{
    EXPECT_THROW(ExcelApplication([]() -> Instance { throw Error(book::ErrorKind::EngineMissing); },
                                  std::make_unique<fake::PausedClock>()),
                 Error);
}

TEST(PathTextTest, IsInTheApplicationsForm)
{
    EXPECT_EQ(PathText(L"C:/cal/out/2027Desk.xls"), R"(C:\cal\out\2027Desk.xls)");
    EXPECT_EQ(PathText(LR"(\\server\share\2027 x.xls)"), R"(\\server\share\2027 x.xls)");
    EXPECT_EQ(PathText(L"C:\\\x5143\x65E5\\\xD83C\xDF84.xls"),
              "C:\\\xE5\x85\x83\xE6\x97\xA5\\\xF0\x9F\x8E\x84.xls");
    const std::string folder = "C:\\" + std::string(240, 'x') + '\\';
    EXPECT_EQ(PathText(util::ToPath(folder + std::string(60, 'y'))), folder + std::string(60, 'y'));
    const std::string share = "\\\\server\\share\\" + std::string(240, 'x');
    EXPECT_EQ(PathText(util::ToPath(share)), share);
    EXPECT_TRUE(PathText(L"Desk.xls").ends_with(R"(\Desk.xls)"));
    EXPECT_EQ(PathText(L"Desk.xls")[1], ':');
}

TEST(CheckPathLengthTest, TakesUpTo218Units)
{
    const std::string folder = "C:\\";
    EXPECT_NO_THROW(CheckPathLength(util::ToPath(folder + std::string(215, 'x'))));
    EXPECT_THROW(CheckPathLength(util::ToPath(folder + std::string(216, 'x'))), Error);
    std::string letters; // of two bytes and one unit each
    for (int i = 0; i < 215; ++i)
        letters += "\xC3\xA4";
    EXPECT_NO_THROW(CheckPathLength(util::ToPath(folder + letters)));
    EXPECT_THROW(CheckPathLength(util::ToPath(folder + letters + "x")), Error);
}

} // namespace
} // namespace orrery::excel
