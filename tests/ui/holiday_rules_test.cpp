#include "ui/holiday_rules.h"

#include "util/text.h"

#include <gmock/gmock.h>

namespace orrery::ui {
namespace {

using holidays::Category;
using holidays::HolidayChoice;
using holidays::RuleSet;
using testing::ElementsAre;
using testing::IsEmpty;

RuleSet SetOf(std::string_view text)
{
    holidays::HolidayList list;
    for (const std::string_view line : util::SplitLines(text)) {
        auto plain = holidays::ParseHolidayLine(line);
        if (auto* const rule = std::get_if<holidays::HolidayDef>(&plain))
            list.Append(std::move(*rule));
        else
            list.AppendExtra(std::string(line));
    }
    return holidays::RulesOf(list);
}

constexpr const char* kGermany = "# Language: de\n"
                                 "# Regions: BY Bayern; SN\n"
                                 "0101,DAY,Neujahr\n"
                                 "> name en New Year's Day\n"
                                 "0106,FIXED,Heilige Drei Könige\n"
                                 "> only in BY; name en Epiphany; name fr Épiphanie\n"
                                 "1123,WED BEFORE,Buß- und Bettag\n"
                                 "> only in SN\n"
                                 "1224,FIXED,Heiligabend\n"
                                 "> kind bank";

HolidayRules Shown(std::string_view text, HolidayChoice choice = {})
{
    HolidayRules rules(std::move(choice), 2027);
    rules.Show(SetOf(text));
    return rules;
}

/// Types what is to be found.
const std::vector<std::string>& Find(HolidayRules& rules, std::string text)
{
    rules.txtFind.Type(std::move(text));
    rules.Find();
    return rules.lstRules.lines;
}

void Click(HolidayRules& rules, Category category)
{
    CheckBox& box = rules.chkKinds.at(static_cast<std::size_t>(category));
    box.Toggle();
    rules.chkKind_Click(box);
}

std::vector<std::string> VisibleKinds(const HolidayRules& rules)
{
    std::vector<std::string> visible;
    for (const CheckBox& box : rules.chkKinds) {
        if (box.visible)
            visible.push_back(box.name + (box.checked ? " on" : ""));
    }
    return visible;
}

TEST(HolidayRulesTest, ControlsHaveTheirCaptions)
{
    const HolidayRules rules({}, 2027);
    EXPECT_EQ(rules.lblFind.caption, "Fi&nd:");
    EXPECT_EQ(rules.lblRegion.caption, "&Region:");
    EXPECT_EQ(rules.lblLanguage.caption, "Lan&guage:");
    EXPECT_EQ(rules.lblKinds.caption, "Kinds:");
    EXPECT_EQ(rules.lblRules.caption, "&All Rules:");
    EXPECT_THAT(rules.titles, ElementsAre("Name", "Rule", "Next from 2027", "Kind"));
    EXPECT_THAT(HolidayRules({}, std::nullopt).titles, ElementsAre("Name", "Rule", "Next", "Kind"));
}

// ---- the list

TEST(HolidayRulesTest, SaysEveryRuleInWords)
{
    const HolidayRules rules = Shown(kGermany);
    EXPECT_THAT(rules.lstRules.lines,
                ElementsAre("Neujahr\t1 January\tFri 1 January 2027\tPublic",
                            "Heilige Drei Könige\t6 January; only in Bayern\tother region\tPublic",
                            "Buß- und Bettag\tWednesday before 23 November; only in SN\t"
                            "other region\tPublic",
                            "Heiligabend\t24 December\tkind not shown\tBank"));
}

TEST(HolidayRulesTest, TrimsNamesAndTellsWhatComesNext)
{
    const HolidayRules rules = Shown("0704, DAY, Independence Day\n"
                                     "> if Sun also Mon after\n"
                                     "0229,LEAP DAY,Leap\n"
                                     "0101,FIXED,Old\n"
                                     "> years -2005\n"
                                     "1 Shawwal,ISLAMIC,Eid");
    EXPECT_THAT(rules.lstRules.lines,
                ElementsAre("Independence Day\t4 July; if Sunday also the Monday after\t"
                            "Sun 4 July 2027 (+1)\tPublic",
                            "Leap\t29 February of leap years\tTue 29 February 2028\tPublic",
                            "Old\t1 January; until 2005\tnone\tPublic",
                            "Eid\t1 Shawwal\tTue 9 March 2027, estimated\tPublic"));
}

TEST(HolidayRulesTest, WithoutAYearNothingIsNext)
{
    HolidayRules rules({}, std::nullopt);
    rules.Show(SetOf("0101,DAY,New Year"));
    EXPECT_THAT(rules.lstRules.lines, ElementsAre("New Year\t1 January\t\tPublic"));
}

TEST(HolidayRulesTest, TabsInNamesMakeNoCells)
{
    const HolidayRules rules = Shown("0101,DAY,New\tYear\n> if Sun also Mon after called a\tb");
    EXPECT_THAT(rules.lstRules.lines,
                ElementsAre("New Year\t1 January; if Sunday also the Monday after as \"a b\"\t"
                            "Fri 1 January 2027\tPublic"));
}

// ---- the whole rule

TEST(HolidayRulesTest, TheSelectedRuleIsShownWhole)
{
    HolidayRules rules = Shown(std::string(kGermany) + "\n0815,FIXED,Mariä Himmelfahrt\n"
                                                       "> only in BY SN A B C D E; days 2");
    EXPECT_EQ(rules.lblRule.caption, "&Whole Rule:");
    EXPECT_EQ(rules.lstRules.selected, 0);
    EXPECT_EQ(rules.txtRule.text, "Neujahr: 1 January");
    rules.lstRules.Select(4);
    rules.lstRules_Click();
    EXPECT_TRUE(rules.lstRules.lines.at(4).find("SN, A, B and 3 more") != std::string::npos);
    EXPECT_EQ(rules.txtRule.text, "Mariä Himmelfahrt: 15 August; 2 days; only in Bayern, SN, A, "
                                  "B, C, D and E");
    EXPECT_FALSE(rules.HasChanged());
    rules.Show({});
    EXPECT_EQ(rules.lstRules.selected, -1);
    EXPECT_EQ(rules.txtRule.text, "");
    rules.Show(SetOf("0101,DAY,\n1225,DAY,Christmas"));
    EXPECT_EQ(rules.txtRule.text, "1 January") << "has no name";
}

TEST(HolidayRulesTest, ASelectedRuleStaysSelectedWhileItIsFound)
{
    HolidayRules rules = Shown(kGermany);
    rules.lstRules.Select(3);
    rules.lstRules_Click();
    Find(rules, "heilig");
    EXPECT_EQ(rules.lstRules.selected, 1);
    EXPECT_EQ(rules.txtRule.text, "Heiligabend: 24 December");
    Find(rules, "neu");
    EXPECT_EQ(rules.lstRules.selected, 0);
    EXPECT_EQ(rules.txtRule.text, "Neujahr: 1 January") << "the first that is found";
    Find(rules, "zzz");
    EXPECT_EQ(rules.lstRules.selected, -1);
    EXPECT_EQ(rules.txtRule.text, "");
    Find(rules, "");
    EXPECT_EQ(rules.lstRules.selected, 3);
    rules.cboLanguage.Select(1);
    rules.cboLanguage_Click();
    EXPECT_EQ(rules.lstRules.selected, 3);
    rules.ShowOther(SetOf(kGermany));
    EXPECT_EQ(rules.lstRules.selected, 0);
}

// ---- finding

TEST(HolidayRulesTest, FindsByPartsOfNamesInAnyLanguageAndCase)
{
    HolidayRules rules = Shown(kGermany);
    const auto names = [&rules](const std::string& text) {
        std::vector<std::string> found;
        for (const std::string& line : Find(rules, text))
            found.push_back(line.substr(0, line.find('\t')));
        return found;
    };
    EXPECT_THAT(names("neu"), ElementsAre("Neujahr"));
    EXPECT_THAT(names(" HEILIG "), ElementsAre("Heilige Drei Könige", "Heiligabend"));
    EXPECT_THAT(names("KÖNIG"), ElementsAre("Heilige Drei Könige"));
    EXPECT_THAT(names("épi"), ElementsAre("Heilige Drei Könige")) << "its French name";
    EXPECT_THAT(names("year"), ElementsAre("Neujahr")) << "its English name";
    EXPECT_THAT(names("january"), IsEmpty()) << "names only";
    EXPECT_THAT(names("königeepi"), IsEmpty()) << "each name for itself";
    EXPECT_EQ(names("").size(), 4U);
}

TEST(HolidayRulesTest, WhatIsTypedStaysForTheNextList)
{
    HolidayRules rules = Shown(kGermany);
    Find(rules, "new");
    rules.ShowOther(SetOf("0101,DAY,New Year\n1225,DAY,Christmas"));
    EXPECT_EQ(rules.lstRules.lines.size(), 1U);
}

TEST(HolidayRulesTest, FindsAmongAHundredRules)
{
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "0101,KOREAN +" + std::to_string(i) + ",설날 " + std::to_string(i) + "\n";
    HolidayRules rules = Shown(text);
    Find(rules, "날 9");
    EXPECT_EQ(rules.lstRules.lines.size(), 11U);
}

// ---- choosing

TEST(HolidayRulesTest, ChoosersAreVisibleOnlyWhereThereIsAChoice)
{
    const HolidayRules plain = Shown("0101,DAY,New Year");
    EXPECT_FALSE(plain.lblRegion.visible || plain.cboRegion.visible);
    EXPECT_FALSE(plain.lblLanguage.visible || plain.cboLanguage.visible);
    EXPECT_FALSE(plain.lblKinds.visible);
    EXPECT_THAT(VisibleKinds(plain), IsEmpty());

    const HolidayRules rules = Shown(kGermany);
    EXPECT_TRUE(rules.lblRegion.visible && rules.cboRegion.visible);
    EXPECT_THAT(rules.cboRegion.entries, ElementsAre("(None)", "Bayern", "SN"));
    EXPECT_EQ(rules.cboRegion.selected, 0);
    EXPECT_TRUE(rules.lblLanguage.visible && rules.cboLanguage.visible);
    EXPECT_THAT(rules.cboLanguage.entries, ElementsAre("German", "English", "French"));
    EXPECT_EQ(rules.cboLanguage.selected, 0);
    EXPECT_TRUE(rules.lblKinds.visible);
    EXPECT_THAT(VisibleKinds(rules), ElementsAre("chkPublic on", "chkBank"));
}

TEST(HolidayRulesTest, ShowsTheCalendarsChoiceEvenIfTheRulesLackIt)
{
    const HolidayChoice choice{"ZZ", {Category::School}, "xx"};
    const HolidayRules rules = Shown("0101,DAY,New Year", choice);
    EXPECT_THAT(rules.cboRegion.entries, ElementsAre("(None)", "ZZ"));
    EXPECT_EQ(rules.cboRegion.selected, 1);
    EXPECT_THAT(rules.cboLanguage.entries, ElementsAre("(As written)", "xx"));
    EXPECT_EQ(rules.cboLanguage.selected, 1);
    EXPECT_THAT(VisibleKinds(rules), ElementsAre("chkPublic", "chkSchool on"));
    EXPECT_EQ(rules.Choice(), choice);
    EXPECT_FALSE(rules.HasChanged());
}

TEST(HolidayRulesTest, ARegionHasItsDays)
{
    HolidayRules rules = Shown(kGermany);
    rules.cboRegion.Select(1);
    rules.cboRegion_Click();
    EXPECT_EQ(rules.lstRules.lines.at(1),
              "Heilige Drei Könige\t6 January; only in Bayern\tWed 6 January 2027\tPublic");
    EXPECT_EQ(rules.Choice().region, "BY");
    EXPECT_TRUE(rules.HasChanged());
    rules.cboRegion.Select(0);
    rules.cboRegion_Click();
    EXPECT_EQ(rules.Choice().region, "");
}

TEST(HolidayRulesTest, ALanguageHasItsNames)
{
    HolidayRules rules = Shown(kGermany);
    rules.cboLanguage.Select(1);
    rules.cboLanguage_Click();
    EXPECT_EQ(rules.lstRules.lines.at(0), "New Year's Day\t1 January\tFri 1 January 2027\tPublic");
    EXPECT_TRUE(rules.lstRules.lines.at(3).starts_with("Heiligabend\t")) << "has no other name";
    EXPECT_EQ(rules.Choice().language, "en");
    EXPECT_TRUE(rules.HasChanged());
}

TEST(HolidayRulesTest, KindsAreShownAndOneStaysChosen)
{
    HolidayRules rules = Shown(kGermany);
    Click(rules, Category::Bank);
    EXPECT_THAT(rules.Choice().categories, ElementsAre(Category::Public, Category::Bank));
    EXPECT_EQ(rules.lstRules.lines.at(3), "Heiligabend\t24 December\tFri 24 December 2027\tBank");
    Click(rules, Category::Public);
    EXPECT_THAT(rules.Choice().categories, ElementsAre(Category::Bank));
    Click(rules, Category::Bank);
    EXPECT_THAT(rules.Choice().categories, ElementsAre(Category::Bank)) << "the last one";
    EXPECT_TRUE(rules.chkKinds.at(1).checked);
}

TEST(HolidayRulesTest, AnotherListKeepsWhatItHasOfTheChoice)
{
    HolidayRules rules = Shown(kGermany, {"BY", {Category::Public, Category::Bank}, "en"});
    rules.ShowOther(SetOf("0101,DAY,Jour de l'an\n> name en New Year's Day"));
    EXPECT_EQ(rules.Choice(), (HolidayChoice{"", {Category::Public}, "en"}));
    EXPECT_FALSE(rules.cboRegion.visible);
    EXPECT_THAT(VisibleKinds(rules), IsEmpty());
    rules.ShowOther(SetOf(kGermany));
    EXPECT_EQ(rules.Choice(), (HolidayChoice{"BY", {Category::Public, Category::Bank}, "en"}))
        << "what was chosen comes back";
}

TEST(HolidayRulesTest, AChoiceAmongOtherRulesLeavesTheRestOfWhatWasChosen)
{
    HolidayRules rules = Shown(kGermany, {"BY", {Category::Public}, "en"});
    rules.ShowOther(SetOf("0101,DAY,New Year\n1224,FIXED,Eve\n> kind bank"));
    Click(rules, Category::Bank);
    EXPECT_EQ(rules.Choice(), (HolidayChoice{"", {Category::Public, Category::Bank}, ""}));
    rules.ShowOther(SetOf(kGermany));
    EXPECT_EQ(rules.Choice(), (HolidayChoice{"BY", {Category::Public, Category::Bank}, "en"}));
}

TEST(HolidayRulesTest, RegionsThatOnlyRulesNameCanBeChosen)
{
    HolidayRules rules = Shown("# Regions: BY Bayern\n0106,FIXED,x\n> only in BY ST\n"
                               "0107,FIXED,y\n> not in SN");
    EXPECT_THAT(rules.cboRegion.entries, ElementsAre("(None)", "Bayern", "ST", "SN"));
    rules.cboRegion.Select(2);
    rules.cboRegion_Click();
    EXPECT_EQ(rules.Choice().region, "ST");
    rules.ShowOther(SetOf("0106,FIXED,x\n> only in ST"));
    EXPECT_EQ(rules.Choice().region, "ST");
}

TEST(HolidayRulesTest, TheLanguageOfTheRulesIsOfferedOnce)
{
    const HolidayRules rules = Shown(kGermany, {"", {Category::Public}, "de"});
    EXPECT_THAT(rules.cboLanguage.entries, ElementsAre("German", "English", "French"));
    EXPECT_EQ(rules.cboLanguage.selected, 0);
    EXPECT_EQ(rules.Choice().language, "de");
}

TEST(HolidayRulesTest, AnotherChoiceTakesThePlaceOfTheFirst)
{
    HolidayRules rules = Shown(kGermany, {"SN", {Category::Public}, "fr"});
    const HolidayChoice other{"BY", {Category::Bank}, ""};
    rules.Show(SetOf(kGermany), other);
    EXPECT_EQ(rules.Choice(), other);
    EXPECT_EQ(rules.cboRegion.selected, 1);
    EXPECT_FALSE(rules.HasChanged());
    rules.ShowOther(SetOf("0101,DAY,New Year"));
    rules.ShowOther(SetOf(kGermany));
    EXPECT_EQ(rules.Choice(), other);
}

TEST(HolidayRulesTest, AListWithoutTheChosenKindsShowsItsPublicDays)
{
    HolidayRules rules = Shown(kGermany, {"", {Category::Bank}, ""});
    rules.ShowOther(SetOf("0101,DAY,New Year"));
    EXPECT_THAT(rules.Choice().categories, ElementsAre(Category::Public));
}

} // namespace
} // namespace orrery::ui
