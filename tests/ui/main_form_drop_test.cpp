#include "ui/main_form_support.h"

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

// ---- an empty template folder

class EmptyFolderTest : public MainFormTest {
protected:
    EmptyFolderTest()
    {
        fs::remove_all(At("template"));
        Write("installed/template/Wall.xlsx", "workbook");
        Write("installed/template/Wall.ini", "[Yearly Calendar]\nSheetName=Wall\n");
    }
};

TEST_F(EmptyFolderTest, SaysWhatToDoAndOffersTheShippedTemplates)
{
    system_.installed = At("installed/");
    const MainForm& form = Open();
    EXPECT_TRUE(form.lblEmptyFolder.visible);
    EXPECT_TRUE(form.cmdCopyTemplates.visible);
    EXPECT_EQ(
        form.lblEmptyFolder.caption,
        "There is no template in the folder\r\n" + At("template/") +
            "\r\nPut Excel workbooks (.xls or .xlsx) into it or drop them here,\r\nor copy the "
            "shipped templates.");
    EXPECT_TRUE(form.lblEmptyFolder.isLiteral);
}

TEST_F(EmptyFolderTest, WithoutShippedTemplatesNoneAreOffered)
{
    const MainForm& form = Open();
    EXPECT_TRUE(form.lblEmptyFolder.visible);
    EXPECT_FALSE(form.cmdCopyTemplates.visible);
    EXPECT_EQ(form.lblEmptyFolder.caption,
              "There is no template in the folder\r\n" + At("template/") +
                  "\r\nPut Excel workbooks (.xls or .xlsx) into it or drop them here.");
}

TEST_F(EmptyFolderTest, LeavesOnlyHelpAboutAndExitEnabled)
{
    const MainForm& form = Open();
    for (const Button* button :
         {&form.cmdOpenTemplate, &form.cmdModify, &form.cmdSave, &form.cmdGenerate})
        EXPECT_FALSE(button->enabled) << button->name;
    for (const Button* button : {&form.cmdHelp, &form.cmdAbout, &form.cmdExit})
        EXPECT_TRUE(button->enabled) << button->name;
}

TEST_F(EmptyFolderTest, CopyingFillsTheList)
{
    system_.installed = At("installed/");
    MainForm& form = Open();
    form.cmdCopyTemplates_Click();
    EXPECT_EQ(form.cboTemplateFile.entries, Texts{"Wall.xlsx"});
    EXPECT_FALSE(form.lblEmptyFolder.visible);
    EXPECT_FALSE(form.cmdCopyTemplates.visible);
    EXPECT_EQ(form.focus, &form.cboTemplateFile) << "the button that had the focus is gone";
    Choose("Wall.xlsx");
    EXPECT_EQ(form.working.sets.Yearly.SheetName, "Wall");
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
}

TEST_F(EmptyFolderTest, FailedCopiesAreReported)
{
    system_.installed = At("installed/");
    MainForm& form = Open();
    fs::remove_all(At("installed"));
    form.cmdCopyTemplates_Click();
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"Report: \"" + At("installed/template") +
                                          "\" was not found. Check the name and the folder."});
    EXPECT_FALSE(form.cmdCopyTemplates.visible) << "there is nothing to copy any more";
}

TEST_F(EmptyFolderTest, IsListedAgainWhenTheWindowBecomesActive)
{
    MainForm& form = Open();
    WriteTemplate("template/New.xls");
    EXPECT_EQ(form.cboTemplateFile.entries, Texts());
    form.RefreshTemplates();
    EXPECT_EQ(form.cboTemplateFile.entries, Texts{"New.xls"});
    EXPECT_FALSE(form.lblEmptyFolder.visible);
}

TEST_F(MainFormTest, AFolderThatCannotBeListedIsNotCalledEmpty)
{
    fs::remove_all(At("template"));
    Write("template", "a file in the folder's place");
    const MainForm& form = Open();
    EXPECT_TRUE(form.lblEmptyFolder.visible);
    EXPECT_NE(form.lblEmptyFolder.caption.find("\"" + At("template/") + "\" cannot be read"),
              std::string::npos)
        << form.lblEmptyFolder.caption;
}

