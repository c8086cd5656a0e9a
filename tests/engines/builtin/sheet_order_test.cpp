// The sheets of a calendar: their order, and what happens to names that are taken. A check of the
// template foretells what a run meets.
#include "engines/builtin/application.h"
#include "generate/run.h"
#include "generate/run_support.h"
#include "generate/trial_run.h"
#include "places/places.h"
#include "saved_sheets.h"
#include "util/paths.h"
#include "util/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace orrery::builtin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

/// A template with the sheets "Sheet1" for the year, "Sheet2" for the months and "Third".
class SheetOrderTest : public testing::TestWithParam<const char*> {
protected:
    SheetOrderTest()
    {
        sets_.Monthly = fake::DaysOnly();
        sets_.Yearly = fake::YearOfDays();
        sets_.Monthly.OutMonth = true;
        const std::string format = GetParam();
        std::filesystem::copy_file(places::SourceFolder() / "tests/engines/builtin" / format /
                                       "data" / ("contract." + format),
                                   Template());
    }

    std::filesystem::path Template() const { return folder_ / (std::string("Desk.") + GetParam()); }
    void NameMonths(const model::MonthNameList::Names& months)
    {
        sets_.Monthly.MonthName = names_.Months.Add(months);
    }
    /// What a check of the template for 2027 finds.
    Texts Check() const
    {
        const auto application = CreateApplication({});
        auto& workbook = application->OpenWorkbook(Template(), true);
        return generate::TextsOf(generate::TryCalendars(workbook, 2027, sets_, names_).findings);
    }
    /// The sheets of the calendar of 2027.
    std::vector<contract::SavedSheet> Run()
    {
        const auto folder = util::WithTrailingSeparator(util::FromPath(folder_.Path()));
        const auto saved = generate::RunGenerate(
            {"2027", util::FileName(util::FromPath(Template())), folder, folder}, sets_,
            [](const auto& /*job*/) { return CreateApplication({}); }, context_);
        if (!saved)
            return {};
        const auto path = util::ToPath(saved->workbook);
        return GetParam() == std::string("xls") ? orrery::test::ReadXls(path)
                                                : orrery::test::ReadXlsx(path);
    }
    static Texts NamesOf(const std::vector<contract::SavedSheet>& sheets)
    {
        Texts names;
        for (const auto& sheet : sheets)
            names.push_back(sheet.name);
        return names;
    }
    /// The month that each sheet was filled with; "" if with none.
    static Texts MonthsIn(const std::vector<contract::SavedSheet>& sheets)
    {
        Texts months;
        for (const auto& sheet : sheets) {
            const auto cell = sheet.cells.find({3, 2});
            const bool isFilled = cell != sheet.cells.end();
            months.push_back(isFilled ? std::get<std::string>(cell->second) : "");
        }
        return months;
    }

    testing_support::ScratchFolder folder_;
    model::NameTables names_ = fake::TestNames();
    fake::ListObserver observer_;
    generate::Context context_{names_, observer_};
    model::ParameterSets sets_;
};

TEST_P(SheetOrderTest, MonthsFollowEachOtherInThePlaceOfTheirModel)
{
    EXPECT_THAT(Check(), IsEmpty());
    const auto sheets = Run();
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_THAT(NamesOf(sheets),
                ElementsAre("2027", "January", "February", "March", "April", "May", "June", "July",
                            "August", "September", "October", "November", "December", "Third"));
    EXPECT_THAT(MonthsIn(sheets),
                ElementsAre("", "January", "February", "March", "April", "May", "June", "July",
                            "August", "September", "October", "November", "December", ""));
}

TEST_P(SheetOrderTest, AMonthWithTheNameOfAnyOtherSheetFallsBack)
{
    const model::MonthNameList::Names months = {"Um",      "MÄRZ",  "Μάρτιος", "Апрель",
                                                "THIRD",   "Seis",  "März",    "АПРЕЛЬ",
                                                "ΜΆΡΤΙΟΣ", "Մայիս", "ՄԱՅԻՍ",   "Doze"};
    NameMonths(months);
    Texts expected;
    for (const std::size_t month : {5U, 7U, 8U, 9U, 11U}) {
        expected.push_back("Monthly calendar: The sheet of month " + std::to_string(month) +
                           " is not named after it. Another sheet is named \"" + months[month - 1] +
                           "\" already. Rename that sheet in the template.");
    }
    EXPECT_EQ(Check(), expected);
    const auto sheets = Run();
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_THAT(NamesOf(sheets),
                ElementsAre("2027", "Um", "MÄRZ", "Μάρτιος", "Апрель", "May", "Seis", "July",
                            "August", "September", "Մայիս", "November", "Doze", "Third"));
    EXPECT_THAT(MonthsIn(sheets),
                ElementsAre("", "Um", "MÄRZ", "Μάρτιος", "Апрель", "THIRD", "Seis", "März",
                            "АПРЕЛЬ", "ΜΆΡΤΙΟΣ", "Մայիս", "ՄԱՅԻՍ", "Doze", ""));
}

TEST_P(SheetOrderTest, TheFirstMonthKeepsTheNameOfTheModelIfItsOwnIsTaken)
{
    NameMonths({"tHIRD", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l"});
    EXPECT_THAT(Check(), ElementsAre("Monthly calendar: The sheet of month 1 is not named after "
                                     "it. Another sheet is named \"tHIRD\" already. Rename that "
                                     "sheet in the template."));
    const auto sheets = Run();
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_THAT(NamesOf(sheets), ElementsAre("2027", "Sheet2", "b", "c", "d", "e", "f", "g", "h",
                                             "i", "j", "k", "l", "Third"));
}

TEST_P(SheetOrderTest, TheMonthsTakeTheirNamesBeforeTheYear)
{
    NameMonths({"a", "b", "c", "2027", "e", "f", "g", "h", "i", "j", "k", "l"});
    const std::string taken =
        "Another sheet is named \"2027\" already. Rename that sheet in the template.";
    EXPECT_THAT(Check(), ElementsAre("Yearly calendar: Error in making yearly calendar. " + taken));
    const auto sheets = Run();
    EXPECT_THAT(observer_.reports, ElementsAre("Error in making yearly calendar.\r\n" + taken));
    EXPECT_THAT(NamesOf(sheets), ElementsAre("Sheet1", "a", "b", "c", "2027", "e", "f", "g", "h",
                                             "i", "j", "k", "l", "Third"));
}

INSTANTIATE_TEST_SUITE_P(Formats, SheetOrderTest, testing::Values("xlsx", "xls"),
                         [](const auto& format) { return std::string(format.param); });

} // namespace
} // namespace orrery::builtin
