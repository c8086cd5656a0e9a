#include "engines/builtin/xls/look/chart/chart_reader.h"

#include "engines/builtin/xls/look/chart/chart_parts.h"

#include "xls/look/test_styles.h"
#include "xls/stream_builder.h"

#include <bit>
#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;
using namespace std::string_literals;
using book::Color;

std::string ChartRecordOf(ChartRecord type, std::string_view data)
{
    return RecordOf(static_cast<RecordType>(type), data);
}

/// A record with its parts.
std::string PartOf(ChartRecord type, std::string_view data, std::string_view parts)
{
    return ChartRecordOf(type, data) + ChartRecordOf(ChartRecord::Begin, {}) + std::string(parts) +
           ChartRecordOf(ChartRecord::End, {});
}

/// A reference to A1:A3 of the first sheet; `kind` as in the format.
std::string ReferenceOf(char kind, std::uint16_t format = 0)
{
    return ChartRecordOf(ChartRecord::Reference, std::string{kind, 2} + Numbers({0, format, 11}) +
                                                     "\x3B" + Numbers({0, 0, 2, 0, 0}));
}

std::string TextRecordOf(std::string_view text)
{
    std::string data = Numbers({0});
    AppendShortUnicodeString(data, text);
    return ChartRecordOf(ChartRecord::SeriesText, data);
}

std::string SeriesOf(std::string_view name, std::uint16_t group = 0, std::string_view more = {})
{
    return PartOf(ChartRecord::Series, Numbers({1, 1, 3, 3, 1, 0}),
                  ChartRecordOf(ChartRecord::Reference, "\0\1"s + Numbers({0, 0, 0})) +
                      TextRecordOf(name) + ReferenceOf(1, 7) + ReferenceOf(2) + std::string(more) +
                      ChartRecordOf(ChartRecord::SeriesToGroup, Numbers({group})));
}

std::string AreaOf(std::string_view rgb, std::uint16_t pattern = 1, std::uint16_t flags = 0)
{
    return ChartRecordOf(ChartRecord::AreaFormat,
                         std::string(rgb) + "\0\0\0\0\0"s + Numbers({pattern, flags, 0, 0}));
}

std::string LineOf(std::string_view rgb, std::uint16_t style = 0, std::uint16_t flags = 0)
{
    return ChartRecordOf(ChartRecord::LineFormat,
                         std::string(rgb) + "\0"s + Numbers({style, 1, flags, 0}));
}

std::string LookOf(std::uint16_t point, std::string_view formats)
{
    return PartOf(ChartRecord::DataFormat, Numbers({point, 0, 3, 0}), formats);
}

std::string GroupOf(std::string_view kind, std::uint16_t flags = 0)
{
    return PartOf(ChartRecord::ChartFormat, std::string(16, '\0') + Numbers({flags, 0}), kind);
}

std::string BarOf(std::int16_t overlap, std::uint16_t gap, std::uint16_t flags)
{
    return ChartRecordOf(ChartRecord::Bar,
                         Numbers({static_cast<std::uint16_t>(overlap), gap, flags}));
}

std::string AxesOf(std::uint16_t number, std::string_view parts)
{
    return PartOf(ChartRecord::AxisParent, Numbers({number}) + std::string(16, '\0'), parts);
}

std::string AxisOf(std::uint16_t type, std::string_view parts)
{
    return PartOf(ChartRecord::Axis, Numbers({type}) + std::string(16, '\0'), parts);
}

/// A text and what it belongs to.
std::string TitleOf(std::string_view parts, std::uint16_t link, std::uint16_t flags = 0)
{
    const std::string data =
        "\2\2\1\0\x0A\x0B\x0C\0"s + std::string(16, '\0') + Numbers({flags, 0, 0, 0});
    return PartOf(ChartRecord::Text, data,
                  std::string(parts) +
                      ChartRecordOf(ChartRecord::ObjectLink, Numbers({link, 0, 0})));
}

std::string NumberOf(std::uint16_t index, std::uint16_t series, double value)
{
    std::string data = Numbers({index, series, 0});
    AppendU64(data, std::bit_cast<std::uint64_t>(value));
    return RecordOf(RecordType::Number, data);
}

std::string LabelOf(std::uint16_t index, std::uint16_t series, std::string_view text)
{
    std::string data = Numbers({index, series, 0});
    AppendUnicodeString(data, text);
    return RecordOf(RecordType::Label, data);
}

