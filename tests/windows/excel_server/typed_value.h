#pragma once

#include <string>

namespace orrery::excel_server {

/// The language in which the application understands what is typed.
enum class Language { English, German };

/// What a text is taken for when it is given to a cell.
enum class TypedKind { Text, Number, Date, Logical, Error, Formula };

struct TypedValue {
    TypedKind kind = TypedKind::Text;
    std::string text; ///< of Text: without an apostrophe at the beginning
};

/// "a date"
std::string NameOf(TypedKind kind);

/// What Excel makes of a text (UTF-8), as if its user typed it into a cell that is not formatted as
/// text. Throws ExcelFailure for a formula that has no end.
TypedValue ReadTyped(const std::string& text, Language language);

} // namespace orrery::excel_server
