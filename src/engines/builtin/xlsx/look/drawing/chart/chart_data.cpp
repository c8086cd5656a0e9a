#include "engines/builtin/xlsx/look/drawing/chart/chart_data.h"

#include "engines/builtin/common/words.h"
#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"
#include "util/numbers.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace orrery::xlsx::drawing {
namespace {

using book::CellContent;
using book::CellError;

constexpr builtin::Words<CellError, 7> kErrors{{
    {"#NULL!", CellError::Null},
    {"#DIV/0!", CellError::DivisionByZero},
    {"#VALUE!", CellError::Value},
    {"#REF!", CellError::Reference},
    {"#NAME?", CellError::Name},
    {"#NUM!", CellError::Number},
    {"#N/A", CellError::NotAvailable},
}};

CellContent ContentOf(std::string text, bool areNumbers)
{
    if (!areNumbers)
        return text;
    if (const auto number = util::ReadNumber(text))
        return *number;
    if (const auto error = builtin::ValueOfWord(kErrors, text))
        return *error;
    return text;
}

/// The points of a cache, at their positions.
void ReadPoints(const xml::Element& cache, bool areNumbers, PointBudget& budget,
                book::ChartData& data)
{
    const double count = NumberOf(cache.Child("ptCount"), "val", 0, 1e9).value_or(0);
    const std::size_t room = std::min(budget.points, static_cast<std::size_t>(count));
    data.cached.assign(room, CellContent());
    budget.points -= room;
    for (const xml::Element point : cache) {
        if (point.Name() != "pt")
            continue;
        const auto index = static_cast<std::size_t>(NumberOf(point, "idx", 0, 1e9).value_or(0));
        if (index < data.cached.size())
            data.cached[index] = ContentOf(point.Child("v").Text(), areNumbers);
    }
}

void ReadFormat(const xml::Element& cache, book::ChartData& data)
{
    if (std::string format = cache.Child("formatCode").Text(); !format.empty())
        data.numberFormat = std::move(format);
}

/// The first level is the one beside the axis. It has no count of its own.
void ReadFirstLevel(const xml::Element& cache, PointBudget& budget, book::ChartData& data)
{
    ReadPoints(cache, false, budget, data);
    for (const xml::Element point : cache.Child("lvl")) {
        const auto index = static_cast<std::size_t>(NumberOf(point, "idx", 0, 1e9).value_or(0));
        if (index < data.cached.size())
            data.cached[index] = point.Child("v").Text();
    }
}

} // namespace

book::ChartData ReadChartData(const xml::Element& parent, PointBudget& budget)
{
    book::ChartData data;
    const xml::Element source = parent.First();
    const std::string_view name = source.Name();
    data.formula = source.Child("f").Text();
    if (name == "v") { // the name of a series
        data.cached = {CellContent(source.Text())};
    }
    else if (name == "numRef" || name == "numLit") {
        const xml::Element cache = name == "numLit" ? source : source.Child("numCache");
        ReadFormat(cache, data);
        ReadPoints(cache, true, budget, data);
    }
    else if (name == "strRef" || name == "strLit")
        ReadPoints(name == "strLit" ? source : source.Child("strCache"), false, budget, data);
    else if (name == "multiLvlStrRef")
        ReadFirstLevel(source.Child("multiLvlStrCache"), budget, data);
    return data;
}

bool IsOn(const xml::Element& parent, std::string_view child, bool otherwise)
{
    const xml::Element element = parent.Child(child);
    return element ? FlagOf(element, "val", true) : otherwise;
}

std::string ValueOf(const xml::Element& parent, std::string_view child)
{
    return parent.Child(child).Attribute("val");
}

} // namespace orrery::xlsx::drawing
