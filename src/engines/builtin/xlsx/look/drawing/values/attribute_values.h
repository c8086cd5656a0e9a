#pragma once

#include "engines/builtin/xml/tree.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// The simple types of DrawingML, ECMA-376 20.1.10. What cannot be read is absent.
namespace orrery::xlsx::drawing {

/// Finite, and below 1e15 in magnitude.
std::optional<double> NumberOf(const xml::Element& element, std::string_view attribute);
/// Between the bounds; nothing if the attribute is no number.
std::optional<double> NumberOf(const xml::Element& element, std::string_view attribute, double low,
                               double high);
/// ST_Percentage as a share: 50000 and "50%" are 0.5.
std::optional<double> ShareOf(const xml::Element& element, std::string_view attribute);
/// ST_Coordinate in EMU: 914400, "1in", "2.54cm". At most about a kilometre.
std::int64_t EmuOf(const xml::Element& element, std::string_view attribute, std::int64_t otherwise);
/// The same of a text.
std::int64_t EmuOfText(std::string_view text, std::int64_t otherwise);
/// ST_Angle in degrees.
double DegreesOf(const xml::Element& element, std::string_view attribute);
/// A guide's formula that is a number: "val 16667"; NaN for others.
double ValueOfFormula(std::string_view formula);
bool FlagOf(const xml::Element& element, std::string_view attribute, bool otherwise);

} // namespace orrery::xlsx::drawing
