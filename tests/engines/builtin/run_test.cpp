#include "engines/builtin/application.h"
#include "generate/run.h"
#include "generate/run_support.h"
#include "places/places.h"
#include "saved_sheets.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "xlsx/built_book.h"
#include "xlsx/saved_package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orrery::builtin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const std::filesystem::path kTemplate =
    places::SourceFolder() / "tests/engines/builtin/xlsx" / "data" / "contract.xlsx";

class BuiltInRunTest : public testing::Test {
protected:
    using Starter = std::function<std::unique_ptr<book::Application>()>;

    void SetUp() override
    {
        std::filesystem::create_directories(folder_);
        std::filesystem::copy_file(kTemplate, folder_ / "Desk.xlsx",
                                   std::filesystem::copy_options::overwrite_existing);
        sets_.Monthly = fake::DaysOnly();
        sets_.Yearly = fake::YearOfDays();
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::optional<std::string> Run(const Starter& start)
    {
        const auto folder = util::WithTrailingSeparator(util::FromPath(folder_));
        const auto saved = generate::RunGenerate(
            {"2027", "Desk.xlsx", folder, util::WithTrailingSeparator(folder + "out")}, sets_,
            [&](const auto& /*job*/) { return start(); }, context_);
        return saved ? std::optional(saved->workbook) : std::nullopt;
    }

    std::filesystem::path folder_ =
        std::filesystem::path(testing::TempDir()) /
        ("run_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
    model::NameTables names_ = fake::TestNames();
    fake::ListObserver observer_;
    generate::Context context_{names_, observer_};
    model::ParameterSets sets_;
};

TEST_F(BuiltInRunTest, SavesTwelveMonthsAndAYear)
{
    const auto saved = Run([] { return CreateApplication({}); });
    ASSERT_EQ(saved, util::FromPath(folder_ / "out" / "2027Desk.xlsx"));
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_FALSE(observer_.hourglass);
    const test::SavedPackage workbook(*saved);
    EXPECT_THAT(workbook.Values("xl/workbook.xml", "//sheet/@name"),
                ElementsAre("2027", "January", "February", "March", "April", "May", "June", "July",
                            "August", "September", "October", "November", "December", "Third"));
    // 1 February 2027 is a Monday: one column right of B5.
    EXPECT_THAT(workbook.Values(workbook.SheetPart("February"), "//c[@r='C5']/v"),
                ElementsAre("1"));
    EXPECT_THAT(workbook.Values(workbook.SheetPart("February"), "//c[@r='B5']"), IsEmpty());
}

TEST_F(BuiltInRunTest, SavesATemplateWhoseNameIsThatOfAnotherFormat)
{
    std::filesystem::copy_file(
        places::SourceFolder() / "tests/engines/builtin/xls/data/contract.xls",
        folder_ / "Desk.xlsx", std::filesystem::copy_options::overwrite_existing);
    const auto saved = Run([] { return CreateApplication({}); });
    ASSERT_TRUE(saved);
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_EQ(orrery::test::ReadXls(*saved).size(), 14U);
}

TEST_F(BuiltInRunTest, AReportNamesThePartBecauseOfWhichASheetIsNotCopied)
{
    test::BuiltBook book;
    book.Put("xl/drawings/drawing1.xml", "<a><b></a>", "drawing");
    book.Put("xl/worksheets/_rels/sheet1.xml.rels",
             test::BuiltBook::Links({{"drawing", "../drawings/drawing1.xml"}}));
    util::ReplaceFile(folder_ / "Desk.xlsx", book.Bytes());
    sets_.Monthly.SheetName = "Model";
    sets_.Yearly.Output = false;
    ASSERT_TRUE(Run([] { return CreateApplication({}); }));
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_THAT(observer_.reports[0],
                testing::AllOf(StartsWith("Error in making monthly calendar.\r\n"),
                               testing::HasSubstr("\"January\" cannot be copied: "
                                                  "/xl/drawings/drawing1.xml")));
}

TEST_F(BuiltInRunTest, TemplateThatVanishesIsReportedUnderTheOutputsName)
{
    const auto saved = Run([this] {
        std::filesystem::remove(folder_ / "Desk.xlsx"); // it was chosen and checked before
        return CreateApplication({});
    });
    const auto target = folder_ / "out" / "2027Desk.xlsx";
    EXPECT_EQ(saved, std::nullopt);
    EXPECT_THAT(observer_.reports, ElementsAre(StartsWith("Failed to open the calendar file \"" +
                                                          util::FromPath(target) + "\".\r\n")));
    EXPECT_FALSE(std::filesystem::exists(target));
    EXPECT_FALSE(observer_.hourglass);
}

} // namespace
} // namespace orrery::builtin
