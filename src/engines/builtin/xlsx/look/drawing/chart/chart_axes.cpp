#include "engines/builtin/xlsx/look/drawing/chart/chart_axes.h"

#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"
#include "engines/builtin/xlsx/look/drawing/values/text_body.h"

#include <array>
#include <cmath>

namespace orrery::xlsx::drawing {
namespace {

/// The line of an axis or of its grid: whether it is visible, and its colour.
ShapeLine LineOf(const xml::Element& element, const ChartTexts& texts)
{
    return ReadPlainLine(element.Child("spPr").Child("ln"), {texts.style.theme, std::nullopt});
}

void ReadGrid(const xml::Element& axis, const ChartTexts& texts, book::ChartAxis& result)
{
    const xml::Element grid = axis.Child("majorGridlines");
    const ShapeLine line = LineOf(grid, texts);
    result.hasMajorGridLines = grid && (!line.isFillGiven || line.outline.isVisible);
    result.gridColor = line.outline.color;
}

void ReadScale(const xml::Element& axis, book::ChartAxis& result)
{
    const xml::Element scaling = axis.Child("scaling");
    result.minimum = NumberOf(scaling.Child("min"), "val");
    result.maximum = NumberOf(scaling.Child("max"), "val");
    result.isReversed = ValueOf(scaling, "orientation") == "maxMin";
    result.isLogarithmic = static_cast<bool>(scaling.Child("logBase"));
    result.majorUnit = NumberOf(axis.Child("majorUnit"), "val");
    if (result.majorUnit && !(*result.majorUnit > 0))
        result.majorUnit.reset();
}

/// The first properties of runs in the paragraphs of a text.
xml::Element RunPropertiesIn(const xml::Element& body)
{
    for (const xml::Element paragraph : body) {
        for (const xml::Element run : paragraph) {
            if (const xml::Element properties = run.Child("rPr"))
                return properties;
        }
    }
    return {};
}

book::Font FontOfText(const xml::Element& body, const book::Font& base, const ChartTexts& texts)
{
    const ColorSource colors{texts.style.theme, std::nullopt};
    const book::Font font = ReadFont(body.Child("p").Child("pPr").Child("defRPr"), base, colors);
    return ReadFont(RunPropertiesIn(body), font, colors);
}

} // namespace

book::ChartText ReadChartTitle(const xml::Element& title, const ChartTexts& texts,
                               const book::Font& font, const book::ChartText& automatic)
{
    const xml::Element source = title.Child("tx");
    const xml::Element rich = source.Child("rich");
    book::ChartText text = automatic;
    text.font = FontOfText(rich ? rich : title.Child("txPr"), font, texts);
    if (rich)
        text = {PlainText(rich), {}, text.font};
    else if (source.Child("strRef")) {
        const book::ChartData data = ReadChartData(source, *texts.points);
        text.formula = data.formula;
        text.text.clear();
        if (!data.cached.empty() && std::holds_alternative<std::string>(data.cached.front()))
            text.text = std::get<std::string>(data.cached.front());
    }
    return text;
}

xml::Element ChartAxes::FindAxis(const std::string& id) const
{
    for (const xml::Element child : plotArea_) {
        if (child.Name().ends_with("Ax") && child.Child("axId").Is("val", id))
            return child;
    }
    return {};
}

ChartAxes::Pair ChartAxes::AxesOf(const xml::Element& group) const
{
    std::vector<xml::Element> found;
    for (const xml::Element child : group) {
        if (child.Name() == "axId" && found.size() < 3)
            found.push_back(FindAxis(child.Attribute("val")));
    }
    if (found.size() < 2)
        return {};
    Pair pair{found[0], found[1]};
    // Where both are axes of values, that of x lies at the bottom or at the top.
    const std::string place = ValueOf(pair.categories, "axPos");
    const bool isUpright = place == "l" || place == "r";
    const bool areBothValues = pair.categories.Name() == pair.values.Name();
    const bool isSwapped = pair.categories.Name() == "valAx" && pair.values.Name() != "valAx";
    if ((areBothValues && isUpright) || isSwapped)
        std::swap(pair.categories, pair.values);
    return pair;
}

bool ChartAxes::IsSecondary(const xml::Element& group)
{
    const Pair pair = AxesOf(group);
    if (!primary_)
        primary_ = pair;
    const bool isSecondary = pair.values && pair.values.Child("axId").Attribute("val") !=
                                                primary_->values.Child("axId").Attribute("val");
    if (isSecondary && !secondary_)
        secondary_ = pair;
    return isSecondary;
}

book::ChartAxis ChartAxes::ReadAxis(const xml::Element& axis) const
{
    book::ChartAxis result;
    if (!axis) {
        result.isVisible = false;
        return result;
    }
    result.isVisible = !IsOn(axis, "delete", false);
    ReadScale(axis, result);
    ReadGrid(axis, texts_, result);
    const ShapeLine line = LineOf(axis, texts_);
    result.hasLine = !line.isFillGiven || line.outline.isVisible;
    result.lineColor = line.outline.color;
    result.hasLabels = ValueOf(axis, "tickLblPos") != "none";
    const xml::Element format = axis.Child("numFmt");
    if (!FlagOf(format, "sourceLinked", false))
        result.numberFormat = format.Attribute("formatCode");
    result.font = FontOfText(axis.Child("txPr"), texts_.font, texts_);
    if (const xml::Element title = axis.Child("title")) {
        book::Font font = texts_.font;
        font.bold = true;
        result.title = ReadChartTitle(title, texts_, font, {"Axis Title", {}, {}});
    }
    return result;
}

void ChartAxes::Read(book::Chart& chart) const
{
    if (!primary_ || (!primary_->categories && !primary_->values))
        return;
    chart.categoryAxis = ReadAxis(primary_->categories);
    chart.valueAxis = ReadAxis(primary_->values);
    if (secondary_)
        chart.secondaryAxis = ReadAxis(secondary_->values);
}

} // namespace orrery::xlsx::drawing
