#include "engines/builtin/xlsx/package/package.h"
#include "places/places.h"
#include "xlsx/sheet_fixture.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <pugixml.hpp>

namespace orrery::xlsx {
namespace {

/// The undamaged workbooks.
std::vector<std::filesystem::path> CorpusWorkbooks()
{
    const std::filesystem::path folder = places::CorpusFolder() / "xlsx";
    std::vector<std::filesystem::path> files;
    if (std::filesystem::is_directory(folder))
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string_view LocalName(const pugi::xml_node& node)
{
    const std::string_view name = node.name();
    return name.substr(name.find(':') + 1);
}

/// The number of rows and cells that another parser sees.
std::pair<std::size_t, std::size_t> CountCells(const std::string& xml)
{
    pugi::xml_document document;
    EXPECT_TRUE(document.load_buffer(xml.data(), xml.size()));
    std::size_t rows = 0;
    std::size_t cells = 0;
    for (const pugi::xml_node data : document.document_element())
        for (const pugi::xml_node row : data)
            if (LocalName(data) == "sheetData" && LocalName(row) == "row") {
                ++rows;
                for (const pugi::xml_node cell : row)
                    if (LocalName(cell) == "c")
                        ++cells;
            }
    return {rows, cells};
}

/// Writes a cell into every row and one beyond; the unwritten ones must be unchanged.
void CheckWrites(const std::shared_ptr<const SheetText>& sheet)
{
    SheetCells cells(sheet);
    const SheetIndex& index = sheet->Index();
    std::size_t added = 0;
    const auto set = [&](std::int32_t row, std::int32_t column) {
        if (sheet->IsPartOfArray({row, column}) || !cells.TakesValue(row, column))
            return;
        if (index.FindCell({row, column}) == nullptr)
            ++added;
        cells.Set(row, column, std::int16_t{7});
    };
    for (const RowPlace& row : index.rows)
        set(row.number, 1 + row.number % 16);
    set(index.rows.empty() ? 1 : std::min(index.rows.back().number + 2, kSheetRows), 3);
    const auto written = ReadSheet(cells.Patch(true).Apply(sheet->Xml()));
    EXPECT_EQ(written->Index().cells.size(), index.cells.size() + added);
    for (std::uint32_t i = 0; i < index.cells.size(); ++i)
        ASSERT_NE(written->Index().FindCell(index.AddressOf(i)), nullptr);
}

TEST(SheetCorpus, EveryWorksheetIsIndexedAndStaysAsItIs)
{
    const auto files = CorpusWorkbooks();
    if (files.empty()) {
        ASSERT_EQ(std::getenv("CI"), nullptr) << "no workbooks in " << places::CorpusFolder();
        GTEST_SKIP() << "no workbooks in " << places::CorpusFolder();
    }
    std::size_t sheets = 0;
    std::size_t cells = 0;
    for (const auto& file : files) {
        const Package package(file);
        for (const std::string& part : package.PartNames()) {
            if (!package.TypeOf(part).ends_with("sheet+xml"))
                continue;
            SCOPED_TRACE(file.filename().string() + part);
            const PartText xml = package.ReadXml(part);
            const auto sheet = std::make_shared<SheetText>(xml, part);
            EXPECT_EQ(std::pair(sheet->Index().rows.size(), sheet->Index().cells.size()),
                      CountCells(*xml));
            EXPECT_TRUE(SheetCells(sheet).Patch(false).Empty());
            if (sheet->HasCells())
                CheckWrites(sheet);
            ++sheets;
            cells += sheet->Index().cells.size();
        }
    }
    EXPECT_GT(sheets, files.size() / 2);
    EXPECT_GT(cells, 1000U);
}

} // namespace
} // namespace orrery::xlsx
