#include "ui/country_form.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orrery::ui {
namespace {

using app::CountryPlace;
using Texts = std::vector<std::string>;

std::vector<app::Country> ThreeCountries()
{
    return {{"Austria.txt", "AT", "Austria", {"Österreich"}, {}, {}},
            {"Germany.txt", "DE", "Germany", {"Deutschland"}, {}, {{"BY", "Bayern"}}},
            {"Switzerland.txt", "CH", "Switzerland", {"Schweiz", "Suisse"}, {}, {}}};
}

class CountryFormTest : public testing::Test {
protected:
    void Type(const std::string& text)
    {
        form_.txtFind.text = text;
        form_.Find();
    }

    CountryForm form_{ThreeCountries(),
                      {{"Switzerland.txt", ""}, {"Germany.txt", "BY"}, {"Gone.txt", ""}}};
};

TEST_F(CountryFormTest, OffersWhatWasUsedBeforeFirst)
{
    EXPECT_EQ(form_.lstPlaces.lines,
              (Texts{"Switzerland\tSchweiz, Suisse", "Germany: Bayern\tDeutschland",
                     "Austria\tÖsterreich", "Germany\tDeutschland"}));
    EXPECT_EQ(form_.Chosen(), (CountryPlace{"Switzerland.txt", ""}));
}

TEST_F(CountryFormTest, FindsWhileTheUserTypes)
{
    Type("de");
    EXPECT_EQ(form_.lstPlaces.lines, Texts{"Germany\tDeutschland"});
    Type("bayern");
    EXPECT_EQ(form_.lstPlaces.lines, Texts{"Germany: Bayern\tDeutschland"});
    form_.cmdOK_Click();
    EXPECT_TRUE(form_.isAccepted);
    EXPECT_EQ(form_.Chosen(), (CountryPlace{"Germany.txt", "BY"}));
}

TEST_F(CountryFormTest, SaysThatNothingIsFound)
{
    Type("xyz");
    EXPECT_EQ(form_.lblNone.caption, "No country or region has that name.");
    EXPECT_FALSE(form_.cmdOK.enabled);
    form_.Move(1);
    form_.cmdOK_Click();
    EXPECT_FALSE(form_.isAccepted);
    Type(" ");
    EXPECT_EQ(form_.lblNone.caption, "");
    EXPECT_TRUE(form_.cmdOK.enabled);
}

TEST_F(CountryFormTest, MovesInTheListAndStaysAtItsEnds)
{
    form_.Move(-1);
    EXPECT_EQ(form_.lstPlaces.selected, 0);
    form_.Move(2);
    EXPECT_EQ(form_.lstPlaces.selected, 2);
    form_.Move(10);
    EXPECT_EQ(form_.lstPlaces.selected, 3);
}

} // namespace
} // namespace orrery::ui
