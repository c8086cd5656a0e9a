#include "engines/builtin/xlsx/look/cells/shared_texts.h"

#include "engines/builtin/xml/reading.h"

namespace orrery::xlsx {
namespace {

constexpr std::size_t kMaxItems = std::size_t{8} << 20U;

}

SharedTexts::SharedTexts(std::string xml) : xml_(std::move(xml))
{
    xml::Scanner scanner(xml_);
    xml::EnterRoot(scanner);
    xml::ForEachChild(scanner, [&] {
        const std::size_t begin = scanner.Begin();
        if (scanner.LocalName() != "si" || items_.size() >= kMaxItems)
            return scanner.SkipElement();
        bool isRich = false;
        xml::ForEachChild(scanner, [&] {
            isRich = isRich || scanner.LocalName() == "r";
            scanner.SkipElement();
        });
        Item item;
        item.begin = static_cast<std::uint32_t>(begin);
        item.size = static_cast<std::uint32_t>(scanner.End() - begin) & 0x7FFFFFFFU;
        item.isRich = isRich ? 1 : 0;
        items_.push_back(item);
    });
}

RichText SharedTexts::At(std::size_t index, const ColorScheme& colors, const book::Font* font) const
{
    const Item& item = items_[index];
    xml::Scanner scanner(std::string_view(xml_).substr(item.begin, item.size));
    scanner.Next();
    return ReadRichText(scanner, colors, font);
}

} // namespace orrery::xlsx
