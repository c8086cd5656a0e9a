#include "engines/builtin/xls/look/chart/chart_reader.h"

#include "engines/builtin/xls/look/chart/chart_parser.h"
#include "util/error.h"

#include <algorithm>
#include <utility>

namespace orrery::xls {
namespace {

// Where the palette's colours for charts begin. [MS-XLS] 2.5.161
constexpr std::uint32_t kFirstFill = 24;
constexpr std::uint32_t kFirstLine = 32;
constexpr std::uint32_t kMoreFills = 16;
constexpr std::uint32_t kColors = 8;

bool IsLineKind(book::ChartKind kind)
{
    using enum book::ChartKind;
    return kind == Line || kind == Scatter || kind == Radar || kind == Stock;
}

/// Makes a chart of its parts.
class Assembly {
public:
    Assembly(ChartParts parts, const DrawingSource& source)
        : parts_(std::move(parts)), source_(source)
    {
    }

    book::Chart Make()
    {
        AddAccents();
        for (std::size_t i = 0; i < parts_.groups.size(); ++i)
            AddGroup(i);
        AddAxes();
        AddTitle();
        AddFrames();
        chart_.legend = parts_.legend;
        if (parts_.font)
            chart_.font = *parts_.font;
        return std::move(chart_);
    }

private:
    void AddAccents()
    {
        for (const std::uint32_t first : {kFirstFill, kMoreFills})
            for (std::uint32_t i = 0; i < kColors; ++i)
                if (const auto color = source_.styles.color(first + i))
                    chart_.accents.push_back(*color);
    }

    void AddGroup(std::size_t index)
    {
        const GroupPart& part = parts_.groups[index];
        book::ChartGroup group = part.group;
        if (part.isStock && group.kind == book::ChartKind::Line)
            group.kind = book::ChartKind::Stock;
        chart_.is3D |= part.is3D;
        const bool isSingle = CountOf(index) == 1;
        std::size_t count = 0; // of series before it, those of other groups too
        for (SeriesPart& series : parts_.series) {
            if (series.isAuxiliary)
                continue;
            if (series.group == index)
                group.series.push_back(SeriesOf(series, part, group, {count, isSingle}));
            ++count;
        }
        chart_.groups.push_back(std::move(group));
    }

    struct Position {
        std::size_t number = 0; // among all series
        bool isOnly = false;    // of its group
    };
    book::ChartSeries SeriesOf(SeriesPart& part, const GroupPart& groupPart,
                               const book::ChartGroup& group, const Position& position) const
    {
        const DataLook look = Completed(part.look, groupPart.look);
        book::ChartSeries series;
        series.name = std::move(part.name);
        series.values = std::move(part.values);
        series.categories = std::move(part.categories);
        series.hasLabels = look.hasLabels;
        series.hasPercents = look.hasPercents;
        series.isSmooth = look.isSmooth;
        const auto number = look.number.value_or(static_cast<std::uint16_t>(position.number));
        const bool isVaried = (group.variesColors && position.isOnly) || IsRound(group.kind);
        if (IsLineKind(group.kind))
            LookLikeLine(look, number, group.kind, series);
        else
            LookLikeArea(look, number, isVaried, series);
        for (const auto& [index, point] : part.points)
            if (const auto color = ColorOf(point, group.kind))
                series.points.push_back({index, color});
        return series;
    }

    static bool IsRound(book::ChartKind kind)
    {
        return kind == book::ChartKind::Pie || kind == book::ChartKind::Doughnut;
    }

    std::size_t CountOf(std::size_t group) const
    {
        return static_cast<std::size_t>(std::count_if(
            parts_.series.begin(), parts_.series.end(), [&](const SeriesPart& series) {
                return series.group == group && !series.isAuxiliary;
            }));
    }

    static DataLook Completed(DataLook look, const DataLook& usual)
    {
        if (!look.area)
            look.area = usual.area;
        if (!look.line)
            look.line = usual.line;
        if (!look.marker)
            look.marker = usual.marker;
        look.isSmooth |= usual.isSmooth;
        look.hasLabels |= usual.hasLabels;
        look.hasPercents |= usual.hasPercents;
        return look;
    }

