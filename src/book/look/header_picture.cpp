#include "book/look/header_picture.h"

namespace orrery::book {
namespace {

std::optional<HeaderPages> ParsePages(std::string_view name)
{
    if (name.empty())
        return HeaderPages::Usual;
    if (name == "FIRST")
        return HeaderPages::First;
    return name == "EVEN" ? std::optional(HeaderPages::Even) : std::nullopt;
}

} // namespace

std::optional<HeaderSlot> ParseHeaderSlot(std::string_view name)
{
    constexpr std::string_view kParts = "LCR";
    if (name.size() < 2)
        return std::nullopt;
    const std::size_t part = kParts.find(name[0]);
    const auto pages = ParsePages(name.substr(2));
    if (part == kParts.npos || (name[1] != 'H' && name[1] != 'F') || !pages)
        return std::nullopt;
    return HeaderSlot{*pages, static_cast<HeaderPart>(part), name[1] == 'F'};
}

} // namespace orrery::book