class ReadChartTest : public testing::Test {
protected:
    std::shared_ptr<const book::Chart> Read(std::string_view parts)
    {
        return ReadRecords(PartOf(ChartRecord::Chart, std::string(16, '\0'), parts));
    }
    /// The same, followed by other records.
    std::shared_ptr<const book::Chart> Read(std::string_view parts, std::string_view values)
    {
        return ReadRecords(PartOf(ChartRecord::Chart, std::string(16, '\0'), parts) +
                           std::string(values));
    }
    std::shared_ptr<const book::Chart> ReadRecords(const std::string& records)
    {
        const auto chart = BofOf(0x20) + records + EofRecord();
        const auto stream = globals_ + chart;
        return ReadChart({stream, names_, styles_}, {globals_.size(), stream.size()}, budget_);
    }

    std::string globals_ = BofOf(5) + BoundSheetOf("Plan", 500) + OwnBookOf(1) +
                           ExternSheetOf({0, 0, 0}) + EofRecord();
    Globals parsed_{globals_};
    FormulaNames names_{parsed_};
    DrawingStyles styles_ = StylesForTests();
    ChartBudget budget_;
};

TEST_F(ReadChartTest, ReadsSeriesWithTheirCells)
{
    const auto chart =
        Read(SeriesOf("Sales") + AxesOf(0, GroupOf(BarOf(0, 150, 0))),
             ChartRecordOf(ChartRecord::DataIndex, Numbers({2})) + LabelOf(0, 0, "Jan") +
                 LabelOf(2, 0, "Mar") + ChartRecordOf(ChartRecord::DataIndex, Numbers({1})) +
                 NumberOf(0, 0, 1.5) + NumberOf(1, 0, -2) + NumberOf(0, 9, 7));
    ASSERT_NE(chart, nullptr);
    ASSERT_EQ(chart->groups.size(), 1U);
    EXPECT_EQ(chart->groups[0].kind, book::ChartKind::Column);
    ASSERT_EQ(chart->groups[0].series.size(), 1U);
    const book::ChartSeries& series = chart->groups[0].series[0];
    EXPECT_EQ(series.name.formula, "");
    EXPECT_EQ(series.name.cached, std::vector<book::CellContent>{"Sales"s});
    EXPECT_EQ(series.values.formula, "Plan!$A$1:$A$3");
    EXPECT_EQ(series.values.numberFormat, "format 7");
    EXPECT_EQ(series.values.cached, (std::vector<book::CellContent>{1.5, -2.0}));
    EXPECT_EQ(series.categories.formula, "Plan!$A$1:$A$3");
    EXPECT_EQ(series.categories.cached,
              (std::vector<book::CellContent>{"Jan"s, std::monostate(), "Mar"s}));
    EXPECT_EQ(series.color, (Color{24, 1, 2})) << "the first automatic colour of the palette";
}

TEST_F(ReadChartTest, KnowsTheKindsOfGroups)
{
    const auto kindOf = [&](std::string_view kind) {
        const auto chart = Read(AxesOf(0, GroupOf(kind)));
        return chart->groups.at(0);
    };
    using enum book::ChartKind;
    using enum book::Grouping;
    const auto bars = kindOf(BarOf(-100, 50, 3));
    EXPECT_EQ(bars.kind, Bar);
    EXPECT_EQ(bars.grouping, Stacked);
    EXPECT_EQ(bars.overlap, 100);
    EXPECT_EQ(bars.gapWidth, 50);
    EXPECT_EQ(kindOf(BarOf(0, 0, 6)).grouping, PercentStacked);
    EXPECT_EQ(kindOf(ChartRecordOf(ChartRecord::Line, Numbers({0}))).kind, Line);
    EXPECT_EQ(kindOf(ChartRecordOf(ChartRecord::Line, Numbers({1}))).grouping, Stacked);
    EXPECT_EQ(kindOf(ChartRecordOf(ChartRecord::Area, Numbers({3}))).grouping, PercentStacked);
    const auto pie = kindOf(ChartRecordOf(ChartRecord::Pie, Numbers({90, 0, 2})));
    EXPECT_EQ(pie.kind, Pie);
    EXPECT_EQ(pie.firstAngle, 90);
    const auto doughnut = kindOf(ChartRecordOf(ChartRecord::Pie, Numbers({0, 60, 0})));
    EXPECT_EQ(doughnut.kind, Doughnut);
    EXPECT_EQ(doughnut.holeSize, 60);
    EXPECT_EQ(kindOf(ChartRecordOf(ChartRecord::Scatter, Numbers({100, 1, 0}))).kind, Scatter);
    EXPECT_EQ(kindOf(ChartRecordOf(ChartRecord::Scatter, Numbers({100, 1, 1}))).kind, Bubble);
    EXPECT_EQ(kindOf(ChartRecordOf(ChartRecord::Radar, Numbers({0, 0}))).kind, Radar);
    EXPECT_EQ(kindOf(ChartRecordOf(ChartRecord::Surface, Numbers({0}))).kind, Surface);
    EXPECT_EQ(kindOf(ChartRecordOf(ChartRecord::Line, Numbers({0})) +
                     ChartRecordOf(ChartRecord::ConnectingLine, Numbers({1})))
                  .kind,
              Stock);
    EXPECT_EQ(kindOf({}).kind, Other);
    EXPECT_TRUE(
        Read(AxesOf(0, GroupOf(BarOf(0, 0, 0) + ChartRecordOf(ChartRecord::Chart3D, ""))))->is3D);
}

