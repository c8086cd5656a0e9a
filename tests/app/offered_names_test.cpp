#include "app/offered_names.h"

#include "util/paths.h"
#include "util/scratch_folder_test.h"

#include <string>
#include <vector>

namespace orrery::app {
namespace {

constexpr const char* kLanguages = "; comment\n"
                                   "[Kiswahili]\n"
                                   "Months=a,b,c,d,e,f,g,h,i,j,k,l\n"
                                   "MonthsShort=A,B,C,D,E,F,G,H,I,J,K,L\n"
                                   "Weekdays=m,n,o,p,q,r,s\n"
                                   "\n"
                                   "[Deutsch]\n"
                                   "Months=t,t,t,t,t,t,t,t,t,t,t,t\n"
                                   "MonthsNarrow=too,few\n";

const model::MonthNameList::Names kNumbers{"1", "2", "3", "4",  "5",  "6",
                                           "7", "8", "9", "10", "11", "12"};

template <std::size_t NamesPerList>
std::vector<std::string> Titles(const model::NameLists<NamesPerList>& lists)
{
    std::vector<std::string> titles;
    for (std::int16_t index = 0; index < lists.Count(); ++index)
        titles.push_back(lists.Title(index));
    return titles;
}

class OfferedNamesTest : public testing_support::ScratchFolderTest {
protected:
    OfferedNamesTest()
    {
        own.Months.Append(kNumbers, "Deutsch");
        Write("languages.ini", kLanguages);
    }
    model::NameTables Offered() const
    {
        return OfferedNames(own, util::FromPath(folder_) + util::kSeparator);
    }

    model::NameTables own;
};

using Texts = std::vector<std::string>;

TEST_F(OfferedNamesTest, StandBehindTheUsersLists)
{
    const model::NameTables offered = Offered();
    EXPECT_EQ(Titles(offered.Months), (Texts{"Deutsch", "Kiswahili", "Kiswahili, short"}));
    EXPECT_EQ(Titles(offered.Weekdays), (Texts{"Kiswahili"}));
    EXPECT_EQ(offered.Months.At(0), kNumbers); // the user's own German
    EXPECT_EQ(offered.Months.Name(2, 11), "L");
}

TEST_F(OfferedNamesTest, AreNoneWithoutTheFile)
{
    std::filesystem::remove(folder_ / "languages.ini");
    EXPECT_EQ(Titles(Offered().Months), (Texts{"Deutsch"}));
    EXPECT_EQ(Titles(OfferedNames(own, "").Months), (Texts{"Deutsch"}));
}

TEST_F(OfferedNamesTest, StopWhereTheTableIsFull)
{
    while (own.Months.HasRoom())
        own.Months.Append(kNumbers, "x");
    EXPECT_EQ(Offered().Months.Count(), 257);
}

TEST_F(OfferedNamesTest, StandBehindAGapInTheUsersLists)
{
    own.Months.Store(3, kNumbers); // 1 and 2 were too short
    EXPECT_EQ(own.Months.Count(), 2);
    EXPECT_EQ(Offered().Months.Name(4, 0), "a");
    EXPECT_EQ(Offered().Months.Count(), 6);
}

TEST_F(OfferedNamesTest, BecomeTheUsersWhenTheyAreChosen)
{
    const model::NameTables offered = Offered();
    model::ParameterSets sets;
    sets.Monthly.MonthName = sets.Yearly.MonthName = 2;
    sets.Monthly.WeekdayName = 0;
    AdoptNames(offered, own, sets);
    EXPECT_EQ(Titles(own.Months), (Texts{"Deutsch", "Kiswahili, short"}));
    EXPECT_EQ(sets.Monthly.MonthName, 1);
    EXPECT_EQ(sets.Yearly.MonthName, 1);
    EXPECT_EQ(own.Months.Name(1, 0), "A");
    EXPECT_EQ(Titles(own.Weekdays), (Texts{"Kiswahili"}));
    EXPECT_EQ(sets.Monthly.WeekdayName, 0);
}

TEST_F(OfferedNamesTest, KeepListsThatTheTableHas)
{
    const model::NameTables offered = Offered();
    model::ParameterSets sets;
    own.Weekdays.Append({"m", "n", "o", "p", "q", "r", "s"}, "Mine");
    AdoptNames(offered, own, sets);
    EXPECT_EQ(Titles(own.Months), (Texts{"Deutsch"}));
    EXPECT_EQ(sets.Monthly.MonthName, 0);
    EXPECT_EQ(Titles(own.Weekdays), (Texts{"Mine"}));
}

} // namespace
} // namespace orrery::app
