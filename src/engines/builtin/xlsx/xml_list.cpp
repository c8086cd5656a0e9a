#include "engines/builtin/xlsx/xml_list.h"

#include "engines/builtin/xlsx/xml_scanner.h"
#include "util/error.h"

namespace orrery::xlsx {
namespace {

void SkipTo(XmlScanner& scanner, XmlScanner::Token wanted)
{
    while (scanner.Next() != wanted) {
    }
}

XmlList::Item ReadItem(XmlScanner& scanner)
{
    XmlList::Item item;
    item.element = scanner.LocalName();
    item.begin = scanner.Begin();
    for (const XmlAttribute& attribute : scanner.Attributes())
        item.attributes.emplace_back(attribute.name, DecodeXmlAttribute(attribute.raw));
    scanner.SkipElement();
    item.end = scanner.End();
    return item;
}

} // namespace

std::string XmlList::Item::Attribute(std::string_view name) const
{
    for (const auto& [attribute, value] : attributes) {
        if (attribute == name)
            return value;
    }
    return {};
}

XmlList::XmlList(std::string_view xml, std::string_view partName, std::string_view root)
{
    XmlScanner scanner(xml, partName);
    SkipTo(scanner, XmlScanner::Token::StartTag);
    scanner.CheckPrefixes();
    if (scanner.LocalName() != root) {
        throw util::Error(util::ErrorKind::DamagedWorkbook, {},
                          std::string(partName) + ": no element \"" + std::string(root) + "\"");
    }
    rootName_ = scanner.Name();
    startTagEnd_ = scanner.End();
    emptyRoot_ = scanner.IsEmptyElement();
    for (auto token = scanner.Next(); scanner.Depth() > 0; token = scanner.Next()) {
        if (token == XmlScanner::Token::StartTag) {
            scanner.CheckPrefixes();
            items_.push_back(ReadItem(scanner));
        }
    }
    endTagBegin_ = scanner.Begin();
    SkipTo(scanner, XmlScanner::Token::End);
}

std::string
XmlList::Element(std::string_view localName,
                 const std::vector<std::pair<std::string, std::string>>& attributes) const
{
    const std::size_t colon = rootName_.find(':');
    std::string element = "<";
    if (colon != std::string::npos)
        element.append(rootName_, 0, colon + 1);
    element += localName;
    for (const auto& [name, value] : attributes)
        element += " " + name + "=\"" + EncodeXmlAttribute(value) + "\"";
    return element + "/>";
}

void XmlList::Append(TextPatch& patch, const std::string& elements) const
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

} // namespace orrery::xlsx