TEST_F(ReadChartTest, PutsSeriesIntoTheirGroups)
{
    const auto chart =
        Read(SeriesOf("a", 1) + SeriesOf("b", 0) +
             SeriesOf("trend", 0, ChartRecordOf(ChartRecord::SeriesParent, Numbers({1}))) +
             SeriesOf("lost", 9) + AxesOf(0, GroupOf(BarOf(0, 150, 0))) +
             AxesOf(1, GroupOf(ChartRecordOf(ChartRecord::Line, Numbers({0})))));
    ASSERT_EQ(chart->groups.size(), 2U);
    EXPECT_FALSE(chart->groups[0].usesSecondaryAxis);
    EXPECT_TRUE(chart->groups[1].usesSecondaryAxis);
    ASSERT_EQ(chart->groups[0].series.size(), 1U);
    EXPECT_EQ(chart->groups[0].series[0].name.cached, std::vector<book::CellContent>{"b"s});
    ASSERT_EQ(chart->groups[1].series.size(), 1U);
    EXPECT_EQ(chart->groups[1].series[0].name.cached, std::vector<book::CellContent>{"a"s});
}

TEST_F(ReadChartTest, ReadsTheLookOfSeriesAndPoints)
{
    const auto chart =
        Read(SeriesOf("a", 0,
                      LookOf(0xFFFF, LineOf("\1\2\3"s, 0) + AreaOf("\x10\x20\x30") +
                                         ChartRecordOf(ChartRecord::AttachedLabel, Numbers({1}))) +
                          LookOf(2, AreaOf("\x40\x50\x60"))) +
             SeriesOf("b", 0, LookOf(0xFFFF, LineOf("\1\2\3"s, 5) + AreaOf("\1\2\3", 0))) +
             SeriesOf("c", 0, LookOf(0xFFFF, AreaOf("\1\2\3", 0, 1))) +
             AxesOf(0, GroupOf(BarOf(0, 150, 0))));
    const auto& series = chart->groups[0].series;
    ASSERT_EQ(series.size(), 3U);
    EXPECT_EQ(series[0].color, (Color{0x10, 0x20, 0x30}));
    EXPECT_EQ(series[0].outline.color, (Color{1, 2, 3}));
    EXPECT_EQ(series[0].outline.width, 1.5);
    EXPECT_TRUE(series[0].hasLabels);
    ASSERT_EQ(series[0].points.size(), 1U);
    EXPECT_EQ(series[0].points[0].index, 2);
    EXPECT_EQ(series[0].points[0].color, (Color{0x40, 0x50, 0x60}));
    EXPECT_FALSE(series[1].hasFill);
    EXPECT_FALSE(series[1].outline.isVisible);
    EXPECT_EQ(series[2].color, (Color{27, 1, 2})) << "the fourth automatic colour, as it says";
}

TEST_F(ReadChartTest, ReadsTheLookOfLines)
{
    const auto line = ChartRecordOf(ChartRecord::Line, Numbers({0}));
    const auto noMarker = ChartRecordOf(ChartRecord::MarkerFormat,
                                        std::string(8, '\0') + Numbers({0, 0, 0, 0, 0, 0}));
    const auto chart =
        Read(SeriesOf("a", 0,
                      LookOf(0xFFFF, LineOf("\1\2\3"s) +
                                         ChartRecordOf(ChartRecord::SeriesFormat, Numbers({1})))) +
             SeriesOf("b") + AxesOf(0, GroupOf(line + LookOf(0, noMarker))));
    const auto& series = chart->groups[0].series;
    EXPECT_EQ(series[0].color, (Color{1, 2, 3}));
    EXPECT_TRUE(series[0].isSmooth);
    EXPECT_FALSE(series[0].hasMarkers) << "those of the group";
    EXPECT_FALSE(series[0].hasFill);
    EXPECT_EQ(series[1].color, (Color{33, 1, 2})) << "the second automatic colour of lines";
    EXPECT_TRUE(Read(SeriesOf("a") + AxesOf(0, GroupOf(line)))->groups[0].series[0].hasMarkers);
}

