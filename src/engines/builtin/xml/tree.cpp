#include "engines/builtin/xml/tree.h"

#include "engines/builtin/xml/reading.h"
#include "engines/builtin/xml/text.h"

namespace orrery::xml {
namespace {

std::string_view WithoutPrefix(std::string_view name)
{
    return name.substr(name.find(':') + 1);
}

} // namespace

Tree::Tree(Scanner& scanner, const Understands& understands, std::size_t maxNodes)
    : maxNodes_(maxNodes)
{
    AddElement(scanner);
    std::uint32_t last = kNone;
    ReadContent(scanner, understands, 0, last);
}

void Tree::ReadContent(Scanner& scanner, const Understands& understands, std::uint32_t parent,
                       std::uint32_t& last)
{
    while (true) {
        const Scanner::Token token = scanner.Next();
        if (token == Scanner::Token::EndTag || token == Scanner::Token::End)
            return;
        if (token == Scanner::Token::StartTag)
            ReadChild(scanner, understands, parent, last);
        else if (token == Scanner::Token::Text || token == Scanner::Token::CData)
            AddText(scanner, token == Scanner::Token::CData, parent, last);
    }
}

void Tree::ReadChild(Scanner& scanner, const Understands& understands, std::uint32_t parent,
                     std::uint32_t& last)
{
    if (IsAlternateContent(scanner))
        return ReadAlternateContent(scanner, understands,
                                    [&] { ReadContent(scanner, understands, parent, last); });
    if (!HasRoom())
        return scanner.SkipElement();
    const std::uint32_t node = AddElement(scanner);
    Attach(node, parent, last);
    std::uint32_t lastChild = kNone;
    ReadContent(scanner, understands, node, lastChild);
}

std::uint32_t Tree::AddElement(const Scanner& scanner)
{
    Node node;
    node.name = scanner.LocalName();
    node.attribute = static_cast<std::uint32_t>(attributes_.size());
    for (const ScannedAttribute& attribute : scanner.Attributes()) {
        if (HasRoom())
            attributes_.push_back({attribute.name, attribute.raw});
    }
    node.attributes = static_cast<std::uint32_t>(attributes_.size()) - node.attribute;
    nodes_.push_back(node);
    return static_cast<std::uint32_t>(nodes_.size() - 1);
}

void Tree::AddText(const Scanner& scanner, bool isCData, std::uint32_t parent, std::uint32_t& last)
{
    constexpr std::string_view kOpening = "<![CDATA[";
    constexpr std::string_view kClosing = "]]>";
    // Blanks between elements are most of what is no text.
    if (scanner.Raw().find_first_not_of(" \t\r\n") == std::string_view::npos && last != kNone)
        return;
    if (!HasRoom())
        return;
    Node node;
    node.raw = scanner.Raw();
    node.isCData = isCData;
    if (isCData)
        node.raw =
            node.raw.substr(kOpening.size(), node.raw.size() - kOpening.size() - kClosing.size());
    nodes_.push_back(node);
    Attach(static_cast<std::uint32_t>(nodes_.size() - 1), parent, last);
}

void Tree::Attach(std::uint32_t node, std::uint32_t parent, std::uint32_t& last)
{
    (last == kNone ? nodes_[parent].child : nodes_[last].next) = node;
    last = node;
}

bool Tree::HasRoom()
{
    isWhole_ = isWhole_ && nodes_.size() + attributes_.size() < maxNodes_;
    return isWhole_;
}

const Tree::Attribute* Tree::FindAttribute(std::uint32_t node, std::string_view name) const
{
    const Node& found = nodes_[node];
    for (std::uint32_t i = found.attribute; i < found.attribute + found.attributes; ++i) {
        if (attributes_[i].name == name)
            return &attributes_[i];
    }
    return nullptr;
}

void Tree::AppendText(std::uint32_t node, std::string& text) const
{
    for (std::uint32_t i = nodes_[node].child; i != kNone; i = nodes_[i].next) {
        if (!nodes_[i].name.empty())
            AppendText(i, text);
        else if (nodes_[i].isCData)
            text += nodes_[i].raw;
        else
            text += DecodeText(nodes_[i].raw);
    }
}

std::uint32_t Tree::FirstElement(std::uint32_t node) const
{
    while (node != kNone && nodes_[node].name.empty())
        node = nodes_[node].next;
    return node;
}

std::string_view Element::Name() const
{
    return tree_ == nullptr ? std::string_view() : tree_->nodes_[node_].name;
}

Element Element::First() const
{
    if (tree_ == nullptr)
        return {};
    const std::uint32_t child = tree_->FirstElement(tree_->nodes_[node_].child);
    return child == Tree::kNone ? Element() : Element(tree_, child);
}

Element Element::Next() const
{
    if (tree_ == nullptr)
        return {};
    const std::uint32_t next = tree_->FirstElement(tree_->nodes_[node_].next);
    return next == Tree::kNone ? Element() : Element(tree_, next);
}

Element Element::Child(std::string_view name) const
{
    Element child = First();
    while (child && child.Name() != name)
        child = child.Next();
    return child;
}

bool Element::Has(std::string_view attribute) const
{
    return tree_ != nullptr && tree_->FindAttribute(node_, attribute) != nullptr;
}

std::string Element::Attribute(std::string_view name) const
{
    const Tree::Attribute* found = tree_ == nullptr ? nullptr : tree_->FindAttribute(node_, name);
    return found == nullptr ? std::string() : DecodeAttribute(found->raw);
}

bool Element::Is(std::string_view attribute, std::string_view value) const
{
    return Has(attribute) && Attribute(attribute) == value;
}

std::string Element::Prefixed(std::string_view localName) const
{
    if (tree_ == nullptr)
        return {};
    const Tree::Node& node = tree_->nodes_[node_];
    for (std::uint32_t i = node.attribute; i < node.attribute + node.attributes; ++i) {
        const Tree::Attribute& attribute = tree_->attributes_[i];
        if (attribute.name != localName && WithoutPrefix(attribute.name) == localName)
            return DecodeAttribute(attribute.raw);
    }
    return {};
}

std::string Element::Text() const
{
    std::string text;
    if (tree_ != nullptr)
        tree_->AppendText(node_, text);
    return text;
}

Element::Iterator Element::begin() const
{
    const Element first = First();
    return {tree_, first ? first.node_ : Tree::kNone};
}

Element::Iterator Element::end() const
{
    return {tree_, Tree::kNone};
}

Element::Iterator& Element::Iterator::operator++()
{
    const Element next = Element(tree_, node_).Next();
    node_ = next ? next.node_ : Tree::kNone;
    return *this;
}

} // namespace orrery::xml