TEST_F(MainFormTest, TheListFollowsTheFolder)
{
    MainForm& form = OpenWith("Desk.xls");
    EditMonthlySheet("mine");
    WriteTemplate("template/New.xls");
    fs::remove(At("template/Plain.xlsx"));
    form.RefreshTemplates();
    EXPECT_EQ(form.cboTemplateFile.entries, (Texts{"Desk.xls", "New.xls"}));
    EXPECT_EQ(form.cboTemplateFile.selected, 0);
    EXPECT_EQ(form.working.sets.Monthly.SheetName, "mine") << "the chosen template stays as it is";
    fs::remove(At("template/Desk.xls"));
    form.RefreshTemplates();
    EXPECT_FALSE(form.cboTemplateFile.HasSelection());
    EXPECT_FALSE(form.cmdGenerate.enabled);
    WriteTemplate("template/Desk.xls");
    form.RefreshTemplates();
    EXPECT_EQ(form.cboTemplateFile.selected, 0);
    EXPECT_EQ(form.working.sets.Monthly.SheetName, "mine");
}

// ---- dropped files

class DropTest : public MainFormTest {
protected:
    void Drop(const Texts& files) { form_->DropFiles(files); }
};

TEST_F(DropTest, ATemplateIsCopiedAndChosen)
{
    Open();
    const std::string file = WriteTemplate("from/New.xlsx");
    Drop({file});
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
    EXPECT_EQ(ContentOf("template/New.xlsx"), ContentOf("from/New.xlsx"));
    EXPECT_EQ(form_->cboTemplateFile.entries, (Texts{"Desk.xls", "New.xlsx", "Plain.xlsx"}));
    EXPECT_EQ(Selected(), "New.xlsx");
    EXPECT_EQ(form_->CurrentTemplate(), "New.xlsx");
    EXPECT_TRUE(form_->cmdGenerate.enabled);
    EXPECT_TRUE(form_->cmdSave.enabled) << "it has no parameter file";
}

TEST_F(DropTest, ItsParameterFileIsCopiedToo)
{
    Open();
    const std::string file = WriteTemplate("from/New.xlsx");
    Write("from/New.ini", "[Monthly Calendar]\nSheetName=Own\n");
    Drop({file});
    EXPECT_EQ(form_->working.sets.Monthly.SheetName, "Own");
    EXPECT_FALSE(form_->working.Changed());
}

TEST_F(DropTest, TheLastOfSeveralIsChosen)
{
    Open();
    Drop({WriteTemplate("from/B.xls"), WriteTemplate("from/A.xls")});
    EXPECT_EQ(form_->cboTemplateFile.entries, (Texts{"A.xls", "B.xls", "Desk.xls", "Plain.xlsx"}));
    EXPECT_EQ(form_->CurrentTemplate(), "A.xls");
}

TEST_F(DropTest, OtherFilesAreReportedTogether)
{
    Open();
    Drop({Write("from/a.txt", ""), WriteTemplate("from/New.xls"), Write("from/b.pdf", "")});
    EXPECT_EQ(desktop_.TakeCalls(),
              Texts{"Report: \"a.txt\", \"b.pdf\" are no templates. Drop Excel workbooks (.xls or "
                    ".xlsx)."});
    EXPECT_EQ(form_->CurrentTemplate(), "New.xls");
    EXPECT_FALSE(fs::exists(At("template/a.txt")));
    Drop({At("from/b.pdf")});
    EXPECT_EQ(desktop_.TakeCalls(),
              Texts{"Report: \"b.pdf\" is no template. Drop Excel workbooks (.xls or .xlsx)."});
    EXPECT_EQ(form_->CurrentTemplate(), "New.xls");
}

TEST_F(DropTest, ATemplateOfTheFolderIsJustChosen)
{
    Open();
    Drop({At("template/../template/Desk.xls")});
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
    EXPECT_EQ(form_->CurrentTemplate(), "Desk.xls");
}

TEST_F(DropTest, ANameInTheCurrentFolderIsATemplateOfThatFolder)
{
    Open();
    const fs::path before = fs::current_path();
    fs::current_path(At("template"));
    Drop({"Desk.xls"});
    fs::current_path(before);
    EXPECT_EQ(desktop_.TakeCalls(), Texts()) << "nothing is asked, nothing is replaced";
    EXPECT_EQ(form_->CurrentTemplate(), "Desk.xls");
}

TEST_F(DropTest, SlashesSeparateFoldersOnEverySystem)
{
    Open();
    const auto withSlashes = [](std::string path) {
        std::replace(path.begin(), path.end(), '\\', '/');
        return path;
    };
    Drop({withSlashes(At("template/Desk.xls"))});
    EXPECT_EQ(desktop_.TakeCalls(), Texts()) << "it is in the folder";
    EXPECT_EQ(form_->CurrentTemplate(), "Desk.xls");
    Drop({withSlashes(WriteTemplate("from/New.xlsx"))});
    EXPECT_EQ(form_->cboTemplateFile.entries, (Texts{"Desk.xls", "New.xlsx", "Plain.xlsx"}));
    EXPECT_EQ(form_->CurrentTemplate(), "New.xlsx");
}

