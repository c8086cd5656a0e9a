#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/drawing/drawing_group.h"
#include "engines/builtin/xls/drawing/drawing_places.h"
#include "engines/builtin/xls/drawing/embedded_objects.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/sheet/sheet_tables.h"
#include "places/places.h"
#include "util/error.h"
#include "xls/corpus_streams.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

namespace orrery::xls {
namespace {

struct Book {
    std::string name;
    std::string group;       // the records of its drawing group
    std::string headerGroup; // the same for headers and footers
    std::vector<std::string> sheets;
};

Book ReadBook(const CorpusStream& stream)
{
    Book book{stream.name, {}, {}, {}};
    std::set<std::uint32_t> sheets;
    RecordReader reader(stream.bytes);
    bool inGroup = false;
    while (const auto record = reader.Next()) {
        const auto bytes = stream.bytes.substr(record->begin, record->End() - record->begin);
        inGroup = record->type == RecordType::MsoDrawingGroup ||
                  (inGroup && record->type == RecordType::Continue);
        if (inGroup)
            book.group += bytes;
        if (record->type == RecordType::HeaderFooterPicture)
            book.headerGroup += bytes;
        if (record->type == RecordType::BoundSheet)
            sheets.insert(ReadU32(record->data, 0));
        if (record->type == RecordType::Eof)
            break;
    }
    for (const auto offset : sheets)
        book.sheets.push_back(
            stream.bytes.substr(offset, SubstreamEnd(stream.bytes, offset) - offset));
    return book;
}

/// The content of a group's table.
struct IdTable {
    std::uint32_t highest = 0;
    std::uint32_t shapes = 0;
    std::uint32_t drawings = 0;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> clusters;
};

IdTable ReadTable(std::string_view records, std::size_t skip)
{
    std::string art;
    RecordReader reader(records);
    while (const auto record = reader.Next())
        art += record->data.substr(skip);
    IdTable table;
    if (art.empty())
        return table;
    EXPECT_EQ(ReadU16(art, 2), 0xF000);
    EXPECT_EQ(ReadU32(art, 4), art.size() - 8);
    EXPECT_EQ(ReadU16(art, 10), 0xF006);
    table = {ReadU32(art, 16), ReadU32(art, 24), ReadU32(art, 28), {}};
    EXPECT_EQ(std::size_t{ReadU32(art, 12)}, 16 + 8 * (std::size_t{ReadU32(art, 20)} - 1));
    for (std::size_t at = 32; at < 16 + std::size_t{ReadU32(art, 12)}; at += 8)
        table.clusters.emplace_back(ReadU32(art, at), ReadU32(art, at + 4));
    return table;
}

class DrawingCorpusTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (const auto& stream : CorpusStreams())
            books_.push_back(ReadBook(stream));
        ASSERT_TRUE(!books_.empty() || std::getenv("CI") == nullptr)
            << "no workbooks in " << places::CorpusFolder();
        if (books_.empty())
            GTEST_SKIP() << "no workbooks in " << places::CorpusFolder();
    }

    std::vector<Book> books_;
};

TEST_F(DrawingCorpusTest, EveryDrawingIsUnderstood)
{
    std::size_t drawings = 0;
    std::size_t shapes = 0;
    for (const auto& book : books_) {
        for (const auto& sheet : book.sheets) {
            const auto places = FindDrawings(sheet);
            EXPECT_TRUE(places.understood) << book.name;
            drawings += places.drawings.size();
            for (const auto& drawing : places.drawings)
                shapes += drawing.shapes.size();
        }
    }
    EXPECT_GT(drawings, 100U);
    EXPECT_GT(shapes, 800U);
}

/// Copies every sheet that many times and checks all ids.
void CheckCopies(const Book& book, DrawingKind kind, const std::string& records, int copies)
{
    const std::size_t skip = kind == DrawingKind::HeaderFooter ? 14 : 0;
    DrawingGroup group(kind, records);
    const auto before = ReadTable(records, skip);
    std::set<std::uint32_t> drawingIds;
    std::map<std::uint32_t, std::uint32_t> ownerOfCluster;
    std::set<std::uint32_t> shapes;
    for (const auto& sheet : book.sheets) {
        const auto places = FindDrawings(sheet);
        group.Reserve(places);
        for (const auto& drawing : places.drawings) {
            if (drawing.kind != kind)
                continue;
            drawingIds.insert(drawing.Id());
            for (const auto& shape : drawing.shapes)
                shapes.insert(shape.value);
        }
    }
    std::size_t addedDrawings = 0;
    std::size_t addedShapes = 0;
    for (const auto& sheet : book.sheets) {
        const auto places = FindDrawings(sheet);
        for (int i = 0; i < copies && !places.drawings.empty(); ++i) {
            auto copy = sheet;
            PutDrawingIds(copy, places, group.AddCopy(places));
            for (const auto& drawing : FindDrawings(copy).drawings) {
                if (drawing.kind != kind)
                    continue;
                ++addedDrawings;
                addedShapes += drawing.shapeCount;
                EXPECT_TRUE(drawingIds.insert(drawing.Id()).second) << book.name;
                for (const auto& shape : drawing.shapes) {
                    EXPECT_TRUE(shapes.insert(shape.value).second) << book.name;
                    ownerOfCluster[shape.value / 1024] = drawing.Id();
                }
            }
        }
    }
    if (addedDrawings == 0)
        return;
    ASSERT_TRUE(group.Changed()) << book.name;
    std::string changed;
    group.AppendTo(changed);
    const auto after = ReadTable(changed, skip);
    EXPECT_EQ(after.drawings - before.drawings, addedDrawings) << book.name;
    EXPECT_EQ(after.shapes - before.shapes, addedShapes) << book.name;
    for (const auto& [cluster, owner] : ownerOfCluster) {
        ASSERT_LE(cluster, after.clusters.size()) << book.name;
        EXPECT_EQ(after.clusters[cluster - 1].first, owner) << book.name;
    }
    for (const auto shape : shapes) {
        if (ownerOfCluster.count(shape / 1024) == 0)
            continue;
        EXPECT_LT(shape, after.highest) << book.name;
        EXPECT_LT(shape % 1024, after.clusters[shape / 1024 - 1].second) << book.name;
    }
}