TEST_F(ReadChartTest, LeavesTheColorsOfPiesToTheirPoints)
{
    const auto chart = Read(
        SeriesOf("a") + AxesOf(0, GroupOf(ChartRecordOf(ChartRecord::Pie, Numbers({0, 0, 0})), 1)));
    EXPECT_TRUE(chart->groups[0].variesColors);
    EXPECT_EQ(chart->groups[0].series[0].color, std::nullopt);
    ASSERT_EQ(chart->accents.size(), 16U);
    EXPECT_EQ(chart->accents[1], (Color{25, 1, 2}));
    EXPECT_EQ(chart->accents[8], (Color{16, 1, 2}));
    EXPECT_FALSE(chart->categoryAxis.isVisible);
}

std::string ValueRangeOf(double minimum, double maximum, double major, std::uint16_t flags)
{
    std::string data;
    for (const double number : {minimum, maximum, major, 0.0, 0.0})
        AppendU64(data, std::bit_cast<std::uint64_t>(number));
    return ChartRecordOf(ChartRecord::ValueRange, data + Numbers({flags}));
}

TEST_F(ReadChartTest, ReadsAxes)
{
    const auto tick = [](char labels) {
        return ChartRecordOf(ChartRecord::Tick, "\2\0"s + labels + "\1\x0A\x0B\x0C\0"s +
                                                    std::string(16, '\0') + Numbers({0, 0, 0}));
    };
    const auto chart = Read(AxesOf(
        0,
        AxisOf(0, ChartRecordOf(ChartRecord::CategoryRange, Numbers({1, 1, 1, 5})) + tick(0)) +
            AxisOf(1, ValueRangeOf(1, 9, 2, 0x02) +
                          ChartRecordOf(ChartRecord::NumberFormat, Numbers({4})) +
                          ChartRecordOf(ChartRecord::Font, Numbers({6})) + tick(3) +
                          ChartRecordOf(ChartRecord::AxisLine, Numbers({0})) +
                          LineOf("\7\7\7"s, 5) +
                          ChartRecordOf(ChartRecord::AxisLine, Numbers({1})) + LineOf("\1\2\3"s)) +
            TitleOf(TextRecordOf("Hours"), 2) + TitleOf(TextRecordOf("Months"), 3)));
    const book::ChartAxis& category = chart->categoryAxis;
    EXPECT_TRUE(category.isVisible);
    EXPECT_TRUE(category.isReversed);
    EXPECT_FALSE(category.hasLabels);
    EXPECT_EQ(category.title->text, "Months");
    const book::ChartAxis& value = chart->valueAxis;
    EXPECT_EQ(value.minimum, 1);
    EXPECT_EQ(value.maximum, std::nullopt) << "automatic";
    EXPECT_EQ(value.majorUnit, 2);
    EXPECT_FALSE(value.isReversed);
    EXPECT_TRUE(value.hasLabels);
    EXPECT_EQ(value.numberFormat, "format 4");
    EXPECT_EQ(value.font->size, 6);
    EXPECT_EQ(value.font->color, (Color{10, 11, 12}));
    EXPECT_FALSE(value.hasLine);
    EXPECT_TRUE(value.hasMajorGridLines);
    EXPECT_EQ(value.gridColor, (Color{1, 2, 3}));
    EXPECT_EQ(value.title->text, "Hours");
    EXPECT_EQ(value.title->font, std::nullopt);
}

TEST_F(ReadChartTest, ReadsLogarithmicAxes)
{
    const auto chart = Read(AxesOf(0, AxisOf(1, ValueRangeOf(-1, 3, 1, 0x60))));
    EXPECT_TRUE(chart->valueAxis.isLogarithmic);
    EXPECT_TRUE(chart->valueAxis.isReversed);
    EXPECT_DOUBLE_EQ(*chart->valueAxis.minimum, 0.1);
    EXPECT_DOUBLE_EQ(*chart->valueAxis.maximum, 1000);
    EXPECT_EQ(chart->valueAxis.majorUnit, std::nullopt);
}

