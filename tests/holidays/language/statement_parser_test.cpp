#include "holidays/language/statement_parser.h"

#include "holidays/error.h"
#include "util/error_text.h"

#include <gtest/gtest.h>

namespace orrery::holidays {
namespace {

constexpr auto kNameOfStatement = [](const auto& info) { return std::string(info.param.name); };

Refinements Read(std::string_view text)
{
    Refinements refinements;
    const auto error = ParseStatements(text, refinements);
    EXPECT_FALSE(error) << text << ": " << util::ErrorText(*error);
    return refinements;
}

constexpr WeekdaySet kSunday = 1U << 1U;
constexpr WeekdaySet kSaturday = 1U << 7U;
using TargetKind = Substitute::Target::Kind;

TEST(ParseStatements, ReadsSubstitutes)
{
    const auto substitutes =
        Read("if Sat or Sunday ALSO next workday; if holiday also next day from 2014 until 2020 "
             "called The called one; if Sun move to Sat before; if Thu also +2")
            .substitutes;
    ASSERT_EQ(substitutes.size(), 4U);
    EXPECT_EQ(
        substitutes[0],
        (Substitute{kSunday | kSaturday, false, false, {TargetKind::NextWorkday, 0}, {}, ""}));
    EXPECT_EQ(
        substitutes[1],
        (Substitute{0, true, false, {TargetKind::NextDay, 0}, {2014, 2020}, "The called one"}));
    EXPECT_EQ(substitutes[2],
              (Substitute{kSunday, false, true, {TargetKind::WeekdayBefore, 7}, {}, ""}));
    EXPECT_EQ(substitutes[3], (Substitute{1U << 5U, false, false, {TargetKind::Days, 2}, {}, ""}));
}

TEST(ParseStatements, ReadsWhatIsSaidOnce)
{
    const Refinements all =
        Read(" exact 1031 Sat on or after ;; days 3; Kind School; born 1984; only in bw BY; "
             "not in SN; name DE Tag der Arbeit; name nn Dag; in 2018 on 1111 1112; not on Sun");
    EXPECT_EQ(all.exact, (RuleDay{NearWeekday{7, NearWeekday::Relation::OnOrAfter, {10, 31}}, 0}));
    EXPECT_EQ(all.days, 3);
    EXPECT_EQ(all.category, Category::School);
    EXPECT_EQ(all.born, 1984);
    EXPECT_EQ(all.onlyIn, (std::vector<std::string>{"BW", "BY"}));
    EXPECT_EQ(all.notIn, std::vector<std::string>{"SN"});
    EXPECT_EQ(all.names, (std::vector<std::pair<std::string, std::string>>{{"de", "Tag der Arbeit"},
                                                                           {"nn", "Dag"}}));
    EXPECT_EQ(all.inYears, (std::vector<DatesInYear>{{2018, {{11, 11}, {11, 12}}}}));
    EXPECT_EQ(all.weekdays, kEveryWeekday & ~kSunday);
}

struct WrongStatement {
    const char* name;
    const char* text;
    ErrorKind error;
};
class WrongStatementTest : public testing::TestWithParam<WrongStatement> {};
TEST_P(WrongStatementTest, IsAnError)
{
    Refinements refinements;
    const auto error = ParseStatements(GetParam().text, refinements);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Kind(), GetParam().error);
    EXPECT_EQ(error->Subject(), GetParam().text);
    EXPECT_EQ(refinements, Refinements());
}
constexpr auto kWrong = ErrorKind::WrongRefinement;
INSTANTIATE_TEST_SUITE_P(
    Statements, WrongStatementTest,
    testing::Values(WrongStatement{"Unknown", "sometimes", ErrorKind::UnknownRefinement},
                    WrongStatement{"NoCondition", "if also next day", kWrong},
                    WrongStatement{"NoVerb", "if Sun next day", kWrong},
                    WrongStatement{"NoTarget", "if Sun also", kWrong},
                    WrongStatement{"HalfTarget", "if Sun also Mon", kWrong},
                    WrongStatement{"UnsignedDays", "if Sun also 2", kWrong},
                    WrongStatement{"NoName", "if Sun also next day called", kWrong},
                    WrongStatement{"Rest", "if Sun also next day please", kWrong},
                    WrongStatement{"NoYears", "years", kWrong},
                    WrongStatement{"YearsBackwards", "years 2010-2000", kWrong},
                    WrongStatement{"LongYear", "years 20100-", kWrong},
                    WrongStatement{"HalfCycle", "years every 4", kWrong},
                    WrongStatement{"NoSuchDay", "in 2019 on 0229", kWrong},
                    WrongStatement{"NoDay", "in 2019 on", kWrong},
                    WrongStatement{"NoDays", "days 0", kWrong},
                    WrongStatement{"Kind", "kind red", kWrong},
                    WrongStatement{"Weekday", "not on Sunny", kWrong},
                    WrongStatement{"Exact", "exact 1031", kWrong},
                    WrongStatement{"NameAlone", "name de", kWrong},
                    WrongStatement{"Birth", "born in 1984", kWrong}),
    kNameOfStatement);

TEST(ParseStatements, ARuleHasALimit)
{
    Refinements refinements;
    std::string many;
    for (int i = 0; i < 301; ++i)
        many += "if Sun also next day;";
    EXPECT_TRUE(ParseStatements(many, refinements));
    EXPECT_EQ(refinements.substitutes.size(), 300U);
    std::string words = "only in";
    for (int i = 0; i < 500; ++i)
        words += " BY";
    Refinements regions;
    EXPECT_TRUE(ParseStatements(words, regions));
    EXPECT_EQ(regions, Refinements());
}

TEST(ParseStatements, SaysWhatWasMeant)
{
    Refinements refinements;
    EXPECT_EQ(util::ErrorText(*ParseStatements("yaers 2006-", refinements)),
              "\"yaers 2006-\" is not understood. Did you mean \"years\"?");
    EXPECT_EQ(util::ErrorText(*ParseStatements("days many", refinements)),
              "\"days many\" is not understood. Write it like: days 3.");
    EXPECT_EQ(util::ErrorText(*ParseStatements("only an Sun", refinements)),
              "\"only an Sun\" is not understood. Did you mean \"only on\"?");
}

TEST(Merge, TheOwnComesFirst)
{
    const Refinements merged = Merge(Read("if Sun also next day; kind bank"),
                                     Read("if Sun also Mon after; kind half; years 2000-"));
    ASSERT_EQ(merged.substitutes.size(), 2U);
    EXPECT_EQ(merged.substitutes[0].target.kind, TargetKind::NextDay);
    EXPECT_EQ(merged.category, Category::Bank);
    EXPECT_EQ(merged.years.size(), 1U);
}

} // namespace
} // namespace orrery::holidays
