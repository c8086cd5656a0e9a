#include "cli/command_line.h"

#include <gtest/gtest.h>

#include <sstream>

namespace orrery::cli {
namespace {

using Texts = std::vector<std::string>;

struct Parsed {
    std::variant<CommandLine, Finished> result;
    std::string out;
    std::string err;

    const CommandLine& Line() const { return std::get<CommandLine>(result); }
    int ExitCode() const { return std::get<Finished>(result).exitCode; }
};

Parsed Parse(const Texts& arguments)
{
    std::vector<const char*> argv = {"orrery-cli"};
    for (const std::string& argument : arguments)
        argv.push_back(argument.c_str());
    std::ostringstream out;
    std::ostringstream err;
    auto result = ParseCommandLine(static_cast<int>(argv.size()), argv.data(), out, err);
    return {std::move(result), out.str(), err.str()};
}

// ---- years

struct YearsCase {
    const char* name;
    const char* text;
    std::optional<Texts> expected;
};

class ExpandYearsTest : public testing::TestWithParam<YearsCase> {};

TEST_P(ExpandYearsTest, ExpandsAYearOrARange)
{
    EXPECT_EQ(ExpandYears(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ExpandYearsTest,
    testing::Values(YearsCase{"OneYear", "2027", Texts{"2027"}},
                    YearsCase{"NumbersAreLeftToTheCommand", "-5", Texts{"-5"}},
                    YearsCase{"AlsoTooLargeOnes", "40000", Texts{"40000"}},
                    YearsCase{"Range", "2027-2029", Texts{"2027", "2028", "2029"}},
                    YearsCase{"RangeOfOne", "2027-2027", Texts{"2027"}},
                    YearsCase{"LastYears", "32766-32767", Texts{"32766", "32767"}},
                    YearsCase{"BeyondSixteenBits", "32767-32768", std::nullopt},
                    YearsCase{"Reversed", "2029-2027", std::nullopt},
                    YearsCase{"Open", "2027-", std::nullopt},
                    YearsCase{"TwoDashes", "2027--2029", std::nullopt},
                    YearsCase{"ThreeYears", "2027-2028-2029", std::nullopt},
                    YearsCase{"LongDigits", "1-99999999999999999999", std::nullopt},
                    YearsCase{"Word", "next", std::nullopt}, YearsCase{"Empty", "", std::nullopt},
                    YearsCase{"Dots", "2027..2029", std::nullopt}),
    [](const auto& each) { return std::string(each.param.name); });

// ---- commands and options

TEST(CommandLineTest, LookHasEveryOption)
{
    const Parsed parsed =
        Parse({"look", "Desk.xls", "--sheet", "Month", "--year", "2027", "--month", "5", "--svg",
               "May.svg", "--settings", "s.ini", "--json"});
    const CommandLine& line = parsed.Line();
    EXPECT_EQ(line.command, Command::Look);
    EXPECT_EQ(line.templateName, "Desk.xls");
    EXPECT_EQ(line.sheetName, "Month");
    EXPECT_EQ(line.years, (Texts{"2027"}));
    EXPECT_EQ(line.month, 5);
    EXPECT_EQ(line.svgFile, "May.svg");
    EXPECT_TRUE(line.json);
}

TEST(CommandLineTest, ProposeMayWrite)
{
    const Parsed parsed = Parse({"propose", "Mine.xlsx", "--write"});
    EXPECT_EQ(parsed.Line().command, Command::Propose);
    EXPECT_EQ(parsed.Line().templateName, "Mine.xlsx");
    EXPECT_TRUE(parsed.Line().write);
    EXPECT_FALSE(Parse({"propose", "Mine.xlsx"}).Line().write);
}

TEST(CommandLineTest, LookTakesAMonthOfOneYearOnly)
{
    for (const Texts& wrong : {Texts{"look", "Desk.xls", "--month", "5"},
                               Texts{"look", "Desk.xls", "--year", "2027", "--month", "13"},
                               Texts{"look", "Desk.xls", "--year", "2027", "--month", "0"},
                               Texts{"look", "Desk.xls", "--year", "2027-2028"}, Texts{"look"},
                               Texts{"look", "Desk.xls", "--svg", "-", "--json"}}) {
        const Parsed parsed = Parse(wrong);
        EXPECT_EQ(parsed.ExitCode(), kExitUsage);
        EXPECT_FALSE(parsed.err.empty());
    }
}

TEST(CommandLineTest, GenerateHasEveryOption)
{
    const Parsed parsed =
        Parse({"generate", "Desk.xlsx", "2027-2028", "--settings", "s.ini", "--template-folder",
               "t", "--output-folder", "o", "--holiday-folder", "h", "--engine", "builtin",
               "--open", "--pdf", "--json"});
    const CommandLine& line = parsed.Line();
    EXPECT_EQ(line.command, Command::Generate);
    EXPECT_EQ(line.templateName, "Desk.xlsx");
    EXPECT_EQ(line.years, (Texts{"2027", "2028"}));
    EXPECT_EQ(line.settingsFile, "s.ini");
    EXPECT_EQ(line.templateFolder, "t");
    EXPECT_EQ(line.outputFolder, "o");
    EXPECT_EQ(line.holidayFolder, "h");
    EXPECT_EQ(line.engine, "builtin");
    EXPECT_TRUE(line.open);
    EXPECT_TRUE(line.pdf);
    EXPECT_TRUE(line.json);
}

TEST(CommandLineTest, WhoMakesAPdfMeansOne)
{
    const CommandLine line = Parse({"generate", "Desk.xlsx", "2027", "--pdf-by", "builtin"}).Line();
    EXPECT_TRUE(line.pdf);
    EXPECT_EQ(line.pdfBy, "builtin");
    EXPECT_EQ(Parse({"generate", "Desk.xlsx", "2027", "--pdf"}).Line().pdfBy, "");
    EXPECT_EQ(Parse({"generate", "Desk.xlsx", "2027", "--pdf-by", "excel"}).ExitCode(), kExitUsage);
}

TEST(CommandLineTest, OptionsAreOffUnlessGiven)
{
    const CommandLine line = Parse({"generate", "Desk.xlsx", "2027"}).Line();
    EXPECT_EQ(line.settingsFile, "");
    EXPECT_EQ(line.templateFolder, std::nullopt);
    EXPECT_EQ(line.engine, "");
    EXPECT_FALSE(line.open);
    EXPECT_FALSE(line.pdf);
    EXPECT_FALSE(line.json);
}

TEST(CommandLineTest, OptionsMayPrecedeTheArguments)
{
    const CommandLine line =
        Parse({"generate", "--json", "--output-folder", "o", "Desk.xlsx", "2027"}).Line();
    EXPECT_EQ(line.templateName, "Desk.xlsx");
    EXPECT_EQ(line.years, Texts{"2027"});
}

TEST(CommandLineTest, EveryCommandIsKnown)
{
    EXPECT_EQ(Parse({"templates"}).Line().command, Command::Templates);
    EXPECT_EQ(Parse({"parameters", "Desk.xlsx"}).Line().command, Command::Parameters);
    EXPECT_EQ(Parse({"check", "Desk.xlsx"}).Line().command, Command::Check);
    EXPECT_TRUE(Parse({"check", "Desk.xlsx"}).Line().years.empty());
    EXPECT_EQ(Parse({"check", "Desk.xlsx", "2027"}).Line().years, Texts{"2027"});
    EXPECT_EQ(Parse({"holidays", "Here.txt", "2027"}).Line().holidayFiles, Texts{"Here.txt"});
    const CommandLine several = Parse({"holidays", "Here.txt", "/a/Own.txt", "2027-2028",
                                       "--region", "BY", "--language", "de", "--all-kinds"})
                                    .Line();
    EXPECT_EQ(several.holidayFiles, (Texts{"Here.txt", "/a/Own.txt"}));
    EXPECT_EQ(several.years, (Texts{"2027", "2028"}));
    EXPECT_EQ(several.region, "BY");
    EXPECT_EQ(several.language, "de");
    EXPECT_TRUE(several.allKinds);
    EXPECT_EQ(Parse({"holidays", "Desk.ini", "2027", "--section", "yearly"}).Line().section,
              "yearly");
    EXPECT_EQ(Parse({"easter", "2024", "2027-2028", "-1"}).Line().years,
              (Texts{"2024", "2027", "2028", "-1"}));
}

struct UsageCase {
    const char* name;
    Texts arguments;
    const char* mentioned; ///< part of the message on standard error
};

class WrongUsageTest : public testing::TestWithParam<UsageCase> {};

TEST_P(WrongUsageTest, ReportsOneSentence)
{
    const Parsed parsed = Parse(GetParam().arguments);
    ASSERT_TRUE(std::holds_alternative<Finished>(parsed.result));
    EXPECT_EQ(parsed.ExitCode(), 2);
    EXPECT_EQ(parsed.out, "");
    EXPECT_NE(parsed.err.find(GetParam().mentioned), std::string::npos) << parsed.err;
    EXPECT_EQ(std::count(parsed.err.begin(), parsed.err.end(), '\n'), 1) << parsed.err;
}

INSTANTIATE_TEST_SUITE_P(
    Lines, WrongUsageTest,
    testing::Values(
        UsageCase{"NoCommand", {}, "command is missing"},
        UsageCase{"UnknownCommand", {"print"}, "print"},
        UsageCase{"NoTemplate", {"generate"}, "TEMPLATE"},
        UsageCase{"NoYears", {"generate", "Desk.xlsx"}, "YEARS"},
        UsageCase{"TooMuch", {"generate", "Desk.xlsx", "2027", "2028"}, "2028"},
        UsageCase{"NoYear", {"generate", "Desk.xlsx", "next"}, "2027 or 2027-2036"},
        UsageCase{"ReversedRange", {"easter", "2029-2027"}, "2029-2027"},
        UsageCase{"RangeForOneYear", {"check", "Desk.xlsx", "2027-2028"}, "one year"},
        UsageCase{"HolidaysWithoutAYear", {"holidays", "A.txt"}, "FILE"},
        UsageCase{"HolidaysOfNoYear", {"holidays", "A.txt", "B.txt"}, "\"B.txt\" is neither"},
        UsageCase{"UnknownOption", {"templates", "--fast"}, "--fast"},
        UsageCase{"OptionOfAnotherCommand", {"easter", "2027", "--open"}, "--open"},
        UsageCase{
            "UnknownEngine", {"generate", "Desk.xlsx", "2027", "--engine", "abacus"}, "abacus"},
        UsageCase{"UnknownDateOrder", {"import", "A.csv", "--date-order", "dym"}, "dym"},
        UsageCase{"YearsToImport", {"import", "A.csv", "--years", "0-2027"}, "from 1 to 9999"},
        UsageCase{"NoYearsToImport", {"import", "A.csv", "--years", "next"}, "2027 or 2027-2036"},
        UsageCase{"UnknownSection", {"holidays", "A.ini", "2027", "--section", "weekly"}, "weekly"},
        UsageCase{"OptionWithoutValue", {"generate", "Desk.xlsx", "2027", "--engine"}, "--engine"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ImportTest, TakesItsOptions)
{
    const CommandLine plain = Parse({"import", "Club.csv"}).Line();
    EXPECT_EQ(plain.command, Command::Import);
    EXPECT_EQ(plain.importFile, "Club.csv");
    EXPECT_TRUE(plain.years.empty());
    EXPECT_FALSE(plain.replace);
    const CommandLine full = Parse({"import", "a.hol", "--years", "2027-2028", "--output", "b.txt",
                                    "--replace", "--date-order", "mdy", "--section", "Germany"})
                                 .Line();
    EXPECT_EQ(full.years, (Texts{"2027", "2028"}));
    EXPECT_EQ(full.outputFile, "b.txt");
    EXPECT_TRUE(full.replace);
    EXPECT_EQ(full.dateOrder, "mdy");
    EXPECT_EQ(full.section, "Germany");
}

// ---- help

TEST(HelpTest, NamesEveryCommandAndGivesExamples)
{
    const Parsed parsed = Parse({"--help"});
    EXPECT_EQ(parsed.ExitCode(), 0);
    for (const char* text : {"generate", "templates", "parameters", "check", "holidays", "import",
                             "easter", "Examples:", "Exit status:"})
        EXPECT_NE(parsed.out.find(text), std::string::npos) << text;
}

struct HelpCase {
    const char* command;
    Texts mentioned;
};

class CommandHelpTest : public testing::TestWithParam<HelpCase> {};

TEST_P(CommandHelpTest, MentionsEveryOption)
{
    const Parsed parsed = Parse({GetParam().command, "--help"});
    EXPECT_EQ(parsed.ExitCode(), 0);
    for (const std::string& text : GetParam().mentioned)
        EXPECT_NE(parsed.out.find(text), std::string::npos) << text;
}

const Texts kSettings = {"--settings FILE", "--template-folder DIR", "--holiday-folder DIR",
                         "--json"};

Texts WithSettings(Texts more)
{
    more.insert(more.end(), kSettings.begin(), kSettings.end());
    return more;
}

INSTANTIATE_TEST_SUITE_P(
    Commands, CommandHelpTest,
    testing::Values(HelpCase{"generate", WithSettings({"TEMPLATE", "YEARS", "--output-folder DIR",
                                                       "--engine NAME", "--open"})},
                    HelpCase{"templates", kSettings},
                    HelpCase{"parameters", WithSettings({"TEMPLATE"})},
                    HelpCase{"check", WithSettings({"TEMPLATE", "YEAR", "--engine NAME"})},
                    HelpCase{"holidays", WithSettings({"FILE", "YEAR", "--section NAME"})},
                    HelpCase{"import",
                             WithSettings({"FILE", "--years YEARS", "--output FILE", "--replace",
                                           "--date-order ORDER", "--section NAME"})},
                    HelpCase{"easter", {"YEAR", "--json"}}),
    [](const auto& each) { return std::string(each.param.command); });

TEST(HelpTest, VersionIsPrinted)
{
    const Parsed parsed = Parse({"--version"});
    EXPECT_EQ(parsed.ExitCode(), 0);
    EXPECT_TRUE(parsed.out.starts_with("orrery-cli "));
}

} // namespace
} // namespace orrery::cli