TEST_F(DrawingCorpusTest, CopiesHaveIdsOfTheirOwn)
{
    for (const auto& book : books_) {
        CheckCopies(book, DrawingKind::Sheet, book.group, 11);
        CheckCopies(book, DrawingKind::HeaderFooter, book.headerGroup, 11);
    }
}

TEST_F(DrawingCorpusTest, FindsTheObjectsThatOwnStorages)
{
    std::map<std::string, std::pair<std::size_t, std::size_t>> found;
    for (const auto& book : books_) {
        for (const auto& sheet : book.sheets) {
            const auto places = FindEmbedded(sheet);
            if (places.Empty())
                continue;
            found[book.name].first += places.objects.size();
            found[book.name].second += places.controls.size();
        }
    }
    const std::map<std::string, std::pair<std::size_t, std::size_t>> expected{
        {"poi-45538_form_Footer.xls", {0, 40}},
        {"poi-45538_form_Header.xls", {0, 40}},
        {"poi-46515.xls", {0, 1}},
        {"poi-WithEmbeddedObjects.xls", {2, 0}},
        {"poi-excel_with_embeded.xls", {6, 0}},
        {"tika-coffee.xls", {3, 0}},
        {"tika-testExcel_embeddedPDF.xls", {1, 0}}};
    EXPECT_EQ(found, expected);
}

TEST_F(DrawingCorpusTest, FindsTheTable)
{
    for (const auto& book : books_) {
        std::vector<std::string> names;
        for (const auto& sheet : book.sheets)
            for (const auto& table : FindTables(sheet).names)
                names.push_back(table.name);
        EXPECT_EQ(names, book.name == "poi-46137.xls" ? std::vector<std::string>{"Table1"}
                                                      : std::vector<std::string>{})
            << book.name;
    }
}

/// Copies a sheet with random changes in its bytes.
void CopyDamaged(const std::string& group, const std::string& sheet)
{
    try {
        const auto drawings = FindDrawings(sheet);
        const auto embedded = FindEmbedded(sheet);
        const auto tables = FindTables(sheet);
        auto copy = sheet;
        TextPatch patch;
        TableIdentities identities({});
        identities.Reserve(tables);
        PutTables(copy, patch, tables, identities.AddCopy(tables));
        EmbeddedCopies copies({"MBD00000001"}, {}, std::string(4000, 'c'));
        PutEmbedding(copy, embedded, copies.AddCopy(embedded));
        DrawingGroup changed(DrawingKind::Sheet, group);
        changed.Reserve(drawings);
        PutDrawingIds(copy, drawings, changed.AddCopy(drawings));
        std::string records;
        changed.AppendTo(records);
        EXPECT_LE(records.size(), group.size() + 2 * sheet.size() + 100'000);
        EXPECT_EQ(copy.size(), sheet.size());
        patch.Apply(copy);
    }
    catch (const util::Error& error) {
        EXPECT_TRUE(error.Kind() == book::ErrorKind::DamagedWorkbook ||
                    error.Kind() == book::ErrorKind::SheetNotCopied);
    }
}

/// The offsets of the data of records that contain drawings, objects and tables.
std::vector<std::size_t> InterestingBytes(const std::string& sheet)
{
    std::vector<std::size_t> bytes;
    RecordReader reader(sheet);
    while (const auto record = reader.Next()) {
        const bool isInteresting =
            record->type == RecordType::MsoDrawing || record->type == RecordType::Obj ||
            record->type == RecordType::TextObject || record->type == RecordType::Continue ||
            record->type == RecordType::Feature11 || record->type == RecordType::List12 ||
            record->type == RecordType::HeaderFooterPicture;
        const std::size_t end = record->begin + std::min<std::size_t>(record->data.size() + 4, 120);
        for (std::size_t at = record->begin; isInteresting && at < end; ++at)
            bytes.push_back(at);
    }
    return bytes;
}

TEST_F(DrawingCorpusTest, ChangedBytesDoNoHarm)
{
    std::mt19937 random(20261121);
    for (const auto& book : books_) {
        for (const auto& sheet : book.sheets) {
            const auto bytes = InterestingBytes(sheet);
            if (bytes.empty() || sheet.size() > 200'000)
                continue;
            for (int round = 0; round < 20; ++round) {
                auto damaged = sheet;
                for (int i = 0; i < 3; ++i)
                    damaged[bytes[random() % bytes.size()]] = static_cast<char>(random());
                CopyDamaged(book.group, damaged);
                auto group = book.group;
                for (int i = 0; i < 3 && !group.empty(); ++i)
                    group[4 + random() % std::min<std::size_t>(group.size() - 4, 200)] =
                        static_cast<char>(random());
                CopyDamaged(group, sheet);
            }
        }
    }
}

} // namespace
} // namespace orrery::xls
