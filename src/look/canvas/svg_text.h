#pragma once

#include "book/look/color.h"

#include <string>
#include <string_view>

namespace orrery::look {

/// Appends a number with at most two decimals: "12", "-0.5". What is no number is 0, what is too
/// large for any page is cut to ten million.
void AppendNumber(std::string& out, double value);
std::string SvgNumber(double value);

/// Appends a text for the content or an attribute of an element. Line ends and tabs become blanks,
/// what XML cannot hold becomes U+FFFD.
void AppendEscaped(std::string& out, std::string_view text);

/// A text that is an XML name: what a name cannot hold becomes "_".
std::string SvgName(std::string_view text);

void AppendBase64(std::string& out, std::string_view bytes);

/// "#1f497d", or "#fff" where that is the same.
std::string SvgColor(const book::Color& color);

} // namespace orrery::look
