#include "engines/builtin/xls/formula_text/formula_names.h"

#include "xls/stream_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace std::string_literals;
using namespace test;

/// The SUPBOOK record for another workbook.
std::string BookOf(std::string_view path, const std::vector<std::string>& sheets)
{
    std::string data = Numbers(
        {static_cast<std::uint16_t>(sheets.size()), static_cast<std::uint16_t>(path.size())});
    AppendUnicodeStringNoCount(data, path);
    for (const auto& sheet : sheets)
        AppendUnicodeString(data, sheet);
    return RecordOf(RecordType::SupBook, data);
}

std::string ExternNameOf(std::string_view name, std::uint16_t sheet = 0)
{
    std::string data = Numbers({0, sheet, 0});
    AppendShortUnicodeString(data, name);
    return RecordOf(RecordType::ExternName, data);
}

std::string GlobalsOf(const std::string& records)
{
    return BofOf(5) + BoundSheetOf("Plan", 500) + BoundSheetOf("Ann's", 600) +
           BoundSheetOf("Jan", 700) + records + EofRecord();
}

TEST(FormulaNamesTest, QuotesTheNamesOfSheets)
{
    const auto stream =
        GlobalsOf(OwnBookOf(3) + ExternSheetOf({0, 0, 0, 0, 1, 1, 0, 0, 2, 0, 0, 1}));
    const Globals globals(stream);
    const FormulaNames names(globals);
    EXPECT_EQ(names.SheetPrefix(0), "Plan!");
    EXPECT_EQ(names.SheetPrefix(1), "'Ann''s'!");
    EXPECT_EQ(names.SheetPrefix(2), "Plan:Jan!");
    EXPECT_EQ(names.SheetPrefix(3), "'Plan:Ann''s'!");
    EXPECT_EQ(names.SheetPrefix(4), std::nullopt);
}

TEST(FormulaNamesTest, SaysThatASheetIsDeleted)
{
    const auto stream =
        GlobalsOf(OwnBookOf(3) + ExternSheetOf({0, 0xFFFF, 0xFFFF, 0, 0, 9, 7, 0, 0}));
    const Globals globals(stream);
    const FormulaNames names(globals);
    EXPECT_EQ(names.SheetPrefix(0), "#REF!");
    EXPECT_EQ(names.SheetPrefix(1), "#REF!");
    EXPECT_EQ(names.SheetPrefix(2), std::nullopt) << "there is no such book";
}

TEST(FormulaNamesTest, NumbersOtherWorkbooks)
{
    const auto stream =
        GlobalsOf(OwnBookOf(3) + RecordOf(RecordType::SupBook, Numbers({1, 0x3A01})) +
                  BookOf("\x01one.xls", {"A"}) + BookOf("\x01two.xls", {"B", "C D"}) +
                  ExternNameOf("Rate") + ExternNameOf("Local", 2) + ExternNameOf("EUR,Last") +
                  ExternSheetOf({2, 0, 0, 3, 0, 0, 3, 0, 1, 3, 0xFFFE, 0xFFFE, 3, 5, 5}));
    const Globals globals(stream);
    const FormulaNames names(globals);
    EXPECT_EQ(names.SheetPrefix(0), "[1]A!");
    EXPECT_EQ(names.SheetPrefix(1), "[2]B!");
    EXPECT_EQ(names.SheetPrefix(2), "'[2]B:C D'!");
    EXPECT_EQ(names.SheetPrefix(4), "#REF!");
    EXPECT_EQ(names.LinkedName(3, 1), "[2]!Rate");
    EXPECT_EQ(names.LinkedName(3, 2), "'[2]C D'!Local");
    EXPECT_EQ(names.LinkedName(3, 3), "[2]!'EUR,Last'");
    EXPECT_EQ(names.LinkedName(3, 4), std::nullopt);
    EXPECT_EQ(names.LinkedName(3, 0), std::nullopt);
}

TEST(FormulaNamesTest, CallsFunctionsOfAddInsByTheirNames)
{
    const auto stream =
        GlobalsOf(RecordOf(RecordType::SupBook, Numbers({1, 0x3A01})) + ExternNameOf("EOMONTH") +
                  ExternNameOf("_xlfn.IFERROR") + ExternNameOf("_xlfn.CONCAT") +
                  BookOf("\x01\x02"
                         "C\x03"
                         "Addins\x03"
                         "ATPVBAEN.XLA",
                         {}) +
                  ExternNameOf("EDATE") + ExternSheetOf({0, 0xFFFE, 0xFFFE, 1, 0xFFFE, 0xFFFE}));
    const Globals globals(stream);
    const FormulaNames names(globals);
    EXPECT_EQ(names.LinkedName(0, 1), "EOMONTH");
    EXPECT_EQ(names.LinkedName(0, 2), "IFERROR") << "a function of Excel 2007";
    EXPECT_EQ(names.LinkedName(0, 3), "_xlfn.CONCAT");
    EXPECT_EQ(names.LinkedName(1, 1), "EDATE");
}

TEST(FormulaNamesTest, WritesBuiltInNamesAndThoseOfSheets)
{
    const auto stream =
        GlobalsOf(OwnBookOf(3) + ExternSheetOf({0, 0, 0}) + NameOf("\x06", 1, "", 0x20) +
                  NameOf("Total", 0, "") + NameOf("Mine", 2, "") + NameOf("\x1F", 0, "", 0x20));
    const Globals globals(stream);
    const FormulaNames names(globals);
    EXPECT_EQ(names.Name(1), "_xlnm.Print_Area");
    EXPECT_EQ(names.Name(2), "Total");
    EXPECT_EQ(names.Name(3), "Mine");
    EXPECT_EQ(names.Name(4), std::nullopt) << "no built-in name has that number";
    EXPECT_EQ(names.Name(0), std::nullopt);
    EXPECT_EQ(names.Name(5), std::nullopt);
    EXPECT_EQ(names.LinkedName(0, 2), "Total");
    EXPECT_EQ(names.LinkedName(0, 3), "'Ann''s'!Mine");
}

TEST(FormulaNamesTest, LeavesOutDamagedBooks)
{
    const auto stream = GlobalsOf(
        RecordOf(RecordType::SupBook, Numbers({1, 9})) + RecordOf(RecordType::ExternName, "") +
        RecordOf(RecordType::SupBook, Numbers({0xFFFF, 3})) + ExternSheetOf({0, 0, 0, 1, 0, 0}));
    const Globals globals(stream);
    const FormulaNames names(globals);
    EXPECT_EQ(names.SheetPrefix(0), "#REF!");
    EXPECT_EQ(names.SheetPrefix(1), "#REF!");
    EXPECT_EQ(names.LinkedName(0, 1), std::nullopt);
}

} // namespace
} // namespace orrery::xls
