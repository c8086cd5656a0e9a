#include "engines/builtin/xls/formula/formula_places.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/error.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orrery::xls {
namespace {

using namespace std::string_literals;

std::string Number(std::uint16_t value)
{
    std::string bytes;
    AppendU16(bytes, value);
    return bytes;
}

std::string Zeros(std::size_t count)
{
    return std::string(count, '\0');
}

/// An expression after its size.
std::string SizedTokens(const std::string& rgce)
{
    return Number(static_cast<std::uint16_t>(rgce.size())) + rgce;
}

std::string Text(std::string_view utf8)
{
    std::string bytes;
    AppendUnicodeString(bytes, utf8);
    return bytes;
}

/// A formula of an object.
std::string ObjectFormula(const std::string& rgce, const std::string& more = {})
{
    return SizedTokens(Number(static_cast<std::uint16_t>(rgce.size())) + "uuuu" + rgce + more);
}

std::string Part(std::uint16_t type, const std::string& data)
{
    return Number(type) + SizedTokens(data);
}

constexpr std::string_view kNoFormula("\0\0", 2);

struct Found {
    bool complete = false;
    std::vector<std::string> formulas;
};

/// The expressions of a record between others.
Found FindIn(RecordType type, std::string_view data)
{
    std::string records;
    AppendRecord(records, RecordType::Blank, "......");
    AppendRecord(records, type, data);
    AppendRecord(records, RecordType::Eof, {});
    Found found;
    found.complete = ForEachFormula(records, [&](const FormulaPlace& place) {
        EXPECT_EQ(place.record, type);
        found.formulas.push_back(records.substr(place.begin, place.size));
    });
    return found;
}

struct PlaceCase {
    const char* name;
    RecordType type;
    std::string data;
    std::vector<std::string> formulas;
};
class FormulaPlacesTest : public testing::TestWithParam<PlaceCase> {};

TEST_P(FormulaPlacesTest, FindsEveryFormula)
{
    const auto found = FindIn(GetParam().type, GetParam().data);
    EXPECT_TRUE(found.complete);
    EXPECT_EQ(found.formulas, GetParam().formulas);
}

TEST_P(FormulaPlacesTest, StaysInsideATruncatedRecord)
{
    const auto& data = GetParam().data;
    for (std::size_t size = 0; size < data.size(); ++size) {
        const auto found = FindIn(GetParam().type, data.substr(0, size));
        EXPECT_LE(found.formulas.size(), GetParam().formulas.size() + 1) << size;
    }
}

const std::string kFormat(18, 'f'); // of a conditional format, of any size

std::vector<PlaceCase> Cells()
{
    return {{"Formula", RecordType::Formula, Zeros(20) + SizedTokens("one") + "array", {"one"}},
            {"SharedFormula", RecordType::SharedFormula, Zeros(8) + SizedTokens("one"), {"one"}},
            {"Array", RecordType::Array, Zeros(12) + SizedTokens("one") + "array", {"one"}},
            {"Chart", RecordType::ChartLink, Zeros(6) + SizedTokens("one"), {"one"}},
            {"ChartWithoutFormula", RecordType::ChartLink, Zeros(8), {}},
            {"OtherRecord", RecordType::Number, Zeros(20) + SizedTokens("one"), {}}};
}

std::vector<PlaceCase> Names()
{
    const auto name = [](std::uint8_t characters, const std::string& text,
                         const std::string& more) {
        std::string data = Zeros(3);
        AppendU8(data, characters);
        return data + Number(3) + Zeros(8) + text + "one" + more;
    };
    return {{"Name", RecordType::Name, name(2, "\0ab"s, ""), {"one"}},
            {"WideName", RecordType::Name, name(2, "\1a\0b\0"s, ""), {"one"}},
            {"BuiltInName", RecordType::Name, name(1, "\0\6"s, ""), {"one"}},
            {"NameWithTexts", RecordType::Name, name(1, "\0a"s, "menu"), {"one"}}};
}

std::vector<PlaceCase> Rules()
{
    const auto conditional = [](const std::string& a, const std::string& b) {
        return "\1\1"s + Number(static_cast<std::uint16_t>(a.size())) +
               Number(static_cast<std::uint16_t>(b.size())) + kFormat + a + b;
    };
    const auto validation = [](const std::string& a, const std::string& b) {
        return Zeros(4) + Text("Title") + Text("Tyt\u0142") + Text("") + Text("Text") +
               Number(static_cast<std::uint16_t>(a.size())) + "uu" + a +
               Number(static_cast<std::uint16_t>(b.size())) + "uu" + b + "ranges";
    };
    return {{"ConditionalFormat", RecordType::ConditionalFormat, conditional("one", ""), {"one"}},
            {"ConditionalFormatBetween",
             RecordType::ConditionalFormat,
             conditional("one", "second"),
             {"one", "second"}},
            {"Validation", RecordType::DataValidation, validation("one", ""), {"one"}},
            {"ValidationBetween",
             RecordType::DataValidation,
             validation("one", "second"),
             {"one", "second"}},
            {"ValidationWithoutFormula", RecordType::DataValidation, validation("", ""), {}}};
}

/// A rule of that kind; `format` includes its size.
std::string Rule12(char kind, const std::string& format, const std::string& more)
{
    return Zeros(12) + kind + '\1' + Number(3) + Number(0) + format + "one" +
           SizedTokens("active") + Zeros(5) + '\x10' + Zeros(16) + more;
}

std::vector<PlaceCase> Rules12()
{
    const std::string noFormat = Zeros(6);
    const std::string format = "\5\0\0\0fffff"s;
    const std::string lowest = "\2\0\0"s;
    const std::string number = "\1\0\0dddddddd"s;
    const std::string formula = "\7"s + SizedTokens("limit");
    const std::string domain = Zeros(8);
    const auto type = RecordType::ConditionalFormat12;
    return {{"Rule", type, Rule12(1, format, ""), {"one", "active"}},
            {"RuleWithoutFormat", type, Rule12(1, noFormat, ""), {"one", "active"}},
            {"Filter", type, Rule12(5, format, Zeros(6)), {"one", "active"}},
            {"ColorScale",
             type,
             Rule12(3, format,
                    "uuu\3\3\3"s + lowest + domain + formula + domain + number + domain +
                        Zeros(3 * 24)),
             {"one", "active", "limit"}},
            {"DataBar",
             type,
             Rule12(4, noFormat, "uuu\0\x0A\x5A"s + Zeros(16) + number + formula),
             {"one", "active", "limit"}},
            {"Icons",
             type,
             Rule12(6, noFormat,
                    "uuu\3\1\0"s + number + "=uuuu" + formula + "=uuuu" + lowest + "=uuuu"),
             {"one", "active", "limit"}}};
}

std::vector<PlaceCase> Objects()
{
    const std::string common = Part(0x15, Zeros(18));
    const auto object = [&](const std::string& parts) { return common + parts + Part(0, ""); };
    const std::string embedded = ObjectFormula("\2rrcc", "\3\4\0\0abcd"s);
    const auto control = [&](char flags, const std::string& place) {
        return object(Part(8, std::string{flags, '\0'}) +
                      Part(9, embedded + place + "\3\0\0\0key"s + ObjectFormula("cell") +
                                  ObjectFormula("list")));
    };
    const auto type = RecordType::Obj;
    return {
        {"Comment", type, object(Part(0x0D, Zeros(22))), {}},
        {"Macro", type, object(Number(4) + ObjectFormula("macro", "p")), {"macro"}},
        {"ScrollBar",
         type,
         object(Part(0x0C, Zeros(20)) + Number(0x0E) + ObjectFormula("cell")),
         {"cell"}},
        {"CheckBox",
         type,
         object(Number(4) + ObjectFormula("macro", "p") + Number(0x14) + ObjectFormula("cell") +
                Part(0x12, Zeros(8))),
         {"macro", "cell"}},
        {"List",
         type,
         common + Number(0x0E) + ObjectFormula("cell") + Number(0x13) + Number(0x1FEE) +
             ObjectFormula("range", "p") + "lines and so on",
         {"cell", "range"}},
        {"ListOfFilter",
         type,
         common + Number(0x13) + Number(0x1FEE) + std::string(kNoFormula) + "lines",
         {}},
        {"LinkedPicture",
         type,
         object(Part(7, "\2\0"s) + Part(8, "\x81\0"s) + Part(9, ObjectFormula("range", "p"))),
         {"range"}},
        {"EmbeddedObject", type, object(Part(8, "\1\0"s) + Part(9, embedded + "posn")), {"\2rrcc"}},
        {"ControlInItsStorage", type, control('\x11', "posn"), {"\2rrcc", "cell", "list"}},
        {"ControlInTheControls", type, control('\x31', "posnsize"), {"\2rrcc", "cell", "list"}},
        {"TextBox", RecordType::TextObject, Zeros(16) + std::string(kNoFormula), {}},
        {"LinkedTextBox", RecordType::TextObject, Zeros(16) + ObjectFormula("cell"), {"cell"}}};
}

constexpr auto kCaseName = [](const auto& test) { return std::string(test.param.name); };
INSTANTIATE_TEST_SUITE_P(Cells, FormulaPlacesTest, testing::ValuesIn(Cells()), kCaseName);
INSTANTIATE_TEST_SUITE_P(Names, FormulaPlacesTest, testing::ValuesIn(Names()), kCaseName);
INSTANTIATE_TEST_SUITE_P(Rules, FormulaPlacesTest, testing::ValuesIn(Rules()), kCaseName);
INSTANTIATE_TEST_SUITE_P(Rules12, FormulaPlacesTest, testing::ValuesIn(Rules12()), kCaseName);
INSTANTIATE_TEST_SUITE_P(Objects, FormulaPlacesTest, testing::ValuesIn(Objects()), kCaseName);

TEST(FormulaPlacesTest, ReportsAMissingFormula)
{
    EXPECT_FALSE(FindIn(RecordType::Formula, Zeros(20) + "\x04\0one"s).complete);
    EXPECT_FALSE(FindIn(RecordType::Formula, Zeros(5)).complete);
    EXPECT_FALSE(FindIn(RecordType::ConditionalFormat, "\1\1\xFF\xFF\xFF\xFFone").complete);
    EXPECT_FALSE(
        FindIn(RecordType::ConditionalFormat12, Zeros(18) + "\xFF\xFF\xFF\xFFone").complete);
    EXPECT_FALSE(FindIn(RecordType::DataValidation, Zeros(4) + "\xFF\xFF\1one").complete);
    EXPECT_FALSE(FindIn(RecordType::Obj, Part(0x15, "c") + "\4\0\xFF\xFFone"s).complete);
    EXPECT_FALSE(FindIn(RecordType::TextObject, Zeros(16) + "\xFF\xFFone").complete);
}

TEST(FormulaPlacesTest, VisitsFormulasBeforeTheMissingOne)
{
    const auto found =
        FindIn(RecordType::DataValidation, Zeros(4) + Text("") + Text("") + Text("") + Text("") +
                                               "\3\0uuone"s + "\x09\0uutwo"s);
    EXPECT_FALSE(found.complete);
    EXPECT_EQ(found.formulas, std::vector{"one"s});
}

TEST(FormulaPlacesTest, ARecordPastTheEndIsDamage)
{
    EXPECT_THROW(ForEachFormula("\6\0\xFF\0"s, [](const FormulaPlace&) {}), util::Error);
}

} // namespace
} // namespace orrery::xls
