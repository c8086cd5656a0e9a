#include "exchange/ics/component_reader.h"

#include "util/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orrery::exchange {
namespace {

using testing::ElementsAre;
using testing_support::ScratchFolder;

std::vector<std::string> LinesOf(std::string_view bytes)
{
    const ScratchFolder scratch;
    util::InputFile file(scratch.Write("a.ics", bytes));
    ContentLines lines(file);
    ContentLine line;
    std::vector<std::string> found;
    while (lines.Next(line))
        found.push_back(std::to_string(line.number) + ' ' + line.text);
    return found;
}

TEST(ContentLines, EndInEachWay)
{
    EXPECT_THAT(LinesOf("a\r\nb\nc\rd"), ElementsAre("1 a", "2 b", "3 c", "4 d"));
    EXPECT_THAT(LinesOf("\xEF\xBB\xBF"
                        "a\n\n"),
                ElementsAre("1 a", "2 "));
    EXPECT_THAT(LinesOf(""), ElementsAre());
}

TEST(ContentLines, AreUnfolded)
{
    EXPECT_THAT(LinesOf("a\r\n b\r\n\tc\r\nd"), ElementsAre("1 abc", "4 d"));
    EXPECT_THAT(LinesOf("gr\xC3\r\n \xB6\n"), ElementsAre("1 gr\xC3\xB6")) << "within a character";
}

TEST(ContentLines, AreUtf8OrInTheCodePage)
{
    EXPECT_THAT(LinesOf("gr\xC3\xB6\xC3\x9F\n"), ElementsAre("1 größ"));
    EXPECT_THAT(LinesOf("gr\xF6\xDF\n"), ElementsAre("1 größ"));
    EXPECT_THAT(LinesOf(std::string_view("a\0b\n", 4)), ElementsAre("1 a b"));
}

TEST(ContentLines, AreCutWhereTheyAreTooLong)
{
    const ScratchFolder scratch;
    const std::string text(ContentLines::kLongest + 1, 'a');
    util::InputFile file(scratch.Write("a.ics", text.substr(1) + "\r\n" + text + "\r\nb"));
    ContentLines lines(file);
    ContentLine line;
    ASSERT_TRUE(lines.Next(line));
    EXPECT_FALSE(line.isTooLong);
    ASSERT_TRUE(lines.Next(line));
    EXPECT_TRUE(line.isTooLong);
    EXPECT_EQ(line.text.size(), ContentLines::kLongest);
    ASSERT_TRUE(lines.Next(line));
    EXPECT_EQ(line.text, "b");
}

struct Read {
    std::vector<Component> components;
    bool isCalendar = false;
};

Read ReadComponents(std::string_view bytes)
{
    const ScratchFolder scratch;
    util::InputFile file(scratch.Write("a.ics", bytes));
    ComponentReader reader(file);
    Read read;
    Component component;
    while (reader.Next(component))
        read.components.push_back(component);
    read.isCalendar = reader.IsCalendar();
    return read;
}

TEST(ComponentReader, GivesTheLinesOfEventsThatAreNeeded)
{
    const auto read =
        ReadComponents("BEGIN:VCALENDAR\nX-A:b\nbegin:vevent\nSUMMARY:a\nDESCRIPTION:b\n"
                       "BEGIN:VALARM\nSUMMARY:c\nEND:VALARM\ndtstart;VALUE=DATE:1\n"
                       "END:VEVENT\nEND:VCALENDAR\n");
    ASSERT_EQ(read.components.size(), 1U);
    EXPECT_EQ(read.components[0].text,
              "begin:vevent\r\nSUMMARY:a\r\ndtstart;VALUE=DATE:1\r\nEND:VEVENT\r\n");
    EXPECT_EQ(read.components[0].line, 3U);
    EXPECT_EQ(read.components[0].problem, "");
    EXPECT_TRUE(read.isCalendar);
}

TEST(ComponentReader, GivesTimeZonesWhole)
{
    const std::string zone = "BEGIN:VTIMEZONE\r\nTZID:a\r\nBEGIN:STANDARD\r\nDTSTART:1\r\n"
                             "END:STANDARD\r\nEND:VTIMEZONE\r\n";
    const auto read = ReadComponents("BEGIN:VCALENDAR\r\n" + zone + "END:VCALENDAR\r\n");
    ASSERT_EQ(read.components.size(), 1U);
    EXPECT_EQ(read.components[0].kind, Component::Kind::Zone);
    EXPECT_EQ(read.components[0].text, zone);
}

TEST(ComponentReader, KnowsTheOthers)
{
    const auto read = ReadComponents("BEGIN:VTODO\nEND:VTODO\nBEGIN:VFREEBUSY\nEND:VFREEBUSY\n"
                                     "BEGIN:VJOURNAL\nEND:VJOURNAL\n");
    ASSERT_EQ(read.components.size(), 2U);
    EXPECT_EQ(read.components[0].kind, Component::Kind::Todo);
    EXPECT_EQ(read.components[1].kind, Component::Kind::Journal);
    EXPECT_FALSE(ReadComponents("BEGIN:VCARD\nEND:VCARD\n").isCalendar);
}

TEST(ComponentReader, EndsAnEventWithoutEndWhereAnotherBegins)
{
    const auto read =
        ReadComponents("BEGIN:VCALENDAR\nBEGIN:VEVENT\nSUMMARY:a\nBEGIN:VEVENT\nSUMMARY:b\n"
                       "END:VEVENT\nBEGIN:VEVENT\nEND:VCALENDAR\nBEGIN:VCALENDAR\n"
                       "BEGIN:VEVENT\nEND:VEVENT\n");
    ASSERT_EQ(read.components.size(), 4U);
    EXPECT_EQ(read.components[0].problem, "What begins here has no end.");
    EXPECT_EQ(read.components[1].problem, "");
    EXPECT_NE(read.components[1].text.find("SUMMARY:b"), std::string::npos);
    EXPECT_EQ(read.components[2].problem, "What begins here has no end.");
    EXPECT_EQ(read.components[3].problem, "");
}

TEST(ComponentReader, RefusesTooMuchTextButKeepsTheBeginningOfAName)
{
    const std::string much(ContentLines::kLongest, 'a');
    const auto read = ReadComponents(
        "BEGIN:VEVENT\nEXDATE:" + much + "\nEND:VEVENT\nBEGIN:VEVENT\nSUMMARY:" + much +
        "\nEND:VEVENT\nBEGIN:VEVENT\nDESCRIPTION:" + much + "\nEND:VEVENT\n");
    ASSERT_EQ(read.components.size(), 3U);
    EXPECT_EQ(read.components[0].problem, "What begins here has too much text for an event.");
    EXPECT_EQ(read.components[1].problem, "");
    EXPECT_NE(read.components[1].text.find("SUMMARY:aaaa"), std::string::npos);
    EXPECT_EQ(read.components[2].problem, "");
}

} // namespace
} // namespace orrery::exchange
