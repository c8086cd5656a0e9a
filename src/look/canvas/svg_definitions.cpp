#include "look/canvas/svg_definitions.h"

#include "look/canvas/svg_text.h"

#include <utility>

namespace orrery::look {

std::string SvgDefinitions::UniqueId(std::string_view wanted)
{
    const std::string name = SvgName(wanted);
    std::string id = name;
    while (!ids_.insert(id).second)
        id = name + "-" + std::to_string(++repeats_[name] + 1);
    return id;
}

std::string SvgDefinitions::Use(std::string_view element, std::string_view prefix, std::string rest)
{
    const auto [place, isNew] = definitions_.try_emplace(std::move(rest));
    if (isNew) {
        place->second.element = element;
        place->second.id = UniqueId(std::string(prefix) + std::to_string(order_.size() + 1));
        order_.emplace_back(place);
    }
    return place->second.id;
}

void SvgDefinitions::AppendTo(std::string& out) const
{
    if (order_.empty())
        return;
    out += "<defs>";
    for (const auto& place : order_)
        out += "<" + place->second.element + " id=\"" + place->second.id + "\"" + place->first;
    out += "</defs>\n";
}

std::string SvgClasses::Use(const std::string& css)
{
    const auto [place, isNew] = classes_.try_emplace(css);
    if (isNew) {
        place->second = "s" + std::to_string(classes_.size());
        order_.emplace_back(place);
    }
    return place->second;
}

void SvgClasses::AppendTo(std::string& out) const
{
    for (const auto& place : order_) {
        out += "." + place->second + "{";
        AppendEscaped(out, place->first);
        out += "}\n";
    }
}

} // namespace orrery::look
