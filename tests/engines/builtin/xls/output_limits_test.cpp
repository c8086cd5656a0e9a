#include "book/error.h"
#include "engines/builtin/xls/drawing/embedded_objects.h"
#include "engines/builtin/xls/workbook.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/paths.h"
#include "xls/art_builder.h"
#include "xls/built_workbook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;
using testing::HasSubstr;

EmbeddedPlaces PlacesOf(const std::vector<std::uint32_t>& storages,
                        const std::vector<std::pair<std::uint32_t, std::uint32_t>>& controls)
{
    EmbeddedPlaces places;
    for (const auto number : storages)
        places.objects.push_back({0, number});
    for (const auto& [begin, size] : controls)
        places.controls.push_back({0, begin, size});
    return places;
}

TEST(XlsEmbeddedCopiesTest, ObjectsThatShareDataShareTheirCopy)
{
    EmbeddedCopies copies({"MBD00000001"}, {}, "abcdefg");
    const auto places = PlacesOf({1, 1}, {{2, 3}, {2, 3}, {2, 4}});
    const auto first = copies.AddCopy(places);
    EXPECT_EQ(first.objects, (std::vector<std::uint32_t>{2, 2}));
    EXPECT_EQ(first.controls, (std::vector<std::uint32_t>{7, 7, 10}));
    EXPECT_EQ(copies.AddCopy(places).objects, (std::vector<std::uint32_t>{3, 3}));
    EXPECT_EQ(copies.Storages().size(), 2U);
    EXPECT_EQ(copies.Controls(), "abcdefgcdecdefcdecdef");
    EXPECT_EQ(copies.ControlsSize(), copies.Controls().size());
}

TEST(XlsEmbeddedCopiesTest, AStreamIsNotTakenForAStorage)
{
    EmbeddedCopies copies({}, {"MBD00000001"}, {});
    EXPECT_EQ(copies.AddCopy(PlacesOf({1}, {})).objects, (std::vector<std::uint32_t>{1}));
    EXPECT_TRUE(copies.Storages().empty());
}

/// An OBJ record of a control that has `size` bytes of "Ctls" from `begin` on.
std::string ControlOf(std::uint32_t begin, std::uint32_t size)
{
    return RecordOf(RecordType::Obj, Numbers({0x15, 0x12, 8, 1, 0, 0, 0, 0, 0, 0, 0}) +
                                         Numbers({7, 2, 0xFFFF, 8, 2, 0x31, 9, 26, 12, 5, 0, 0}) +
                                         std::string("\x02\0\0\0\0\0", 6) +
                                         LongNumbers({begin, size, 0}) + Numbers({0, 0}));
}

TEST(XlsOutputLimitTest, CopiesThatGrowBeyondItAreRefusedBeforeTheyAreWritten)
{
    constexpr std::uint32_t kSize = 1 << 20;
    std::string records;
    for (std::uint32_t i = 0; i < 300; ++i)
        records += ControlOf(i, kSize);
    const testing_support::ScratchFolder folder;
    const auto source =
        WorkbookFile(folder / "source.xls", WorkbookStream({{"Model", WorksheetOf(records)}}),
                     {Stream(u"Ctls", std::string(kSize + 300, 'c'))});
    Workbook book(source);
    auto& model = *book.FindWorksheet("Model");
    model.CopyAfter(model);
    try {
        book.SaveAs(folder / "target.xls", book::AccessMode::NoChange);
        FAIL() << "300 MiB were written";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::TooLargeOutput);
        EXPECT_EQ(error.Subject(), util::FromPath(source));
        EXPECT_THAT(util::ErrorText(error), HasSubstr("its controls would take 301 MiB"));
    }
    EXPECT_EQ(folder.Entries(), 1) << "nothing was written";
}

TEST(XlsOutputLimitTest, ControlsThatShareTheirDataStaySmall)
{
    constexpr std::uint32_t kSize = 1 << 20;
    std::string records;
    for (std::uint32_t i = 0; i < 300; ++i)
        records += ControlOf(0, kSize);
    const testing_support::ScratchFolder folder;
    const auto source =
        WorkbookFile(folder / "source.xls", WorkbookStream({{"Model", WorksheetOf(records)}}),
                     {Stream(u"Ctls", std::string(kSize, 'c'))});
    Workbook book(source);
    auto& model = *book.FindWorksheet("Model");
    model.CopyAfter(model);
    book.SaveAs(folder / "target.xls", book::AccessMode::NoChange);
    const CompoundFile saved(util::ReadFile(folder / "target.xls").value());
    EXPECT_EQ(saved.Entry(saved.Find("Ctls").value()).size, 2U * kSize);
}

} // namespace
} // namespace orrery::xls
