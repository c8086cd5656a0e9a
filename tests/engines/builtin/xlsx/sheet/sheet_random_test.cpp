#include "book/error.h"
#include "engines/builtin/xlsx/formula/formula.h"
#include "util/error.h"
#include "xlsx/sheet_fixture.h"

#include <algorithm>
#include <map>
#include <pugixml.hpp>
#include <random>

namespace orrery::xlsx {
namespace {

/// A cell as any reader of the format sees it.
struct DecodedCell {
    std::string format, type, value, formula;
    friend bool operator==(const DecodedCell&, const DecodedCell&) = default;
};
using SeenCells = std::map<CellAddress, DecodedCell>;

void PrintTo(const DecodedCell& cell, std::ostream* out)
{
    *out << "s=" << cell.format << " t=" << cell.type << " v=" << cell.value
         << " f=" << cell.formula;
}

/// Reads a sheet with another parser, and checks what a reader relies on: order, spans, dimension.
class SheetReader {
public:
    explicit SheetReader(const std::string& xml)
    {
        EXPECT_TRUE(document_.load_string(xml.c_str()));
        const pugi::xml_node sheet = document_.child("worksheet");
        dimension_ = ParseCellRange(sheet.child("dimension").attribute("ref").value());
        std::int32_t number = 0;
        for (const pugi::xml_node row : sheet.child("sheetData").children("row")) {
            const std::int32_t next = row.attribute("r").as_int(number + 1);
            EXPECT_GT(next, number);
            number = next;
            ReadRow(row, number);
        }
    }

    SeenCells Cells;
    std::map<std::int32_t, std::string> RowFormats;

    std::string NewFormat(CellAddress cell) const
    {
        const auto row = RowFormats.find(cell.row);
        if (row != RowFormats.end())
            return row->second;
        for (const pugi::xml_node column :
             document_.child("worksheet").child("cols").children("col"))
            if (column.attribute("min").as_int() <= cell.column &&
                column.attribute("max").as_int() >= cell.column)
                return column.attribute("style").value();
        return "";
    }

private:
    void ReadRow(const pugi::xml_node& row, std::int32_t number)
    {
        if (row.attribute("customFormat").as_bool())
            RowFormats[number] = row.attribute("s").value();
        int first = 0;
        int last = 0;
        const bool hasSpans =
            std::sscanf(row.attribute("spans").value(), "%d:%d", &first, &last) == 2;
        std::int32_t column = 0;
        for (const pugi::xml_node cell : row.children("c")) {
            CellAddress address{number, column + 1};
            if (cell.attribute("r"))
                address = ParseCellAddress(cell.attribute("r").value()).value_or(CellAddress{});
            EXPECT_EQ(address.row, number);
            EXPECT_GT(address.column, column);
            EXPECT_TRUE(!hasSpans || (address.column >= first && address.column <= last));
            EXPECT_TRUE(dimension_->Contains(address));
            column = address.column;
            Cells[address] = {cell.attribute("s").value(), cell.attribute("t").value(),
                              cell.child("v").child_value(), FormulaOf(cell, address)};
        }
    }

    std::string FormulaOf(const pugi::xml_node& cell, CellAddress address)
    {
        const pugi::xml_node formula = cell.child("f");
        if (std::string_view(formula.attribute("t").value()) != "shared")
            return formula.child_value();
        const int group = formula.attribute("si").as_int();
        if (formula.attribute("ref")) {
            const auto range = ParseCellRange(formula.attribute("ref").value());
            EXPECT_TRUE(range && range->Contains(address));
            masters_[group] = {address, *range, formula.child_value()};
        }
        const Master& master = masters_.at(group);
        EXPECT_TRUE(master.range.Contains(address));
        return MoveFormula(master.formula, address.row - master.cell.row,
                           address.column - master.cell.column);
    }

    struct Master {
        CellAddress cell;
        CellRange range;
        std::string formula;
    };
    pugi::xml_document document_;
    std::optional<CellRange> dimension_;
    std::map<int, Master> masters_;
};

class SheetMaker {
public:
    explicit SheetMaker(unsigned seed) : random_(seed) {}

    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    bool Sometimes() { return Below(3) == 0; }

    /// A sheet of up to 20 rows and columns, with gaps, missing references, formats and formulas.
    std::string Make()
    {
        std::string rows;
        std::int32_t number = 0;
        while ((number += Sometimes() ? 1 + Below(3) : 1) <= 20) {
            const bool isCounted = number == counted_ + 1 && Sometimes();
            rows += isCounted ? "<row" : "<row r=\"" + std::to_string(number) + '"';
            rows += Sometimes() ? " spans=\"1:20\"" : "";
            rows += Sometimes() ? " s=\"5\" customFormat=\"1\"" : "";
            const std::string cells = MakeCells(number);
            rows += cells.empty() && Sometimes() ? "/>\n" : '>' + cells + "</row>\n";
            counted_ = number;
        }
        return WorksheetXml("<dimension ref=\"A1:T20\"/><cols><col min=\"3\" max=\"6\" "
                            "style=\"8\"/></cols><sheetData>" +
                            rows + "</sheetData>");
    }

private:
    std::string MakeCells(std::int32_t row)
    {
        std::string cells;
        std::int32_t before = 0;
        std::int32_t column = 0;
        while ((column += Sometimes() ? 1 + Below(5) : 1) <= 20) {
            const bool isCounted = column == before + 1 && Sometimes();
            before = column;
            const CellAddress cell{row, column};
            cells += isCounted ? "<c" : "<c r=\"" + FormatCellAddress(cell) + '"';
            cells += Sometimes() ? " s=\"2\"" : "";
            cells += MakeContent(cell);
        }
        return cells;
    }

