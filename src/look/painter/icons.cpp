#include "look/painter/icons.h"

#include "look/painter/icon_shapes.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace orrery::look {

namespace {

constexpr book::Color kRed{0xD6, 0x4A, 0x3A};
constexpr book::Color kYellow{0xE9, 0xBE, 0x2E};
constexpr book::Color kGreen{0x5C, 0xA5, 0x4E};
constexpr book::Color kGray{0x8C, 0x8C, 0x8C};
constexpr book::Color kPink{0xF0, 0xA8, 0xA0};
constexpr book::Color kBlackLight{0x40, 0x40, 0x40};

/// One icon of a set: a drawing, its colour, and what the drawing takes: an angle or a count.
struct IconRule {
    IconDrawing draw;
    book::Color color;
    double value = 0;
};

// Of arrows the value is the turn from upwards, clockwise.
constexpr std::array kArrows3{IconRule{DrawArrowIcon, kRed, 180},
                              IconRule{DrawArrowIcon, kYellow, 90},
                              IconRule{DrawArrowIcon, kGreen, 0}};
constexpr std::array kArrows3Gray{IconRule{DrawArrowIcon, kGray, 180},
                                  IconRule{DrawArrowIcon, kGray, 90},
                                  IconRule{DrawArrowIcon, kGray, 0}};
constexpr std::array kArrows4{
    IconRule{DrawArrowIcon, kRed, 180}, IconRule{DrawArrowIcon, kYellow, 135},
    IconRule{DrawArrowIcon, kYellow, 45}, IconRule{DrawArrowIcon, kGreen, 0}};
constexpr std::array kArrows4Gray{
    IconRule{DrawArrowIcon, kGray, 180}, IconRule{DrawArrowIcon, kGray, 135},
    IconRule{DrawArrowIcon, kGray, 45}, IconRule{DrawArrowIcon, kGray, 0}};
constexpr std::array kArrows5{
    IconRule{DrawArrowIcon, kRed, 180}, IconRule{DrawArrowIcon, kYellow, 135},
    IconRule{DrawArrowIcon, kYellow, 90}, IconRule{DrawArrowIcon, kYellow, 45},
    IconRule{DrawArrowIcon, kGreen, 0}};
constexpr std::array kArrows5Gray{
    IconRule{DrawArrowIcon, kGray, 180}, IconRule{DrawArrowIcon, kGray, 135},
    IconRule{DrawArrowIcon, kGray, 90}, IconRule{DrawArrowIcon, kGray, 45},
    IconRule{DrawArrowIcon, kGray, 0}};
constexpr std::array kFlags{IconRule{DrawFlagIcon, kRed}, IconRule{DrawFlagIcon, kYellow},
                            IconRule{DrawFlagIcon, kGreen}};
constexpr std::array kLights3{IconRule{DrawDiscIcon, kRed}, IconRule{DrawDiscIcon, kYellow},
                              IconRule{DrawDiscIcon, kGreen}};
constexpr std::array kRimmedLights{IconRule{DrawRimmedLightIcon, kRed},
                                   IconRule{DrawRimmedLightIcon, kYellow},
                                   IconRule{DrawRimmedLightIcon, kGreen}};
constexpr std::array kLights4{IconRule{DrawDiscIcon, kBlackLight}, IconRule{DrawDiscIcon, kRed},
                              IconRule{DrawDiscIcon, kYellow}, IconRule{DrawDiscIcon, kGreen}};
constexpr std::array kRedToBlack{IconRule{DrawDiscIcon, kBlackLight}, IconRule{DrawDiscIcon, kGray},
                                 IconRule{DrawDiscIcon, kPink}, IconRule{DrawDiscIcon, kRed}};
constexpr std::array kSigns{IconRule{DrawDiamondIcon, kRed},
                            IconRule{DrawTriangleSignIcon, kYellow},
                            IconRule{DrawDiscIcon, kGreen}};
constexpr std::array kSymbols{IconRule{DrawCrossInDiscIcon, kRed},
                              IconRule{DrawMarkInDiscIcon, kYellow},
                              IconRule{DrawCheckInDiscIcon, kGreen}};
constexpr std::array kPlainSymbols{IconRule{DrawCrossIcon, kRed}, IconRule{DrawMarkIcon, kYellow},
                                   IconRule{DrawCheckIcon, kGreen}};
// How many of four bars, quarters or boxes, or of two halves of a star, are full.
constexpr std::array kRating4{IconRule{DrawBarsIcon, kGreen, 1}, IconRule{DrawBarsIcon, kGreen, 2},
                              IconRule{DrawBarsIcon, kGreen, 3}, IconRule{DrawBarsIcon, kGreen, 4}};
constexpr std::array kRating5{IconRule{DrawBarsIcon, kGreen, 0}, IconRule{DrawBarsIcon, kGreen, 1},
                              IconRule{DrawBarsIcon, kGreen, 2}, IconRule{DrawBarsIcon, kGreen, 3},
                              IconRule{DrawBarsIcon, kGreen, 4}};
constexpr std::array kQuarters{
    IconRule{DrawQuartersIcon, kBlackLight, 0}, IconRule{DrawQuartersIcon, kBlackLight, 1},
    IconRule{DrawQuartersIcon, kBlackLight, 2}, IconRule{DrawQuartersIcon, kBlackLight, 3},
    IconRule{DrawQuartersIcon, kBlackLight, 4}};
constexpr std::array kBoxes{IconRule{DrawBoxesIcon, kGreen, 0}, IconRule{DrawBoxesIcon, kGreen, 1},
                            IconRule{DrawBoxesIcon, kGreen, 2}, IconRule{DrawBoxesIcon, kGreen, 3},
                            IconRule{DrawBoxesIcon, kGreen, 4}};
constexpr std::array kStars{IconRule{DrawStarIcon, kYellow, 0}, IconRule{DrawStarIcon, kYellow, 1},
                            IconRule{DrawStarIcon, kYellow, 2}};
constexpr std::array kTriangles{IconRule{DrawTriangleIcon, kRed, 180},
                                IconRule{DrawDashIcon, kYellow},
                                IconRule{DrawTriangleIcon, kGreen, 0}};

struct IconSetRule {
    std::string_view name;
    std::span<const IconRule> icons; ///< worst first
};

constexpr std::array kSets{
    IconSetRule{"3Arrows", kArrows3},
    IconSetRule{"3ArrowsGray", kArrows3Gray},
    IconSetRule{"3Flags", kFlags},
    IconSetRule{"3TrafficLights1", kLights3},
    IconSetRule{"3TrafficLights2", kRimmedLights},
    IconSetRule{"3Signs", kSigns},
    IconSetRule{"3Symbols", kSymbols},
    IconSetRule{"3Symbols2", kPlainSymbols},
    IconSetRule{"3Stars", kStars},
    IconSetRule{"3Triangles", kTriangles},
    IconSetRule{"4Arrows", kArrows4},
    IconSetRule{"4ArrowsGray", kArrows4Gray},
    IconSetRule{"4RedToBlack", kRedToBlack},
    IconSetRule{"4Rating", kRating4},
    IconSetRule{"4TrafficLights", kLights4},
    IconSetRule{"5Arrows", kArrows5},
    IconSetRule{"5ArrowsGray", kArrows5Gray},
    IconSetRule{"5Rating", kRating5},
    IconSetRule{"5Quarters", kQuarters},
    IconSetRule{"5Boxes", kBoxes},
};

} // namespace

void PaintIcon(const IconDisplay& icon, const Box& box, Canvas& canvas)
{
    const auto set = std::find_if(kSets.begin(), kSets.end(),
                                  [&icon](const auto& rule) { return rule.name == icon.set; });
    if (set == kSets.end() || icon.position < 0 ||
        static_cast<std::size_t>(icon.position) >= set->icons.size())
        return;
    const auto& rule = set->icons[static_cast<std::size_t>(icon.position)];
    rule.draw({box, rule.color, rule.value, canvas});
}

} // namespace orrery::look
