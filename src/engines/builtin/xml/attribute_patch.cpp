#include "engines/builtin/xml/attribute_patch.h"

#include "engines/builtin/xml/scanner.h"

namespace orrery::xml {

std::string EncodeAttributeAt(std::string_view xml, std::size_t valueBegin, std::string_view value)
{
    std::string encoded = EncodeAttribute(value);
    if (valueBegin == 0 || xml[valueBegin - 1] != '\'')
        return encoded;
    std::string result;
    for (const char c : encoded) {
        if (c == '\'') {
            result += "&apos;";
        }
        else {
            result += c;
        }
    }
    return result;
}

void SetAttribute(TextPatch& patch, std::string_view xml, std::size_t element,
                  std::string_view name, std::string_view value)
{
    const std::string_view text = xml.substr(element);
    Scanner scanner(text);
    scanner.Next();
    if (const auto attribute = scanner.Attribute(name)) {
        const std::size_t begin = element + attribute->valueBegin;
        patch.Replace(begin, begin + attribute->raw.size(), EncodeAttributeAt(xml, begin, value));
        return;
    }
    const std::size_t nameEnd = element + 1 + scanner.Name().size();
    patch.Insert(nameEnd, " " + std::string(name) + "=\"" + EncodeAttribute(value) + "\"");
}

} // namespace orrery::xml
