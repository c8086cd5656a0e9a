#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orrery::xml {

/// A piece of a part's text.
struct TextRange {
    std::size_t begin = 0;
    std::size_t end = 0; ///< behind the last byte
};

/// Text with its character references and entities decoded (only the five of XML are known) and
/// its line ends made "\n", as every reader of XML sees it. What is no reference stays as it is.
std::string DecodeText(std::string_view raw);
/// The same for an attribute's value, where tabs and line ends count as blanks.
std::string DecodeAttribute(std::string_view raw);
/// Escaped for element content; carriage returns become references. Control characters that XML
/// cannot hold are left out.
std::string EncodeText(std::string_view text);
/// Escaped for an attribute value in double quotes; tabs and line ends become references.
/// Control characters that XML cannot hold are left out.
std::string EncodeAttribute(std::string_view text);

/// Length of the reference that begins with the "&" at `text`'s start ("&amp;", "&#x20;"), its ";"
/// included; 0 when it is none that XML knows or names a character that XML cannot hold.
std::size_t ReferenceLength(std::string_view text);

} // namespace orrery::xml
