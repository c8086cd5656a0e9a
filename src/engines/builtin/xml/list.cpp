#include "engines/builtin/xml/list.h"

#include "book/error.h"
#include "engines/builtin/xml/scanner.h"
#include "util/error.h"

namespace orrery::xml {
namespace {

void SkipTo(Scanner& scanner, Scanner::Token wanted)
{
    while (scanner.Next() != wanted) {
    }
}

List::Item ReadItem(Scanner& scanner)
{
    List::Item item;
    item.element = scanner.LocalName();
    item.begin = scanner.Begin();
    for (const ScannedAttribute& attribute : scanner.Attributes())
        item.attributes.emplace_back(attribute.name, DecodeAttribute(attribute.raw));
    scanner.SkipElement();
    item.end = scanner.End();
    return item;
}

} // namespace

std::string List::Item::Attribute(std::string_view name) const
{
    for (const auto& [attribute, value] : attributes) {
        if (attribute == name)
            return value;
    }
    return {};
}

List::List(std::string_view xml, std::string_view partName, std::string_view root)
{
    Scanner scanner(xml, partName);
    SkipTo(scanner, Scanner::Token::StartTag);
    scanner.CheckPrefixes();
    if (scanner.LocalName() != root) {
        throw util::Error(book::ErrorKind::DamagedWorkbook, {},
                          std::string(partName) + ": no element \"" + std::string(root) + "\"");
    }
    rootName_ = scanner.Name();
    startTagEnd_ = scanner.End();
    emptyRoot_ = scanner.IsEmptyElement();
    for (auto token = scanner.Next(); scanner.Depth() > 0; token = scanner.Next()) {
        if (token == Scanner::Token::StartTag) {
            scanner.CheckPrefixes();
            items_.push_back(ReadItem(scanner));
        }
    }
    endTagBegin_ = scanner.Begin();
    SkipTo(scanner, Scanner::Token::End);
}

std::string List::Element(std::string_view localName,
                          const std::vector<std::pair<std::string, std::string>>& attributes) const
{
    const std::size_t colon = rootName_.find(':');
    std::string element = "<";
    if (colon != std::string::npos)
        element.append(rootName_, 0, colon + 1);
    element += localName;
    for (const auto& [name, value] : attributes)
        element += " " + name + "=\"" + EncodeAttribute(value) + "\"";
    return element + "/>";
}

void List::Append(TextPatch& patch, const std::string& elements) const
{
    if (elements.empty())
        return;
    if (emptyRoot_) {
        patch.Replace(startTagEnd_ - 2, startTagEnd_, ">" + elements + "</" + rootName_ + ">");
    }
    else {
        patch.Insert(endTagBegin_, elements);
    }
}

} // namespace orrery::xml