    /// The colour of a point that has its own.
    static std::optional<book::Color> ColorOf(const DataLook& look, book::ChartKind kind)
    {
        if (IsLineKind(kind))
            return look.line && !look.line->isAutomatic ? look.line->outline.color : std::nullopt;
        return look.area && !look.area->isAutomatic ? std::optional(look.area->color)
                                                    : std::nullopt;
    }

    void LookLikeLine(const DataLook& look, std::uint16_t number, book::ChartKind kind,
                      book::ChartSeries& series) const
    {
        series.hasFill = false;
        series.color = source_.styles.color(kFirstLine + number % kColors);
        if (look.line) {
            series.outline = look.line->outline;
            if (!look.line->isAutomatic && look.line->outline.isVisible)
                series.color = look.line->outline.color;
        }
        series.hasMarkers = look.marker ? look.marker->isVisible : kind != book::ChartKind::Stock;
        if (!series.outline.isVisible && look.marker && !look.marker->isAutomatic)
            series.color = look.marker->color;
        series.outline.color = series.color;
    }

    void LookLikeArea(const DataLook& look, std::uint16_t number, bool isVaried,
                      book::ChartSeries& series) const
    {
        if (look.area && !look.area->isAutomatic) {
            series.hasFill = look.area->isVisible;
            series.color = look.area->color;
        }
        else if (!isVaried && !chart_.accents.empty()) {
            series.color = chart_.accents[number % chart_.accents.size()];
        }
        if (look.line) {
            series.outline = look.line->outline;
            if (look.line->isAutomatic)
                series.outline.color.reset();
        }
    }

    void AddAxes()
    {
        const auto make = [](std::optional<book::ChartAxis>& axis,
                             std::optional<book::ChartText>& title) {
            book::ChartAxis made = axis ? std::move(*axis) : book::ChartAxis();
            made.isVisible = axis.has_value();
            made.title = std::move(title);
            return made;
        };
        AxesPart& primary = parts_.axes[0];
        chart_.categoryAxis = make(primary.category, primary.categoryTitle);
        chart_.valueAxis = make(primary.value, primary.valueTitle);
        AxesPart& secondary = parts_.axes[1];
        const bool isUsed =
            std::any_of(chart_.groups.begin(), chart_.groups.end(),
                        [](const book::ChartGroup& group) { return group.usesSecondaryAxis; });
        if (isUsed && secondary.value)
            chart_.secondaryAxis = make(secondary.value, secondary.valueTitle);
    }

    /// A title without a text of its own is the name of the only series.
    void AddTitle()
    {
        if (!parts_.title)
            return;
        book::ChartText title = std::move(parts_.title->text);
        if (title.text.empty() && title.formula.empty()) {
            if (!parts_.title->isAutomatic || chart_.groups.size() != 1 ||
                chart_.groups[0].series.size() != 1)
                return;
            const book::ChartData& name = chart_.groups[0].series[0].name;
            title.formula = name.formula;
            if (!name.cached.empty())
                if (const auto* text = std::get_if<std::string>(&name.cached[0]))
                    title.text = *text;
            if (title.text.empty() && title.formula.empty())
                return;
        }
        chart_.title = std::move(title);
    }

    void AddFrames()
    {
        if (parts_.frame.area && parts_.frame.area->isVisible)
            chart_.fill = parts_.frame.area->color;
        if (parts_.plot.area && parts_.plot.area->isVisible)
            chart_.plotFill = parts_.plot.area->color;
        chart_.outline.isVisible = parts_.frame.line && parts_.frame.line->outline.isVisible;
        if (chart_.outline.isVisible)
            chart_.outline = parts_.frame.line->outline;
    }

    ChartParts parts_;
    const DrawingSource& source_;
    book::Chart chart_;
};

} // namespace

std::shared_ptr<const book::Chart> ReadChart(const DrawingSource& source, const Span& chart,
                                             ChartBudget& budget)
{
    if (chart.Empty())
        return nullptr;
    ChartParser parser(source, budget);
    RecordReader reader(source.stream.substr(0, chart.end), chart.begin);
    while (reader.IsWhole()) {
        const auto record = reader.Next();
        if (!record)
            break;
        try {
            parser.Add(*record);
        }
        catch (const util::Error&) { // a damaged record is left out
        }
    }
    if (!parser.Parts().isChart)
        return nullptr;
    return std::make_shared<const book::Chart>(Assembly(parser.Take(), source).Make());
}

} // namespace orrery::xls
