#include "app/template_folder.h"

#include "app/working_sets.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/scratch_folder_test.h"

namespace orrery::app {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;
using util::ErrorKind;

struct NameCase {
    const char* name;
    const char* file;
    bool expected;
};

class TemplateNameTest : public testing::TestWithParam<NameCase> {};

TEST_P(TemplateNameTest, IsRecognisedByItsExtension)
{
    EXPECT_EQ(IsTemplateName(GetParam().file), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Names, TemplateNameTest,
    testing::Values(NameCase{"Xls", "Desk.xls", true}, NameCase{"Xlsx", "Desk.xlsx", true},
                    NameCase{"AnyCase", "DESK.XlSx", true},
                    NameCase{"SeveralDots", "My.Cal.2027.xls", true},
                    NameCase{"Macros", "Desk.xlsm", false}, NameCase{"Binary", "Desk.xlsb", false},
                    NameCase{"ParameterFile", "Desk.ini", false},
                    NameCase{"EndingWithoutDot", "Deskxls", false},
                    NameCase{"EndingInside", "Desk.xls.bak", false},
                    NameCase{"OpenElsewhere", "~$Desk.xlsx", false}, NameCase{"Empty", "", false}),
    [](const auto& each) { return std::string(each.param.name); });

class TemplateFolderTest : public testing_support::ScratchFolderTest {
protected:
    const std::string templates_ = At("template/");
    const std::string installed_ = At("installed/");

    template <typename Action> static std::optional<util::AnyErrorKind> KindOf(Action action)
    {
        try {
            action();
        }
        catch (const Error& error) {
            return error.Kind();
        }
        ADD_FAILURE() << "nothing was thrown";
        return std::nullopt;
    }
};

TEST_F(TemplateFolderTest, TemplatesAreListedByName)
{
    for (const char* file : {"b.xls", "a.XLSX", "c.ini", "~$b.xls", ".hidden.xls", "d.txt"})
        Write(std::string("template/") + file, "");
    fs::create_directories(At("template/folder.xls"));
    EXPECT_EQ(ListTemplates(templates_), (Texts{"a.XLSX", "b.xls"}));
    EXPECT_EQ(ListTemplates(At("nowhere/")), Texts());
}

TEST_F(TemplateFolderTest, AFileReplacesOneWithTheSameName)
{
    const std::string file = Write("from/Desk.xls", "new");
    CopyFileInto(templates_, file); // creates the folder
    EXPECT_EQ(util::ReadFile(At("template/Desk.xls")), "new");
    Write("from/Desk.xls", "newer");
    CopyFileInto(templates_, file);
    EXPECT_EQ(util::ReadFile(At("template/Desk.xls")), "newer");
    EXPECT_EQ(util::ReadFile(file), "newer");
}

TEST_F(TemplateFolderTest, AFileThatCannotBeCopiedIsAnErrorAndKeepsTheOldOne)
{
    EXPECT_EQ(KindOf([&] { CopyFileInto(templates_, At("gone.xls")); }), ErrorKind::FileNotFound);
    fs::create_directories(At("from/Desk.xls"));
    Write("template/Desk.xls", "old");
    EXPECT_EQ(KindOf([&] { CopyFileInto(templates_, At("from/Desk.xls")); }),
              ErrorKind::NotARegularFile);
    EXPECT_EQ(util::ReadFile(At("template/Desk.xls")), "old");
    Write("taken", "a file where the folder should be");
    const std::string good = Write("good.xls", "good");
    EXPECT_EQ(KindOf([&] { CopyFileInto(At("taken/"), good); }), ErrorKind::FileNotWritable);
}

TEST_F(TemplateFolderTest, MissingShippedTemplatesAreCopied)
{
    Write("installed/template/Desk.xlsx", "shipped");
    Write("installed/template/Desk.ini", "shipped");
    Write("template/Desk.ini", "my own");
    EXPECT_EQ(ShippedTemplateFolder(installed_), At("installed/template/"));
    CopyShippedTemplates(installed_, templates_);
    EXPECT_EQ(util::ReadFile(At("template/Desk.xlsx")), "shipped");
    EXPECT_EQ(util::ReadFile(At("template/Desk.ini")), "my own");
}

TEST_F(TemplateFolderTest, WithoutShippedTemplatesThereIsNothingToCopy)
{
    EXPECT_EQ(ShippedTemplateFolder(""), "");
    EXPECT_EQ(ShippedTemplateFolder(installed_), "");
    Write("installed/template/Desk.ini", "no template");
    EXPECT_EQ(ShippedTemplateFolder(installed_), "");
    EXPECT_EQ(KindOf([&] { CopyShippedTemplates(installed_, templates_); }),
              ErrorKind::FileNotFound);
}

// ---- the working sets of a template

class WorkingSetsTest : public testing_support::ScratchFolderTest {
protected:
    WorkingSetsTest()
    {
        Write("orrery.ini", "[Monthly Calendar]\nSheetName=Default month\nFirstCellOfDay=C7\n"
                            "[Yearly Calendar]\nSheetName=Default year\n");
        settings_ = LoadSettings(LocationsBeside(At("orrery.ini")));
    }
    Settings settings_;
};

TEST_F(WorkingSetsTest, WithoutAParameterFileTheyAreTheDefaultsAndCountAsChanged)
{
    const WorkingSets working = LoadWorkingSets(settings_, "Desk.xls");
    EXPECT_FALSE(working.parameterFileExists);
    EXPECT_TRUE(working.monthlyChanged);
    EXPECT_TRUE(working.yearlyChanged);
    EXPECT_EQ(working.sets.Monthly.SheetName, "Default month");
    EXPECT_EQ(working.sets.Monthly.RowIntervalOfDay, 7) << "the default first-day row";
    EXPECT_EQ(working.sets.Yearly.SheetName, "Default year");
}

TEST_F(WorkingSetsTest, AParameterFileIsReadOverTheDefaults)
{
    Write("template/My.Desk.ini", "[Monthly Calendar]\nSheetName=Own month\n"
                                  "MonthName=1,2,3,4,5,6,7,8,9,10,11,12\n");
    const WorkingSets working = LoadWorkingSets(settings_, "My.Desk.xls");
    EXPECT_TRUE(working.parameterFileExists);
    EXPECT_FALSE(working.Changed());
    EXPECT_EQ(working.sets.Monthly.SheetName, "Own month");
    EXPECT_EQ(working.sets.Yearly.SheetName, "Default year");
    EXPECT_EQ(settings_.names.Months.Name(working.sets.Monthly.MonthName, 11), "12");
}

} // namespace
} // namespace orrery::app
