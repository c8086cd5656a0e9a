#include "exchange/ics/ics_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace orrery::exchange {
namespace {

holidays::Date January(int day)
{
    return holidays::MakeDate(2027, 1, static_cast<std::int16_t>(day));
}

/// The lines that begin so, without that.
std::vector<std::string> Lines(const std::string& text, const std::string& begin)
{
    std::vector<std::string> found;
    for (std::size_t at = text.find(begin); at != std::string::npos;
         at = text.find(begin, at + begin.size()))
        found.push_back(text.substr(at + begin.size(), text.find("\r\n", at) - at - begin.size()));
    return found;
}

TEST(IcsText, IsACalendar)
{
    EXPECT_EQ(IcsText("Here", {{January(1), "New Year", "Here.txt"}}),
              "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Orrery//Holidays//EN\r\n"
              "CALSCALE:GREGORIAN\r\nX-WR-CALNAME:Here\r\nBEGIN:VEVENT\r\n"
              "UID:20270101-" // FNV-1a of "Here.txt\nNew Year", by another program
              "9e1adcf68ab07d46@orrery\r\nDTSTAMP:20270101T000000Z\r\n"
              "DTSTART;VALUE=DATE:20270101\r\nDTEND;VALUE=DATE:20270102\r\nSUMMARY:New Year\r\n"
              "CATEGORIES:Holiday,Public\r\nTRANSP:TRANSPARENT\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
}

TEST(IcsText, JoinsDaysInARow)
{
    const std::string text = IcsText("", {{January(3), "b", "B.txt"},
                                          {January(2), "a", "A.txt"},
                                          {January(1), "a", "A.txt"},
                                          {January(2), "a", "A.txt"},
                                          {January(5), "a", "A.txt"},
                                          {January(3), "a", "B.txt"}});
    const std::vector<std::string> starts = {"20270101", "20270103", "20270103", "20270105"};
    EXPECT_EQ(Lines(text, "DTSTART;VALUE=DATE:"), starts);
    const std::vector<std::string> ends = {"20270103", "20270104", "20270104", "20270106"};
    EXPECT_EQ(Lines(text, "DTEND;VALUE=DATE:"), ends);
}

TEST(IcsText, KeepsUidsWhateverElseThereIs)
{
    const IcsHoliday day{January(3), "a", "A.txt"};
    const auto alone = Lines(IcsText("", {day}), "UID:");
    const auto among =
        Lines(IcsText("b", {{January(1), "b", "A.txt"}, day, {January(3), "a", "B.txt"}}), "UID:");
    ASSERT_EQ(among.size(), 3U);
    EXPECT_EQ(std::count(among.begin(), among.end(), alone.at(0)), 1);
}

TEST(IcsText, EscapesTexts)
{
    const std::string text = IcsText("a,b", {{January(1), "a;b\\c\nd", "A.txt"}});
    EXPECT_EQ(Lines(text, "X-WR-CALNAME:").at(0), "a\\,b");
    EXPECT_EQ(Lines(text, "SUMMARY:").at(0), "a\\;b\\\\c d");
}

TEST(IcsText, FoldsLinesBetweenCharacters)
{
    std::string name;
    for (int i = 0; i < 60; ++i)
        name += "\xE2\x82\xAC"; // three bytes
    const std::string text = IcsText("", {{January(1), name, "A.txt"}});
    const std::size_t begin = text.find("SUMMARY:");
    std::string unfolded;
    for (std::size_t at = begin;;) {
        const std::size_t end = text.find("\r\n", at);
        EXPECT_LE(end - at, 75U);
        EXPECT_EQ((end - at - (at == begin ? 8U : 1U)) % 3, 0U);
        unfolded += text.substr(at == begin ? at : at + 1, end - at - (at == begin ? 0 : 1));
        at = end + 2;
        if (text[at] != ' ')
            break;
    }
    EXPECT_EQ(unfolded, "SUMMARY:" + name);
}

TEST(IcsText, NamesTheKind)
{
    const std::string text =
        IcsText("", {{January(1), "a", "A.txt", holidays::Category::Observance}});
    EXPECT_EQ(Lines(text, "CATEGORIES:").at(0), "Holiday,Observance");
}

} // namespace
} // namespace orrery::exchange
