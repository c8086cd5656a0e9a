// A copied sheet has a module of its own with the code of its model.

#include "book/error.h"
#include "engines/builtin/vba/compression.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "util/error_text.h"
#include "vba/built_project.h"
#include "xlsx/copied_sheets.h"

namespace orrery::xlsx {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vba::test::BuiltModule;

constexpr const char* kProject = "xl/vbaProject.bin";
const std::string kEvent = "Private Sub Worksheet_Activate()\r\n    Beep\r\nEnd Sub\r\n";

class CopiedMacrosTest : public CopiedSheetsTest {
protected:
    /// The sheet "Model" has the module Sheet1 in this project.
    void PutProject(const std::string& bytes)
    {
        book.Put(kModel, BuiltBook::Worksheet("<sheetPr codeName=\"Sheet1\"/><sheetData/>"));
        book.Put("xl/_rels/workbook.xml.rels",
                 BuiltBook::Links(
                     {{"worksheet", "worksheets/sheet1.xml"}, {"vbaProject", "vbaProject.bin"}}));
        book.Put(kProject, bytes);
    }
    void PutModules(const std::string& code)
    {
        project =
            xls::test::BuildCompound(vba::test::ProjectNodes({{"ThisWorkbook"}, {"Sheet1", code}}));
        PutProject(project);
    }
    void PutSignatures()
    {
        book.Put("xl/_rels/vbaProject.bin.rels",
                 BuiltBook::Links({{"vbaProjectSignature", "vbaProjectSignature.bin"},
                                   {"other", "other.bin"},
                                   {"vbaProjectSignatureAgile", "vbaProjectSignatureAgile.bin"}}));
        book.Put("xl/other.bin", "other");
        book.Put("xl/vbaProjectSignature.bin", "signed", "vbaProjectSignature");
        book.Put("xl/vbaProjectSignatureAgile.bin", "signed", "vbaProjectSignatureAgile");
    }

    /// The code names of the three months, "" where there is none.
    static Texts CodeNames(const SavedPackage& saved)
    {
        Texts names;
        for (const auto& part : SheetsOf(saved)) {
            const auto found = saved.Values(part, "//sheetPr/@codeName");
            names.push_back(found.empty() ? "" : found.at(0));
        }
        return names;
    }
    static std::string SourceOf(const SavedPackage& saved, const std::string& module)
    {
        const xls::CompoundFile file(saved.Bytes(kProject));
        const auto stream = file.Find(module, file.Find("VBA").value()).value();
        return vba::Decompress(file.ReadStream(stream), 10000);
    }

    std::string project;
};

TEST_F(CopiedMacrosTest, EachCopyHasTheCodeOfItsModel)
{
    PutModules(kEvent);
    const auto saved = Save();
    EXPECT_THAT(CodeNames(saved), ElementsAre("Sheet1", "Sheet2", "Sheet3"));
    for (const char* name : {"Sheet1", "Sheet2", "Sheet3"})
        EXPECT_EQ(SourceOf(saved, name), (BuiltModule{name, kEvent}.Source()));
    EXPECT_THAT(losses, IsEmpty());
}

TEST_F(CopiedMacrosTest, WithoutCodeTheProjectStays)
{
    PutModules("");
    PutSignatures();
    const auto saved = Save();
    EXPECT_THAT(CodeNames(saved), ElementsAre("Sheet1", "", ""));
    EXPECT_TRUE(saved.Bytes(kProject) == project);
    EXPECT_EQ(saved.Bytes("xl/vbaProjectSignature.bin"), "signed");
    EXPECT_THAT(losses, IsEmpty());
}

TEST_F(CopiedMacrosTest, SignaturesFallAway)
{
    PutModules(kEvent);
    PutSignatures();
    const auto saved = Save();
    const auto targets = saved.Targets(kProject);
    ASSERT_EQ(targets.size(), 1U);
    EXPECT_EQ(targets[0].target, "xl/other.bin");
    EXPECT_THAT(saved.NamesWith("xl/vbaProjectSignature"), IsEmpty());
    EXPECT_EQ(saved.Bytes("xl/other.bin"), "other");
    ASSERT_EQ(losses.size(), 1U);
    EXPECT_EQ(losses[0].Kind(), book::ErrorKind::SignatureNotKept);
}

TEST_F(CopiedMacrosTest, MacrosThatCannotBeReadStay)
{
    for (const auto& [bytes, cause] :
         {std::pair<std::string, std::string>{"no compound file", "they cannot be read"},
          {xls::test::BuildCompound({}), "\"VBA\" is missing"}}) {
        PutProject(bytes);
        const auto saved = Save();
        EXPECT_THAT(CodeNames(saved), ElementsAre("Sheet1", "", ""));
        EXPECT_TRUE(saved.Bytes(kProject) == bytes);
        ASSERT_EQ(losses.size(), 1U);
        EXPECT_THAT(util::ErrorText(losses[0]),
                    HasSubstr("template.xlsx\" has macros that cannot be copied: " + cause + "."));
    }
}

} // namespace
} // namespace orrery::xlsx
