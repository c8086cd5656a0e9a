#include "exchange/table/row_reader.h"

#include <gmock/gmock.h>

namespace orrery::exchange {
namespace {

using testing::ElementsAre;

/// Each row as "line: field|field", with "!" behind a broken one.
std::vector<std::string> RowsOf(std::string_view text, char separator = ',')
{
    std::vector<std::string> rows;
    RowReader reader(text, separator);
    RawRow row;
    while (reader.Next(row)) {
        std::string written = std::to_string(row.line) + ": ";
        for (const RawField& field : row.fields) {
            const std::string content(BeginningOf(field));
            written += (&field == &row.fields.front() ? "" : "|") +
                       (field.isQuoted ? WithSingleQuotes(content) : content);
        }
        rows.push_back(written + (row.isBroken ? "!" : ""));
    }
    return rows;
}

TEST(RowReader, SplitsRowsAndFields)
{
    EXPECT_THAT(RowsOf("a,b\nc,d\r\n\r\ne,\rf"),
                ElementsAre("1: a|b", "2: c|d", "3: ", "4: e|", "5: f"));
    EXPECT_THAT(RowsOf("a;b,c", ';'), ElementsAre("1: a|b,c"));
    EXPECT_THAT(RowsOf("a\tb", '\t'), ElementsAre("1: a|b"));
    EXPECT_THAT(RowsOf("a,\"b;c", kNoSeparator), ElementsAre("1: a,\"b;c"));
    EXPECT_THAT(RowsOf(""), ElementsAre());
}

TEST(RowReader, KnowsQuotes)
{
    EXPECT_THAT(RowsOf("\"a,b\",c"), ElementsAre("1: a,b|c"));
    EXPECT_THAT(RowsOf("\"say \"\"hi\"\"\",c"), ElementsAre("1: say \"hi\"|c"));
    EXPECT_THAT(RowsOf("\"two\r\nlines\",c\nd,e"), ElementsAre("1: two\r\nlines|c", "3: d|e"));
    EXPECT_THAT(RowsOf("a, \"b,c\" ,d"), ElementsAre("1: a|b,c|d"));
    EXPECT_THAT(RowsOf("\"\",x"), ElementsAre("1: |x"));
}

TEST(RowReader, TakesOtherQuotesAsTheyAre)
{
    EXPECT_THAT(RowsOf("\"Ben\" Smith,x"), ElementsAre("1: \"Ben\" Smith|x"));
    EXPECT_THAT(RowsOf("5\" disk,x"), ElementsAre("1: 5\" disk|x"));
    EXPECT_THAT(RowsOf("\"open,x\nnext,y"), ElementsAre("1: \"open|x!", "2: next|y"));
}

TEST(RowReader, KeepsTheFirstFieldsOfALongRow)
{
    const std::string text(1000, ',');
    RowReader same(text, ',');
    RawRow row;
    ASSERT_TRUE(same.Next(row));
    EXPECT_EQ(row.fields.size(), kMostFields);
    EXPECT_TRUE(row.IsEmpty());
    EXPECT_FALSE(same.Next(row));
}

} // namespace
} // namespace orrery::exchange
