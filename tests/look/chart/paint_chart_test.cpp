#include "look/chart/paint_chart.h"
#include "painter/recording_canvas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orrery::look {
namespace {

using testing::SizeIs;

/// Keeps the calls as values.
class ChartCanvas : public RecordingCanvas {
public:
    struct Filled {
        Box box;
        book::Color color;
    };
    struct Drawn {
        Path path;
        std::optional<book::Color> fill;
        bool hasPen = false;
    };
    struct Written {
        Point at;
        std::string text;
        double width = 0;
    };

    void FillBox(const Box& box, const Brush& brush) override
    {
        filled.push_back({box, brush.fill.foreground.value_or(book::kWhite)});
    }
    void DrawLine(Point from, Point to, const Pen& pen) override
    {
        lineEnds.emplace_back(from, to);
        RecordingCanvas::DrawLine(from, to, pen);
    }
    void DrawPath(const Path& path, const std::optional<Brush>& fill,
                  const std::optional<Pen>& pen) override
    {
        drawn.push_back({path, fill ? fill->fill.foreground : std::nullopt, pen.has_value()});
    }
    void DrawText(Point at, std::string_view text, const TextStyle&, double width) override
    {
        written.push_back({at, std::string(text), width});
    }

    const Written* FindText(const std::string& text) const
    {
        for (const Written& one : written) {
            if (one.text == text)
                return &one;
        }
        return nullptr;
    }
    std::vector<Box> BoxesOf(book::Color color) const
    {
        std::vector<Box> boxes;
        for (const Filled& one : filled) {
            if (one.color == color)
                boxes.push_back(one.box);
        }
        return boxes;
    }
    std::vector<Path> PathsOf(book::Color color) const
    {
        std::vector<Path> paths;
        for (const Drawn& one : drawn) {
            if (one.fill == color)
                paths.push_back(one.path);
        }
        return paths;
    }

