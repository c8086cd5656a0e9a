#include "app/countries.h"

#include "util/paths.h"
#include "util/profile.h"
#include "util/scratch_folder_test.h"

#include <string>
#include <vector>

namespace orrery::app {
namespace {

constexpr const char* kIndex =
    "# comment\n"
    "Austria.txt\tAT\tAustria\tÖsterreich\t\tde\tWien Wien; KTN Kärnten\n"
    "Aland.txt\tAX\tÅland\tÅland\tÅland Islands\tsv\t\n"
    "Ivory.txt\tCI\tIvory Coast\tCôte d’Ivoire\tCôte d'Ivoire\tfr\t\n"
    "Germany.txt\tDE\tGermany\tDeutschland\t\tde\tBY Bayern; BW Baden-Württemberg\n"
    "short\tline\n";

using Texts = std::vector<std::string>;

class CountriesTest : public testing_support::ScratchFolderTest {
protected:
    CountriesTest() { Write("countries.tsv", kIndex); }

    std::vector<Country> Countries() const
    {
        return ReadCountries(util::FromPath(folder_) + util::kSeparator);
    }
    Texts Find(std::string_view text) const
    {
        Texts found;
        for (const CountryPlace& place : FindPlaces(Countries(), text))
            found.push_back(place.file.substr(0, place.file.find('.')) +
                            (place.region.empty() ? "" : "/" + place.region));
        return found;
    }
};

TEST_F(CountriesTest, AreReadInTheOrderOfTheirNames)
{
    EXPECT_EQ(Find(""), (Texts{"Aland", "Austria", "Germany", "Ivory"}));
    const Country germany = Countries().at(2);
    EXPECT_EQ(germany.code, "DE");
    EXPECT_EQ(germany.ownNames, Texts{"Deutschland"});
    EXPECT_EQ(germany.regions.at(1), (holidays::Region{"BW", "Baden-Württemberg"}));
    EXPECT_TRUE(ReadCountries("").empty());
    EXPECT_TRUE(ReadCountries("/nowhere/").empty());
}

struct FindCase {
    const char* name;
    const char* typed;
    Texts expected;
};

class FindPlacesTest : public CountriesTest, public testing::WithParamInterface<FindCase> {};

TEST_P(FindPlacesTest, ByTheBeginningsOfWords)
{
    EXPECT_EQ(Find(GetParam().typed), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Texts, FindPlacesTest,
                         testing::Values(FindCase{"English", "ger", {"Germany"}},
                                         FindCase{"OwnName", "DEUTSCH", {"Germany"}},
                                         FindCase{"WithoutAccents", "osterr", {"Austria"}},
                                         FindCase{"OtherName", "islands", {"Aland"}},
                                         FindCase{"SecondWord", "coast", {"Ivory"}},
                                         FindCase{"Apostrophe", "d'ivoire", {"Ivory"}},
                                         FindCase{"Code", "at", {"Austria"}},
                                         FindCase{"Region", "bay", {"Germany/BY"}},
                                         FindCase{"SecondWordOfARegion", "wurtt", {"Germany/BW"}},
                                         FindCase{"CountryAndRegion", "germany bw", {"Germany/BW"}},
                                         FindCase{"CountriesFirst", "d", {"Germany", "Ivory"}},
                                         FindCase{"MiddleOfAWord", "many", {}},
                                         FindCase{"Nothing", "xyz", {}},
                                         FindCase{"BadUtf8", "\xff", {}}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(CountriesTest, TheLastPlacesAreRemembered)
{
    const std::string settings = At("orrery.ini");
    EXPECT_TRUE(LastPlaces(settings).empty());
    for (const char* file : {"A.txt", "B.txt", "C.txt", "D.txt", "E.txt"})
        RememberPlace(settings, {file, ""});
    RememberPlace(settings, {"Germany.txt", "BY"});
    RememberPlace(settings, {"D.txt", ""});
    EXPECT_EQ(
        LastPlaces(settings),
        (std::vector<CountryPlace>{
            {"D.txt", ""}, {"Germany.txt", "BY"}, {"E.txt", ""}, {"C.txt", ""}, {"B.txt", ""}}));
}

TEST(CountryOfLocale, IsBehindTheLanguage)
{
    EXPECT_EQ(CountryOfLocale("de_AT.UTF-8"), "AT");
    EXPECT_EQ(CountryOfLocale("ca_ES@valencia"), "ES");
    EXPECT_EQ(CountryOfLocale("en_us"), "US");
    EXPECT_EQ(CountryOfLocale("C.UTF-8"), "");
    EXPECT_EQ(CountryOfLocale("es_419"), "");
    EXPECT_EQ(CountryOfLocale(""), "");
}

} // namespace
} // namespace orrery::app