    std::string MakeContent(CellAddress cell)
    {
        switch (Below(6)) {
        case 0:
            return "/>";
        case 1:
            return " t=\"s\"><v>" + std::to_string(Below(9)) + "</v></c>";
        case 2:
            return "><f>B2*2</f><v>4</v></c>";
        case 3:
            return " t=\"str\">" + MakeShared(cell) + "<v>text</v></c>";
        default:
            return "> <v>" + std::to_string(Below(999)) + "</v> </c>";
        }
    }

    /// A master, or a dependent if the last master's range contains the cell.
    std::string MakeShared(CellAddress cell)
    {
        const int group = Below(2);
        CellRange& range = groups_[group];
        if (range.Contains(cell) && Below(5) != 0)
            return "<f t=\"shared\" si=\"" + std::to_string(group) + "\"/>";
        range = {cell, {cell.row + Below(5), cell.column + Below(5)}};
        return "<f t=\"shared\" ref=\"" + FormatCellRange(range) + "\" si=\"" +
               std::to_string(group) + "\">" + FormatCellAddress(cell) + "+$A$1</f>";
    }

    std::mt19937 random_;
    std::int32_t counted_ = 0;
    std::map<int, CellRange> groups_;
};

void WriteAtRandom(SheetMaker& random, SheetCells& cells, const SheetReader& before,
                   SeenCells& expected)
{
    for (int count = random.Below(80); count > 0; --count) {
        const CellAddress cell{1 + random.Below(25), 1 + random.Below(25)};
        const auto number = static_cast<std::int16_t>(random.Below(4000) - 2000);
        const bool isText = random.Sometimes();
        if (isText)
            cells.Set(cell.row, cell.column, SharedStringIndex{7});
        else
            cells.Set(cell.row, cell.column, number);
        const auto old = before.Cells.find(cell);
        const std::string format =
            old != before.Cells.end() ? old->second.format : before.NewFormat(cell);
        expected[cell] = {format, isText ? "s" : "", isText ? "7" : std::to_string(number), ""};
    }
}

TEST(SheetCells, WritesOfAnyKindReadBackAndLeaveTheRest)
{
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        SheetMaker random(seed);
        const auto sheet = ReadSheet(random.Make());
        const SheetReader before(sheet->Xml());
        SeenCells expected = before.Cells;
        SheetCells cells(sheet);
        WriteAtRandom(random, cells, before, expected);
        const bool recalculate = random.Sometimes();
        if (recalculate)
            for (auto& [address, cell] : expected)
                if (!cell.formula.empty())
                    cell.value = cell.type = "";

        const std::string after = cells.Patch(recalculate).Apply(sheet->Xml());
        ASSERT_EQ(SheetReader(after).Cells, expected) << sheet->Xml() << "\n\n" << after;

        // The new text can be edited again like the old one.
        const auto again = ReadSheet(after);
        for (const auto& [address, cell] : expected)
            ASSERT_NE(again->Index().FindCell(address), nullptr);
        ASSERT_EQ(again->Index().cells.size(), expected.size());
    }
}

/// The text with a byte changed, or with a few doubled, moved or removed.
std::string Damage(std::string xml, SheetMaker& random)
{
    constexpr std::string_view kBytes = "<>/\"' =&;:rcfvst0159ABZ\n";
    const auto at = static_cast<std::size_t>(random.Below(static_cast<int>(xml.size()) - 60));
    const auto length = static_cast<std::size_t>(random.Below(60));
    switch (random.Below(6)) {
    case 0:
        xml.erase(at, 1 + length);
        break;
    case 1:
        xml.insert(at, xml.substr(at, length));
        break;
    case 2:
        xml.insert(xml.find('<', at), xml.substr(xml.find('<', at / 2), length));
        break;
    default:
        xml[at] = kBytes[static_cast<std::size_t>(random.Below(static_cast<int>(kBytes.size())))];
    }
    return xml;
}

TEST(SheetCells, DamagedSheetsAreRefusedOrWrittenInOrder)
{
    const Styles formats("", "");
    int accepted = 0;
    for (unsigned seed = 1; seed <= 1500; ++seed) {
        SheetMaker random(seed);
        const std::string xml = Damage(random.Make(), random);
        try {
            const auto sheet = ReadSheet(xml);
            SheetCells cells(sheet);
            for (std::int32_t i = 1; i <= 25; ++i) {
                cells.CheckWritable(i, i, formats);
                cells.Set(i, i, static_cast<std::int16_t>(i));
                cells.Set(i, 1, SharedStringIndex{2});
            }
            ++accepted;
            const std::string after = cells.Patch(random.Sometimes()).Apply(xml);
            EXPECT_NO_THROW(ReadSheet(after)) << xml << "\n\n" << after;
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        }
    }
    EXPECT_GT(accepted, 150);
}

} // namespace
} // namespace orrery::xlsx