    std::vector<Filled> filled;
    std::vector<Drawn> drawn;
    std::vector<Written> written;
    std::vector<std::pair<Point, Point>> lineEnds;
};

const Box kBox{100, 50, 480, 288};
const book::Color kFirst{0x11, 0x22, 0x33};
const book::Color kSecond{0x44, 0x55, 0x66};

book::ChartSeries Series(const std::string& name, const std::vector<double>& values,
                         book::Color color)
{
    book::ChartSeries series;
    series.name.cached = {name};
    for (const double value : values)
        series.values.cached.emplace_back(value);
    series.color = color;
    series.outline.isVisible = false;
    return series;
}

book::Chart ChartOf(book::ChartKind kind, std::vector<book::ChartSeries> series)
{
    book::Chart chart;
    book::ChartGroup group;
    group.kind = kind;
    for (book::ChartSeries& one : series) {
        one.outline.isVisible = kind == book::ChartKind::Line || kind == book::ChartKind::Scatter;
        one.categories.cached = {std::string("Mo"), std::string("Tu")};
        group.series.push_back(std::move(one));
    }
    chart.groups.push_back(std::move(group));
    chart.fill = book::kWhite;
    return chart;
}

ChartCanvas Painted(const book::Chart& chart, const Box& box = kBox)
{
    ChartCanvas canvas;
    PaintChart(chart, box, canvas, EvenMeasure(), CachedChartValues());
    return canvas;
}

bool IsInside(const Box& inner, const Box& outer)
{
    return inner.x >= outer.x && inner.y >= outer.y && inner.Right() <= outer.Right() &&
           inner.Bottom() <= outer.Bottom();
}

TEST(PaintChart, ColumnOfTenIsTwiceAsHighAsThatOfFive)
{
    const ChartCanvas canvas =
        Painted(ChartOf(book::ChartKind::Column, {Series("a", {5, 10}, kFirst)}));
    const auto columns = canvas.BoxesOf(kFirst);
    ASSERT_THAT(columns, SizeIs(2));
    EXPECT_NEAR(columns[1].height, 2 * columns[0].height, 1e-9);
    EXPECT_NEAR(columns[0].Bottom(), columns[1].Bottom(), 1e-9);
    EXPECT_NEAR(columns[0].width, columns[1].width, 1e-9);
    EXPECT_LT(columns[0].Right(), columns[1].x);
    EXPECT_TRUE(IsInside(columns[1], kBox));
}

TEST(PaintChart, GapIsInPercentOfAColumn)
{
    book::Chart chart = ChartOf(book::ChartKind::Column, {Series("a", {5, 5}, kFirst)});
    chart.groups[0].gapWidth = 100;
    const auto columns = Painted(chart).BoxesOf(kFirst);
    ASSERT_THAT(columns, SizeIs(2));
    EXPECT_NEAR(columns[1].x - columns[0].Right(), columns[0].width, 1e-9);
}

TEST(PaintChart, ColumnsOfACategoryStandSideBySide)
{
    const ChartCanvas canvas = Painted(ChartOf(
        book::ChartKind::Column, {Series("a", {5, 5}, kFirst), Series("b", {5, 5}, kSecond)}));
    const auto first = canvas.BoxesOf(kFirst);
    const auto second = canvas.BoxesOf(kSecond);
    ASSERT_THAT(second, SizeIs(2));
    EXPECT_NEAR(first[0].Right(), second[0].x, 1e-9);
}

TEST(PaintChart, StackedColumnsStandOnEachOther)
{
    book::Chart chart = ChartOf(book::ChartKind::Column,
                                {Series("a", {5, -5}, kFirst), Series("b", {10, 10}, kSecond)});
    chart.groups[0].grouping = book::Grouping::Stacked;
    const ChartCanvas canvas = Painted(chart);
    const auto first = canvas.BoxesOf(kFirst);
    const auto second = canvas.BoxesOf(kSecond);
    ASSERT_THAT(second, SizeIs(2));
    EXPECT_NEAR(first[0].y, second[0].Bottom(), 1e-9);
    EXPECT_NEAR(first[0].x, second[0].x, 1e-9);
    EXPECT_NEAR(second[0].height, 2 * first[0].height, 1e-9);
    EXPECT_NEAR(first[1].y, second[1].Bottom(), 1e-9) << "the negative one hangs below zero";
}

TEST(PaintChart, PercentColumnsAreAllOfOneHeight)
{
    book::Chart chart = ChartOf(book::ChartKind::Column,
                                {Series("a", {1, 30}, kFirst), Series("b", {3, 10}, kSecond)});
    chart.groups[0].grouping = book::Grouping::PercentStacked;
    const ChartCanvas canvas = Painted(chart);
    const auto first = canvas.BoxesOf(kFirst);
    const auto second = canvas.BoxesOf(kSecond);
    ASSERT_THAT(second, SizeIs(2));
    EXPECT_NEAR(3 * first[0].height, second[0].height, 1e-9);
    EXPECT_NEAR(second[0].y, second[1].y, 1e-9);
    EXPECT_NEAR(first[0].height + second[0].height, first[1].height + second[1].height, 1e-9);
}

TEST(PaintChart, NegativeColumnHangsFromZero)
{
    const auto columns =
        Painted(ChartOf(book::ChartKind::Column, {Series("a", {-5, 10}, kFirst)})).BoxesOf(kFirst);
    ASSERT_THAT(columns, SizeIs(2));
    EXPECT_NEAR(columns[0].y, columns[1].Bottom(), 1e-9);
    EXPECT_NEAR(columns[1].height, 2 * columns[0].height, 1e-9);
}

TEST(PaintChart, BarsGrowToTheRightFromTheFirstAtTheBottom)
{
    const auto bars =
        Painted(ChartOf(book::ChartKind::Bar, {Series("a", {5, 10}, kFirst)})).BoxesOf(kFirst);
    ASSERT_THAT(bars, SizeIs(2));
    EXPECT_NEAR(bars[1].width, 2 * bars[0].width, 1e-9);
    EXPECT_NEAR(bars[0].x, bars[1].x, 1e-9);
    EXPECT_GT(bars[0].y, bars[1].Bottom());
}

TEST(PaintChart, ReversedCategoriesGoFromRightToLeft)
{
    book::Chart chart = ChartOf(book::ChartKind::Column, {Series("a", {5, 10}, kFirst)});
    chart.categoryAxis.isReversed = true;
    const auto columns = Painted(chart).BoxesOf(kFirst);
    ASSERT_THAT(columns, SizeIs(2));
    EXPECT_GT(columns[0].x, columns[1].Right());
}

TEST(PaintChart, AxisHasLabelsBesideItsValues)
{
    book::Chart chart = ChartOf(book::ChartKind::Column, {Series("a", {5, 9}, kFirst)});
    chart.valueAxis.hasMajorGridLines = true;
    const ChartCanvas canvas = Painted(chart);
    const auto* ten = canvas.FindText("10");
    const auto* zero = canvas.FindText("0");
    ASSERT_TRUE(ten != nullptr && zero != nullptr);
    const auto columns = canvas.BoxesOf(kFirst);
    // Baselines are as far below the middle of each label.
    EXPECT_NEAR(columns[1].height / (zero->at.y - ten->at.y), 0.9, 1e-9);
    EXPECT_NE(canvas.FindText("Mo"), nullptr);
    EXPECT_GT(canvas.FindText("Mo")->at.y, columns[0].Bottom());
    for (const auto& [from, to] : canvas.lineEnds) {
        EXPECT_TRUE(from.x == to.x || from.y == to.y);
        EXPECT_TRUE(kBox.Contains(from));
    }
}

TEST(PaintChart, DeletedAxesGiveTheirRoomToThePlot)
{
    book::Chart chart = ChartOf(book::ChartKind::Column, {Series("a", {5, 9}, kFirst)});
    const double narrow = Painted(chart).BoxesOf(kFirst)[0].width;
    chart.valueAxis.isVisible = false;
    chart.categoryAxis.isVisible = false;
    const ChartCanvas canvas = Painted(chart);
    EXPECT_THAT(canvas.written, SizeIs(0));
    EXPECT_THAT(canvas.lineEnds, SizeIs(0));
    EXPECT_GT(canvas.BoxesOf(kFirst)[0].width, narrow);
}

TEST(PaintChart, LegendStandsAtItsPlace)
{
    book::Chart chart = ChartOf(book::ChartKind::Column, {Series("Apples", {5, 9}, kFirst)});
    chart.title = book::ChartText{"Harvest", {}, {}};
    for (const auto place : {book::LegendPlace::Right, book::LegendPlace::Left,
                             book::LegendPlace::Top, book::LegendPlace::Bottom}) {
        chart.legend = place;
        const ChartCanvas canvas = Painted(chart);
        const auto* name = canvas.FindText("Apples");
        const auto* title = canvas.FindText("Harvest");
        ASSERT_TRUE(name != nullptr && title != nullptr);
        EXPECT_NEAR(title->at.x + title->width / 2, kBox.Middle().x, 1e-9);
        const auto boxes = canvas.BoxesOf(kFirst); // two columns and the sample
        ASSERT_THAT(boxes, SizeIs(3));
        EXPECT_NEAR(boxes[2].Right() + 5, name->at.x, 1e-9);
        if (place == book::LegendPlace::Right) {
            EXPECT_GT(boxes[2].x, boxes[1].Right());
        }
        if (place == book::LegendPlace::Left) {
            EXPECT_LT(name->at.x + name->width, boxes[0].x);
        }
        if (place == book::LegendPlace::Top) {
            EXPECT_LT(boxes[2].Bottom(), boxes[1].y);
        }
        if (place == book::LegendPlace::Bottom) {
            EXPECT_GT(boxes[2].y, boxes[0].Bottom());
        }
    }
}

TEST(PaintChart, LineGoesThroughItsPointsAndBreaksAtMissingOnes)
{
    book::Chart chart = ChartOf(book::ChartKind::Line, {Series("a", {0, 10, 5, 5, 0}, kFirst)});
    chart.groups[0].series[0].values.cached[2] = std::monostate();
    const ChartCanvas canvas = Painted(chart);
    std::vector<Path> lines;
    for (const auto& drawn : canvas.drawn) {
        if (drawn.hasPen && drawn.path.size() == 2)
            lines.push_back(drawn.path);
    }
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_GT(lines[0][0].point.y, lines[0][1].point.y) << "from 0 up to 10";
    const double full = lines[0][0].point.y - lines[0][1].point.y;
    EXPECT_NEAR(lines[1][1].point.y - lines[1][0].point.y, full / 2, 1e-9);
    EXPECT_NEAR(lines[1][0].point.x - lines[0][1].point.x,
                2 * (lines[0][1].point.x - lines[0][0].point.x), 1e-9);
}

TEST(PaintChart, ScatterHasItsOwnX)
{
    book::Chart chart = ChartOf(book::ChartKind::Scatter, {Series("a", {0, 10, 0}, kFirst)});
    chart.groups[0].series[0].categories.cached = {1.0, 2.0, 4.0};
    const ChartCanvas canvas = Painted(chart);
    const auto line = std::find_if(canvas.drawn.begin(), canvas.drawn.end(),
                                   [](const auto& drawn) { return drawn.path.size() == 3; });
    ASSERT_NE(line, canvas.drawn.end());
    EXPECT_NEAR(line->path[2].point.x - line->path[1].point.x,
                2 * (line->path[1].point.x - line->path[0].point.x), 1e-9);
}

TEST(PaintChart, AreaReachesTheEdgesOfThePlot)
{
    book::Chart chart = ChartOf(book::ChartKind::Area, {Series("a", {10, 5}, kFirst)});
    chart.plotPlace = book::ShareBox{0.25, 0.25, 0.75, 0.75};
    const auto areas = Painted(chart).PathsOf(kFirst);
    ASSERT_THAT(areas, SizeIs(1));
    EXPECT_NEAR(areas[0][0].point.x, kBox.x + kBox.width / 4, 1e-9);
    EXPECT_NEAR(areas[0][1].point.x, kBox.x + kBox.width * 3 / 4, 1e-9);
    EXPECT_NEAR(areas[0][2].point.y, kBox.y + kBox.height * 3 / 4, 1e-9);
}

/// The angle of a point around another one, clockwise from the top, in degrees.
double AngleOf(Point middle, Point point)
{
    const double angle =
        std::atan2(point.x - middle.x, middle.y - point.y) * 180 / 3.14159265358979;
    return angle < 0 ? angle + 360 : angle;
}

TEST(PaintChart, PieSlicesAreSharesOfTheCircle)
{
    book::Chart chart = ChartOf(book::ChartKind::Pie, {Series("a", {1, 3}, kFirst)});
    chart.groups[0].series[0].points = {{1, kSecond}};
    chart.groups[0].series[0].hasPercents = true;
    const ChartCanvas canvas = Painted(chart);
    const auto quarter = canvas.PathsOf(kFirst);
    const auto rest = canvas.PathsOf(kSecond);
    ASSERT_TRUE(quarter.size() == 1 && rest.size() == 1);
    const Point middle = quarter[0][0].point;
    EXPECT_NEAR(AngleOf(middle, quarter[0][1].point), 0, 1e-9) << "from the top";
    EXPECT_NEAR(AngleOf(middle, quarter[0][2].point), 90, 1e-9) << "clockwise";
    EXPECT_NEAR(AngleOf(middle, rest[0][1].point), 90, 1e-9);
    const PathStep& last = rest[0][rest[0].size() - 2];
    EXPECT_NEAR(std::sin(AngleOf(middle, last.point) * 3.14159265358979 / 180), 0, 1e-6);
    EXPECT_NE(canvas.FindText("25%"), nullptr);
    EXPECT_NE(canvas.FindText("75%"), nullptr);
}

TEST(PaintChart, PointsOfAPieHaveTheAccentsInTheirOrder)
{
    book::Chart chart = ChartOf(book::ChartKind::Pie, {Series("a", {1, 1, 1}, kFirst)});
    chart.groups[0].series[0].color.reset();
    chart.groups[0].variesColors = true;
    chart.accents = {{10, 10, 10}, {100, 100, 100}};
    chart.legend = book::LegendPlace::Right;
    const ChartCanvas canvas = Painted(chart);
    EXPECT_THAT(canvas.PathsOf({10, 10, 10}), SizeIs(1));
    EXPECT_THAT(canvas.PathsOf({100, 100, 100}), SizeIs(1));
    EXPECT_THAT(canvas.PathsOf({6, 6, 6}), SizeIs(1)) << "again the first, darker by two fifths";
    EXPECT_NE(canvas.FindText("Mo"), nullptr) << "the legend names the points";
    EXPECT_THAT(canvas.BoxesOf({10, 10, 10}), SizeIs(1));
}

TEST(PaintChart, DoughnutHasAHole)
{
    book::Chart chart = ChartOf(book::ChartKind::Doughnut, {Series("a", {1, 1}, kFirst)});
    chart.groups[0].holeSize = 50;
    const auto slices = Painted(chart).PathsOf(kFirst);
    ASSERT_THAT(slices, SizeIs(2));
    const double outer = slices[0][1].point.y;
    const double inner = slices[0][0].point.y;
    const double bottom = slices[1][1].point.y; // the second slice begins at the bottom
    EXPECT_NEAR(2 * (inner - outer), (bottom - outer) / 2, 1e-6);
}

TEST(PaintChart, SecondaryAxisHasAScaleOfItsOwn)
{
    book::Chart chart = ChartOf(book::ChartKind::Column, {Series("a", {9, 9}, kFirst)});
    book::Chart other = ChartOf(book::ChartKind::Column, {Series("b", {900, 900}, kSecond)});
    chart.groups.push_back(other.groups[0]);
    chart.groups[1].usesSecondaryAxis = true;
    chart.secondaryAxis = book::ChartAxis();
    const ChartCanvas canvas = Painted(chart);
    EXPECT_NEAR(canvas.BoxesOf(kFirst)[0].height, canvas.BoxesOf(kSecond)[0].height, 1e-9);
    ASSERT_TRUE(canvas.FindText("1000") != nullptr);
    EXPECT_GT(canvas.FindText("1000")->at.x, canvas.BoxesOf(kSecond)[1].Right());
    EXPECT_LT(canvas.FindText("10")->at.x, canvas.BoxesOf(kFirst)[0].x);
}

TEST(PaintChart, LabelsStandAboveTheirColumns)
{
    book::Chart chart = ChartOf(book::ChartKind::Column, {Series("a", {3.25}, kFirst)});
    chart.groups[0].series[0].hasLabels = true;
    const ChartCanvas canvas = Painted(chart);
    const auto* label = canvas.FindText("3.25");
    ASSERT_NE(label, nullptr);
    const Box column = canvas.BoxesOf(kFirst)[0];
    EXPECT_LT(label->at.y, column.y);
    EXPECT_NEAR(label->at.x + label->width / 2, column.Middle().x, 1e-9);
}

TEST(PaintChart, LongLabelsStandUpright)
{
    book::Chart chart = ChartOf(book::ChartKind::Column, {Series("a", {3, 4}, kFirst)});
    chart.groups[0].series[0].categories.cached = {std::string(60, 'x'), std::string("short")};
    const ChartCanvas canvas = Painted(chart);
    EXPECT_EQ(canvas.All("rotate").size(), 2U);
}

TEST(PaintChart, StockLinesGoFromLowestToHighest)
{
    book::Chart chart = ChartOf(book::ChartKind::Stock,
                                {Series("high", {9, 8}, kFirst), Series("low", {3, 4}, kFirst),
                                 Series("close", {6, 5}, kFirst)});
    chart.categoryAxis.isVisible = false;
    chart.valueAxis.isVisible = false;
    const auto lines = Painted(chart).lineEnds;
    ASSERT_THAT(lines, SizeIs(4));
    const double first = lines[0].first.y - lines[0].second.y;
    EXPECT_EQ(lines[0].first.x, lines[0].second.x);
    EXPECT_NEAR(lines[2].first.y - lines[2].second.y, first * 4 / 6, 1e-9);
    EXPECT_NEAR(lines[1].first.y, lines[0].second.y + first / 2, 1e-9) << "closed in the middle";
    EXPECT_GT(lines[1].second.x, lines[1].first.x);
}

TEST(PaintChart, LegendBesideBarsGoesUpwardsAsTheyDo)
{
    book::Chart chart =
        ChartOf(book::ChartKind::Bar, {Series("a", {5, 9}, kFirst), Series("b", {5, 9}, kSecond)});
    chart.legend = book::LegendPlace::Right;
    const ChartCanvas canvas = Painted(chart);
    EXPECT_GT(canvas.BoxesOf(kFirst)[0].y, canvas.BoxesOf(kSecond)[0].y) << "the bars";
    EXPECT_GT(canvas.FindText("a")->at.y, canvas.FindText("b")->at.y) << "the names";
}

TEST(PaintChart, ReversedBarsHaveTheirValuesAbove)
{
    book::Chart chart = ChartOf(book::ChartKind::Bar, {Series("a", {5, 9}, kFirst)});
    chart.categoryAxis.isReversed = true;
    const ChartCanvas canvas = Painted(chart);
    const auto bars = canvas.BoxesOf(kFirst);
    ASSERT_TRUE(bars.size() == 2 && canvas.FindText("10") != nullptr);
    EXPECT_LT(bars[0].y, bars[1].y);
    EXPECT_LT(canvas.FindText("10")->at.y, bars[0].y);
    EXPECT_GT(canvas.FindText("10")->at.y, kBox.y);
}

TEST(PaintChart, CrowdedCategoriesHaveFewerLabels)
{
    book::Chart chart =
        ChartOf(book::ChartKind::Bar, {Series("a", std::vector<double>(100, 5), kFirst)});
    chart.valueAxis.isVisible = false;
    chart.groups[0].series[0].categories.cached.assign(100, std::string("name"));
    const std::size_t labels = Painted(chart).written.size();
    EXPECT_LT(labels, 26U) << "100 lines of 16 pixels would need 1600 of 288";
    EXPECT_GT(labels, 8U);
}

TEST(PaintChart, OtherKindsAreNamed)
{
    book::Chart chart = ChartOf(book::ChartKind::Radar, {Series("a", {3, 4}, kFirst)});
    chart.title = book::ChartText{"Skills", {}, {}};
    const ChartCanvas canvas = Painted(chart);
    EXPECT_NE(canvas.FindText("Skills"), nullptr);
    EXPECT_NE(canvas.FindText("Radar chart"), nullptr);
    chart.groups[0].kind = book::ChartKind::Other;
    chart.kindName = "waterfall";
    EXPECT_NE(Painted(chart).FindText("Chart: waterfall"), nullptr);
}

class HostileChartTest : public testing::TestWithParam<book::ChartKind> {};

TEST_P(HostileChartTest, EndsQuicklyAndDrawsLittle)
{
    const double infinite = std::numeric_limits<double>::infinity();
    const auto paint = [](const std::vector<double>& values, const Box& box) {
        book::Chart chart = ChartOf(GetParam(), {Series("a", values, kFirst)});
        chart.legend = book::LegendPlace::Bottom;
        chart.title = book::ChartText{std::string(5000, 'w'), {}, {}};
        const ChartCanvas canvas = Painted(chart, box);
        EXPECT_LE(canvas.filled.size() + canvas.drawn.size(), 45000U);
    };
    for (const auto& values :
         {std::vector<double>{}, std::vector<double>{0}, std::vector<double>{infinite, -infinite},
          std::vector<double>{std::nan(""), 1e308, -1e308}}) {
        for (const Box& box : {kBox, Box{0, 0, 0, 0}, Box{0, 0, 9, 9}, Box{0, 0, -5, 100}})
            paint(values, box);
    }
    paint(std::vector<double>(300000, 1), kBox);
}

INSTANTIATE_TEST_SUITE_P(Kinds, HostileChartTest,
                         testing::Values(book::ChartKind::Column, book::ChartKind::Bar,
                                         book::ChartKind::Line, book::ChartKind::Area,
                                         book::ChartKind::Pie, book::ChartKind::Doughnut,
                                         book::ChartKind::Scatter, book::ChartKind::Other));

TEST(PaintChart, ChartWithoutGroupsIsAFrame)
{
    book::Chart chart;
    chart.fill = kFirst;
    EXPECT_THAT(Painted(chart).BoxesOf(kFirst), testing::ElementsAre(kBox));
}

} // namespace
} // namespace orrery::look
