#include "engines/builtin/vba/project_text.h"

#include "util/error.h"
#include "vba/built_project.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orrery::vba {
namespace {

using namespace test;

const std::vector<BuiltModule> kListed = {{"ThisWorkbook"}, {"Sheet1"}, {"Module1", "", false}};

std::string WithDocument(const std::string& text, const char* model, const char* copy)
{
    ProjectText project(text);
    project.AddDocument(model, copy);
    return project.Bytes();
}

TEST(ProjectTextTest, StaysAsItIsWithoutCopies)
{
    EXPECT_EQ(ProjectText(TextOf(kListed)).Bytes(), TextOf(kListed));
}

TEST(ProjectTextTest, CopiesAreBehindTheirModelInTheListAndAmongTheWindows)
{
    ProjectText project(TextOf(kListed));
    project.AddDocument("Sheet1", "Sheet2");
    project.AddDocument("sheet1", "Sheet3");
    auto modules = kListed;
    modules.insert(modules.begin() + 2, {{"Sheet2"}, {"Sheet3"}});
    EXPECT_EQ(project.Bytes(), TextOf(modules));
}

TEST(ProjectTextTest, WindowsNeedNotBeListed)
{
    EXPECT_EQ(WithDocument("Document=Sheet1/&H00000000\r\nName=\"P\"\r\n", "Sheet1", "Sheet2"),
              "Document=Sheet1/&H00000000\r\nDocument=Sheet2/&H00000000\r\nName=\"P\"\r\n");
    EXPECT_EQ(WithDocument("Document=Sheet1/&H0\r\n[Workspace]\r\nOther=0\r\n", "Sheet1", "Sheet2"),
              "Document=Sheet1/&H0\r\nDocument=Sheet2/&H00000000\r\n[Workspace]\r\nOther=0\r\n");
}

TEST(ProjectTextTest, AModelThatIsListedTwiceHasOneCopy)
{
    EXPECT_EQ(WithDocument("Document=S/&H0\nDocument=S/&H0\n[Workspace]\nS=0\nS=0\n", "S", "T"),
              "Document=S/&H0\nDocument=T/&H00000000\nDocument=S/&H0\n[Workspace]\nS=0\n"
              "T=0, 0, 0, 0, C\nS=0\n");
}

TEST(ProjectTextTest, LinesEndAsTheyDid)
{
    EXPECT_EQ(WithDocument("Document=S1/&H0\n\rName=1\n\r", "S1", "S2"),
              "Document=S1/&H0\n\rDocument=S2/&H00000000\n\rName=1\n\r");
    EXPECT_EQ(WithDocument("Document=S1/&H0\nName=1", "S1", "S2"),
              "Document=S1/&H0\nDocument=S2/&H00000000\nName=1");
    EXPECT_EQ(WithDocument("Name=1\r\nDocument=S1/&H0", "S1", "S2"),
              "Name=1\r\nDocument=S1/&H0\r\nDocument=S2/&H00000000");
}

TEST(ProjectTextTest, OnlyTheModuleOfADocumentIsAModel)
{
    EXPECT_THROW(WithDocument(TextOf(kListed), "Module1", "Module2"), util::Error);
    EXPECT_THROW(WithDocument(TextOf(kListed), "Sheet", "Sheet2"), util::Error);
    EXPECT_THROW(WithDocument("[Workspace]\r\nSheet1=0\r\n", "Sheet1", "Sheet2"), util::Error);
    EXPECT_THROW(WithDocument("", "Sheet1", "Sheet2"), util::Error);
}

TEST(ProjectNamesTest, NewNamesAreAtTheEnd)
{
    ProjectNames names(NamesOf(kListed));
    EXPECT_EQ(names.Bytes(), NamesOf(kListed));
    names.Add({"Sheet2", "Sheet2"});
    names.Add({"\xC3\x84"
               "3",
               "\xC4"
               "3"});
    auto modules = kListed;
    modules.push_back({"Sheet2"});
    modules.push_back({"\xC3\x84"
                       "3",
                       "", true,
                       "\xC4"
                       "3"});
    EXPECT_EQ(names.Bytes(), NamesOf(modules));
    EXPECT_NO_THROW(ProjectNames{names.Bytes()});
}

TEST(ProjectNamesTest, RefusesWhatIsCutOffOrGoesOn)
{
    const std::string bytes = NamesOf(kListed);
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_THROW(ProjectNames{bytes.substr(0, size)}, util::Error) << size;
    EXPECT_THROW(ProjectNames{bytes + "more"}, util::Error);
    EXPECT_THROW(ProjectNames{"endless"}, util::Error);
}

} // namespace
} // namespace orrery::vba
