#include "engines/builtin/xlsx/document_titles.h"

#include "engines/builtin/xlsx/workbook.h"
#include "util/scratch_folder.h"
#include "xlsx/built_book.h"
#include "xlsx/saved_package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

std::string Properties(std::string_view pairs, std::string_view titles, int titleCount)
{
    return "<Properties xmlns:vt=\"urn:vt\"><TotalTime>0</TotalTime><HeadingPairs><vt:vector "
           "size=\"4\" baseType=\"variant\">" +
           std::string(pairs) + "</vt:vector></HeadingPairs><TitlesOfParts><vt:vector size=\"" +
           std::to_string(titleCount) + "\" baseType=\"lpstr\">" + std::string(titles) +
           "</vt:vector></TitlesOfParts><Company>Desk</Company></Properties>";
}

std::string Pair(std::string_view heading, int count)
{
    return "<vt:variant><vt:lpstr>" + std::string(heading) +
           "</vt:lpstr></vt:variant><vt:variant><vt:i4>" + std::to_string(count) +
           "</vt:i4></vt:variant>";
}

std::string Titles(const std::vector<std::string>& titles)
{
    std::string xml;
    for (const auto& title : titles)
        xml += "<vt:lpstr>" + title + "</vt:lpstr>";
    return xml;
}

const std::vector<std::string> kOld = {"Desk", "Chart", "Year"};
/// Desk, which is renamed; its copy; Chart; Year.
const std::vector<SavedSheet> kNew = {{"A & B", 0, false, 0, ""},
                                      {"Feb", 0, true, 4, "rId4"},
                                      {"Chart", 1, false, 0, ""},
                                      {"Year", 2, false, 0, ""}};

struct TitlesCase {
    const char* name;
    std::string xml;
    std::string expected;
};
class UpdateTitlesTest : public testing::TestWithParam<TitlesCase> {};
TEST_P(UpdateTitlesTest, FollowsTheSheets)
{
    EXPECT_EQ(UpdateTitles(GetParam().xml, "/docProps/app.xml", kOld, kNew), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Lists, UpdateTitlesTest,
    testing::Values(
        TitlesCase{
            "Worksheets", Properties(Pair("Worksheets", 3), Titles(kOld), 3),
            Properties(Pair("Worksheets", 4), Titles({"A &amp; B", "Feb", "Chart", "Year"}), 4)},
        TitlesCase{"ChartSheetsApart",
                   Properties(Pair("Листы", 2) + Pair("Диаграммы", 1),
                              Titles({"Desk", "Year", "Chart"}), 3),
                   Properties(Pair("Листы", 3) + Pair("Диаграммы", 1),
                              Titles({"A &amp; B", "Feb", "Year", "Chart"}), 4)},
        TitlesCase{
            "NamedRanges",
            Properties(Pair("Worksheets", 3) + Pair("Named Ranges", 3),
                       Titles({"Desk", "Chart", "Year", "Desk!Print_Area", "Total", "Year!x"}), 6),
            Properties(Pair("Worksheets", 4) + Pair("Named Ranges", 4),
                       Titles({"A &amp; B", "Feb", "Chart", "Year", "'A &amp; B'!Print_Area",
                               "Feb!Print_Area", "Total", "Year!x"}),
                       8)},
        TitlesCase{"NameLikeASheet",
                   Properties(Pair("Worksheets", 3) + Pair("Named Ranges", 1),
                              Titles({"Desk", "Chart", "Year", "Desk"}), 4),
                   Properties(Pair("Worksheets", 4) + Pair("Named Ranges", 1),
                              Titles({"A &amp; B", "Feb", "Chart", "Year", "Desk"}), 5)},
        TitlesCase{"NotAllListed", Properties(Pair("Worksheets", 1), Titles({"Desk"}), 1),
                   Properties(Pair("Worksheets", 2), Titles({"A &amp; B", "Feb"}), 2)},
        TitlesCase{"EmptyGroup",
                   Properties(Pair("Dialogs", 0) + Pair("Worksheets", 1), Titles({"Desk"}), 1),
                   Properties(Pair("Dialogs", 0) + Pair("Worksheets", 2),
                              Titles({"A &amp; B", "Feb"}), 2)}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(UpdateTitlesTest, LeavesWhatDoesNotFit)
{
    for (const std::string& xml :
         {std::string("<Properties><Application>x</Application></Properties>"),
          Properties(Pair("Worksheets", 2), Titles(kOld), 3),            // fewer than titles
          Properties(Pair("Worksheets", 9), Titles(kOld), 3),            // more than titles
          Properties(Pair("Worksheets", 3), Titles(kOld), 2),            // another count
          Properties(Pair("Worksheets", 2), Titles({"Desk", "Old"}), 2), // of no sheet
          Properties(Pair("Worksheets", 2), Titles({"Desk", "Desk"}), 2),
          Properties("<vt:variant><vt:i4>x</vt:i4></vt:variant>", Titles(kOld), 3),
          std::string("<Properties><HLinks><vector><i4>1</i4></vector></HLinks></Properties>")})
        EXPECT_EQ(UpdateTitles(xml, "/docProps/app.xml", kOld, kNew), xml);
}

TEST(UpdateTitlesTest, ChangesNothingForTheSameSheets)
{
    const auto xml = Properties(Pair("Worksheets", 3) + Pair("Named Ranges", 1),
                                Titles({"Desk", "Chart", "Year", "Desk!x"}), 4);
    EXPECT_EQ(
        UpdateTitles(
            xml, "/docProps/app.xml", kOld,
            {{"Desk", 0, false, 0, ""}, {"Chart", 1, false, 0, ""}, {"Year", 2, false, 0, ""}}),
        xml);
}

TEST(UpdateTitlesTest, FindsTheListOfAStrictWorkbook)
{
    test::BuiltBook built;
    built.Put("_rels/.rels", test::BuiltBook::Links({{"officeDocument", "xl/workbook.xml"},
                                                     {"extended-properties", "docProps/app.xml"}}));
    built.Put("docProps/app.xml", Properties(Pair("Worksheets", 1), Titles({"Model"}), 1),
              "extended-properties");
    const testing_support::ScratchFolder folder;
    Workbook workbook(built.MakeStrict().WriteTo(folder));
    auto& model = *workbook.FindWorksheet("Model");
    model.SetName("January");
    model.CopyAfter(model);
    workbook.SaveAs(folder / "saved.xlsx", book::AccessMode::NoChange);
    const test::SavedPackage saved(folder / "saved.xlsx");
    EXPECT_THAT(saved.Values("docProps/app.xml", "//TitlesOfParts//vt:lpstr"),
                testing::ElementsAre("January", "January (2)"));
    EXPECT_THAT(saved.Values("docProps/app.xml", "//HeadingPairs//vt:i4"),
                testing::ElementsAre("2"));
}

} // namespace
} // namespace orrery::xlsx