TEST_F(ReadChartTest, ReadsTheTitle)
{
    const auto own =
        Read(TitleOf(ChartRecordOf(ChartRecord::Font, Numbers({8})) + TextRecordOf("Plan"), 1));
    ASSERT_TRUE(own->title);
    EXPECT_EQ(own->title->text, "Plan");
    EXPECT_EQ(own->title->font->size, 8);
    EXPECT_EQ(own->title->font->color, (Color{10, 11, 12}));
    EXPECT_FALSE(Read(TitleOf(TextRecordOf("Plan"), 1, 0x40))->title) << "deleted";
    EXPECT_EQ(Read(TitleOf(ReferenceOf(0), 1))->title->formula, "Plan!$A$1:$A$3");
    const auto group = AxesOf(0, GroupOf(BarOf(0, 150, 0)));
    EXPECT_EQ(Read(SeriesOf("Sales") + group + TitleOf({}, 1, 0x10))->title->text, "Sales");
    EXPECT_FALSE(Read(SeriesOf("a") + SeriesOf("b") + group + TitleOf({}, 1, 0x10))->title);
}

TEST_F(ReadChartTest, ReadsFramesAndLegend)
{
    const auto frame = [](std::string_view formats) {
        return PartOf(ChartRecord::Frame, Numbers({0, 0}), formats);
    };
    std::string legend(20, '\0');
    legend[16] = 4;
    const auto chart = Read(frame(LineOf("\1\2\3"s) + AreaOf("\4\5\6")) +
                            AxesOf(0, frame(LineOf("\0\0\0"s) + AreaOf("\7\x08\x09"))) +
                            PartOf(ChartRecord::Legend, legend, frame(AreaOf("\xFF\xFF\xFF"))));
    EXPECT_EQ(chart->fill, (Color{4, 5, 6}));
    EXPECT_EQ(chart->outline.color, (Color{1, 2, 3}));
    EXPECT_EQ(chart->plotFill, (Color{7, 8, 9}));
    EXPECT_EQ(chart->legend, book::LegendPlace::Left);
    const auto bare = Read(frame(LineOf("\1\2\3"s, 5) + AreaOf("\4\5\6", 0)));
    EXPECT_EQ(bare->fill, std::nullopt);
    EXPECT_FALSE(bare->outline.isVisible);
    EXPECT_EQ(bare->legend, std::nullopt);
}

TEST_F(ReadChartTest, TellsTheSideOfALegendThatIsNotDocked)
{
    const auto placeOf = [&](const std::vector<std::uint32_t>& box) {
        std::string legend;
        for (const std::uint32_t number : box)
            AppendU32(legend, number);
        return Read(ChartRecordOf(ChartRecord::Legend, legend + "\7\1\0\0"s))->legend;
    };
    EXPECT_EQ(placeOf({1500, 3600, 1000, 200}), book::LegendPlace::Bottom);
    EXPECT_EQ(placeOf({1500, 100, 1000, 200}), book::LegendPlace::Top);
    EXPECT_EQ(placeOf({100, 1500, 300, 800}), book::LegendPlace::Left);
    EXPECT_EQ(placeOf({3500, 1500, 300, 800}), book::LegendPlace::Right);
}

TEST_F(ReadChartTest, KeepsFewValues)
{
    std::string values = ChartRecordOf(ChartRecord::DataIndex, Numbers({1}));
    std::string series;
    for (std::uint16_t i = 0; i < 20; ++i) {
        series += SeriesOf("a");
        values += NumberOf(0xFFFF, i, 1);
    }
    const auto chart = Read(series + AxesOf(0, GroupOf(BarOf(0, 150, 0))), values);
    std::size_t count = 0;
    for (const auto& one : chart->groups[0].series)
        count += one.values.cached.size();
    EXPECT_EQ(count, 3U * 65536);
}

TEST_F(ReadChartTest, ReadsWhatIsThereOfDamagedCharts)
{
    EXPECT_EQ(ReadRecords(SeriesOf("a")), nullptr) << "no chart in it";
    EXPECT_EQ(ReadChart({globals_, names_, styles_}, {}, budget_), nullptr);
    const auto chart =
        Read(SeriesOf("a") + ChartRecordOf(ChartRecord::Legend, "x") +
             AxesOf(0, GroupOf(BarOf(0, 150, 0))) + ChartRecordOf(ChartRecord::End, {}) +
             ChartRecordOf(ChartRecord::End, {}));
    ASSERT_NE(chart, nullptr);
    EXPECT_EQ(chart->groups.size(), 1U);
    EXPECT_EQ(chart->legend, std::nullopt);
}

} // namespace
} // namespace orrery::xls
