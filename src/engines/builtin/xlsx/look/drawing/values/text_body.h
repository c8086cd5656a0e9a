#pragma once

#include "book/look/drawing.h"
#include "engines/builtin/xlsx/look/drawing/values/colors.h"

#include <optional>

namespace orrery::xlsx::drawing {

/// The font of a run, ECMA-376 21.1.2.3.9: what its properties give, else the base's.
book::Font ReadFont(const xml::Element& properties, const book::Font& base,
                    const ColorSource& colors);

/// The text of a shape, ECMA-376 21.1.2.1; nothing if it has no characters. `fontReference` is the
/// one of the shape's style, or none.
std::optional<book::TextBody> ReadTextBody(const xml::Element& element,
                                           const xml::Element& fontReference,
                                           const builtin::ThemeColors& theme);

/// The paragraphs of a body as lines of plain text.
std::string PlainText(const xml::Element& body);

} // namespace orrery::xlsx::drawing
