#include "engines/builtin/xls/look/chart/chart_parser.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/look/chart/chart_data.h"
#include "engines/builtin/xls/look/chart/chart_groups.h"

#include <cmath>
#include <utility>

namespace orrery::xls {
namespace {

constexpr std::uint16_t kWholeSeries = 0xFFFF;
constexpr std::size_t kMostSeries = 1000; // Excel has 255, and trend lines
constexpr std::size_t kMostGroups = 32;   // Excel has 9

constexpr std::uint8_t kNotDocked = 7;

/// The side that a legend is nearest to: its box is in 1/4000 of the chart.
book::LegendPlace LegendPlaceOf(std::string_view data)
{
    constexpr double kMiddle = 2000;
    const auto number = [&](std::size_t at) {
        return static_cast<double>(static_cast<std::int32_t>(ReadU32(data, at)));
    };
    const double fromMiddleX = number(0) + number(8) / 2 - kMiddle;
    const double fromMiddleY = number(4) + number(12) / 2 - kMiddle;
    using enum book::LegendPlace;
    if (std::abs(fromMiddleX) >= std::abs(fromMiddleY))
        return fromMiddleX < 0 ? Left : Right;
    return fromMiddleY < 0 ? Top : Bottom;
}

} // namespace

void ChartParser::Add(const Record& record)
{
    switch (record.type) {
    case RecordType::Number:
    case RecordType::Label:
    case RecordType::BoolErr:
        return AddValue(record);
    default:
        return Read(static_cast<ChartRecord>(record.type), record.data);
    }
}

void ChartParser::Read(ChartRecord type, std::string_view data)
{
    if (type == ChartRecord::Begin) {
        open_.push_back(last_);
        return;
    }
    if (type == ChartRecord::End) {
        if (Parent() == ChartRecord::Text)
            EndText();
        if (!open_.empty())
            open_.pop_back();
        return;
    }
    last_ = type;
    BeginPart(type, data);
    switch (Parent()) {
    case ChartRecord::Series:
        return ReadOfSeries(type, data);
    case ChartRecord::ChartFormat:
        return ReadOfGroup(type, data);
    case ChartRecord::DataFormat:
        return ReadFormat(type, data, *look_);
    case ChartRecord::Frame:
        return ReadFormat(type, data, *frame_);
    case ChartRecord::Text:
        return ReadOfText(type, data);
    case ChartRecord::Axis:
        if (axis_)
            axis_->Add(type, data);
        return;
    default:
        return;
    }
}

void ChartParser::BeginPart(ChartRecord type, std::string_view data)
{
    switch (type) {
    case ChartRecord::Chart:
        parts_.isChart = true;
        return;
    case ChartRecord::Series:
        if (budget_.values > 0 && parts_.series.size() < kMostSeries) {
            --budget_.values;
            parts_.series.emplace_back();
        }
        return;
    case ChartRecord::ChartFormat:
        if (budget_.values > 0 && parts_.groups.size() < kMostGroups) {
            --budget_.values;
            GroupPart& part = parts_.groups.emplace_back();
            part.group.kind = book::ChartKind::Other;
            part.group.usesSecondaryAxis = axes_ == 1;
            part.group.variesColors = (ReadU16(data, 16) & 1U) != 0;
        }
        return;
    case ChartRecord::DataFormat:
        return BeginDataFormat(data);
    case ChartRecord::Frame:
        frame_ = Parent() == ChartRecord::Chart        ? &parts_.frame
                 : Parent() == ChartRecord::AxisParent ? &parts_.plot
                                                       : &scratch_;
        return;
    case ChartRecord::AxisParent:
        axes_ = ReadU16(data, 0) == 1 ? 1 : 0;
        return;
    case ChartRecord::Axis:
        return BeginAxis(data);
    case ChartRecord::DefaultText:
        defaultText_ = ReadU16(data, 0);
        return;
    case ChartRecord::Text:
        return BeginText(data);
    case ChartRecord::Legend:
        return ReadLegend(data);
    case ChartRecord::DataIndex:
        dataIndex_ = ReadU16(data, 0);
        return;
    default:
        return;
    }
}

void ChartParser::BeginDataFormat(std::string_view data)
{
    look_ = &scratch_;
    const std::uint16_t point = ReadU16(data, 0);
    if (Parent() == ChartRecord::ChartFormat && !parts_.groups.empty()) {
        look_ = &parts_.groups.back().look;
    }
    else if (Parent() == ChartRecord::Series && !parts_.series.empty()) {
        SeriesPart& series = parts_.series.back();
        if (point == kWholeSeries) {
            look_ = &series.look;
        }
        else if (budget_.values > 0) {
            --budget_.values;
            look_ = &series.points[point];
        }
        look_->number = ReadU16(data, 4);
    }
}

void ChartParser::BeginAxis(std::string_view data)
{
    AxesPart& axes = parts_.axes[axes_];
    const std::uint16_t type = ReadU16(data, 0);
    if (type == 0)
        axis_.emplace(axes.category.emplace(), source_.styles);
    else if (type == 1)
        axis_.emplace(axes.value.emplace(), source_.styles);
    else
        axis_.emplace(unusedAxis_, source_.styles);
}

void ChartParser::BeginText(std::string_view data)
{
    constexpr unsigned kAutomaticColor = 0x01;
    constexpr unsigned kHasAutomaticText = 0x10;
    constexpr unsigned kIsDeleted = 0x40;
    text_ = {};
    const unsigned flags = ReadU16(data, 24);
    text_.isDeleted = (flags & kIsDeleted) != 0;
    text_.isAutomatic = (flags & kHasAutomaticText) != 0;
    if ((flags & kAutomaticColor) == 0)
        text_.color = ReadChartColor(data, 4);
}

void ChartParser::ReadOfSeries(ChartRecord type, std::string_view data)
{
    if (parts_.series.empty())
        return;
    SeriesPart& series = parts_.series.back();
    if (type == ChartRecord::Reference) {
        auto reference = ReadChartReference(data, source_);
        if (reference.kind > ChartDataKind::Categories)
            return;
        book::ChartData& target = reference.kind == ChartDataKind::Name     ? series.name
                                  : reference.kind == ChartDataKind::Values ? series.values
                                                                            : series.categories;
        target.formula = std::move(reference.formula);
        if (reference.numberFormat)
            target.numberFormat = std::move(*reference.numberFormat);
    }
    else if (type == ChartRecord::SeriesText) {
        series.name.cached = {ReadChartText(data)};
    }
    else if (type == ChartRecord::SeriesToGroup) {
        series.group = ReadU16(data, 0);
    }
    else if (type == ChartRecord::SeriesParent) {
        series.isAuxiliary = true;
    }
}

void ChartParser::ReadOfGroup(ChartRecord type, std::string_view data)
{
    if (!parts_.groups.empty())
        ReadGroupRecord(type, data, parts_.groups.back());
}

void ChartParser::ReadOfText(ChartRecord type, std::string_view data)
{
    switch (type) {
    case ChartRecord::SeriesText:
        text_.text.text = ReadChartText(data);
        return;
    case ChartRecord::Reference:
        text_.text.formula = ReadChartReference(data, source_).formula;
        return;
    case ChartRecord::Font:
        text_.text.font = source_.styles.font(ReadU16(data, 0));
        return;
    case ChartRecord::ObjectLink:
        text_.link = ReadU16(data, 0);
        return;
    default:
        return;
    }
}

void ChartParser::EndText()
{
    constexpr std::uint16_t kAllTexts = 2;
    constexpr std::uint16_t kAllScaledTexts = 3;
    if (text_.text.font && text_.color)
        text_.text.font->color = text_.color;
    if (!text_.link) {
        if (defaultText_ == kAllTexts || defaultText_ == kAllScaledTexts)
            parts_.font = text_.text.font;
    }
    else if (*text_.link == TextPart::kTitle && !text_.isDeleted) {
        parts_.title = text_;
    }
    else if (*text_.link == TextPart::kValueAxis) {
        parts_.axes[axes_].valueTitle = text_.text;
    }
    else if (*text_.link == TextPart::kCategoryAxis) {
        parts_.axes[axes_].categoryTitle = text_.text;
    }
    defaultText_.reset();
}

void ChartParser::ReadFormat(ChartRecord type, std::string_view data, DataLook& look)
{
    constexpr unsigned kShowsValue = 0x01; // [MS-XLS] 2.4.5
    constexpr unsigned kShowsPercent = 0x06;
    switch (type) {
    case ChartRecord::LineFormat:
        look.line = ReadLineFormat(data);
        return;
    case ChartRecord::AreaFormat:
        look.area = ReadAreaFormat(data);
        return;
    case ChartRecord::MarkerFormat:
        look.marker = ReadMarkerFormat(data);
        return;
    case ChartRecord::SeriesFormat:
        look.isSmooth = (ReadU16(data, 0) & 1U) != 0;
        return;
    case ChartRecord::AttachedLabel:
        look.hasLabels = (ReadU16(data, 0) & kShowsValue) != 0;
        look.hasPercents = (ReadU16(data, 0) & kShowsPercent) != 0;
        return;
    default:
        return;
    }
}

/// [MS-XLS] 2.4.152: the place is in a byte that only says where the legend is docked.
void ChartParser::ReadLegend(std::string_view data)
{
    using enum book::LegendPlace;
    switch (ReadU8(data, 16)) {
    case 0:
        parts_.legend = Bottom;
        return;
    case 1:
        parts_.legend = TopRight;
        return;
    case 2:
        parts_.legend = Top;
        return;
    case 4:
        parts_.legend = Left;
        return;
    case kNotDocked:
        parts_.legend = LegendPlaceOf(data);
        return;
    default:
        parts_.legend = Right;
        return;
    }
}

void ChartParser::AddValue(const Record& record)
{
    constexpr std::uint16_t kValues = 1;
    constexpr std::uint16_t kCategories = 2;
    auto value = ReadCachedValue(record);
    if (!value || value->series >= parts_.series.size() ||
        (dataIndex_ != kValues && dataIndex_ != kCategories))
        return;
    SeriesPart& series = parts_.series[value->series];
    auto& cached = dataIndex_ == kValues ? series.values.cached : series.categories.cached;
    if (value->index >= cached.size()) {
        const std::size_t added = value->index + 1 - cached.size();
        if (added > budget_.values)
            return;
        budget_.values -= added;
        cached.resize(value->index + 1);
    }
    cached[value->index] = std::move(value->content);
}

} // namespace orrery::xls