TEST_F(DropTest, AFileOfTheSameNameIsReplacedAfterAQuestion)
{
    OpenWith("Desk.xls");
    EditMonthlySheet("edited");
    const std::string file = Write("from/Desk.xls", "new");
    desktop_.answers = {true};
    Drop({file});
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"Ask: \"Desk.xls\" is already in the template folder.\r\n"
                                          "Do you want to replace it?"});
    EXPECT_EQ(ContentOf("template/Desk.xls"), "new");
    EXPECT_EQ(Selected(), "Desk.xls");
    EXPECT_EQ(form_->working.sets.Monthly.SheetName, "edited") << "the current one is not reloaded";
}

TEST_F(DropTest, NoKeepsTheFileAndTheChoice)
{
    OpenWith("Plain.xlsx");
    const std::string before = ContentOf("template/Desk.xls");
    const std::string file = Write("from/Desk.xls", "new");
    Write("from/Desk.ini", "new");
    desktop_.answers = {false};
    Drop({file});
    EXPECT_EQ(desktop_.TakeCalls().size(), 1U);
    EXPECT_EQ(ContentOf("template/Desk.xls"), before);
    EXPECT_EQ(ContentOf("template/Desk.ini"), "[Monthly Calendar]\nFirstCellOfDay=C6\n");
    EXPECT_EQ(Selected(), "Plain.xlsx");
}

TEST_F(DropTest, AParameterFileIsReplacedAfterItsOwnQuestion)
{
    Open();
    const std::string file = WriteTemplate("from/Desk.xlsx"); // beside Desk.xls: one Desk.ini
    Write("from/Desk.ini", "[Monthly Calendar]\nSheetName=New\n");
    desktop_.answers = {false};
    Drop({file});
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"Ask: \"Desk.ini\" is already in the template folder.\r\n"
                                          "Do you want to replace it?"});
    EXPECT_EQ(ContentOf("template/Desk.ini"), "[Monthly Calendar]\nFirstCellOfDay=C6\n");
    EXPECT_EQ(form_->CurrentTemplate(), "Desk.xlsx");
}

TEST_F(DropTest, TheChosenTemplateKeepsItsSetsBesideANewParameterFile)
{
    OpenWith("Desk.xls");
    const std::string file = WriteTemplate("from/Desk.xls");
    Write("from/Desk.ini", "[Monthly Calendar]\nSheetName=New\n");
    desktop_.answers = {true, true};
    Drop({file});
    EXPECT_EQ(form_->working.sets.Monthly.SheetName, "Sheet2");
    EXPECT_TRUE(form_->working.parameterFileExists);
    EXPECT_TRUE(form_->working.monthlyChanged);
    EXPECT_TRUE(form_->working.yearlyChanged);
    EXPECT_TRUE(form_->cmdSave.enabled) << "they differ from the file";
}

TEST_F(DropTest, ChoosingAsksForChangedSetsFirst)
{
    OpenWith("Plain.xlsx");
    desktop_.answers = {false};
    Drop({WriteTemplate("from/New.xls")});
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"Ask: The parameters for Plain.xlsx has been changed.\r\n"
                                          "Do you want to save the changes?"});
    EXPECT_EQ(form_->CurrentTemplate(), "New.xls");
}

TEST_F(DropTest, AParameterFileThatCannotBeReadIsReported)
{
    Open();
    const std::string file = WriteTemplate("from/New.xlsx");
    fs::create_directory(At("from/New.ini"));
    Drop({file});
    EXPECT_EQ(desktop_.TakeCalls(),
              Texts{"Report: \"" + At("from/New.ini") +
                    "\" is not a regular file: it is a folder. Only regular files are read and "
                    "replaced: use another name, or put a file in its place."});
}

TEST_F(DropTest, AFileThatCannotBeCopiedIsReportedAndTheOthersAreCopied)
{
    Open();
    Drop({At("from/gone.xls"), WriteTemplate("from/New.xls"), At("template/gone.xls")});
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"Report: \"" + At("from/gone.xls") +
                                          "\" was not found. Check the name and the folder."});
    EXPECT_EQ(form_->CurrentTemplate(), "New.xls");
}

} // namespace
} // namespace orrery::ui
