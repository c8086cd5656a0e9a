#pragma once

#include "engines/builtin/xml/alternate_content.h"
#include "engines/builtin/xml/scanner.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xml {

class Tree;

/// An element of a tree, or none: what is asked of none is absent, so that a path of children needs
/// no checks between. Valid as long as its tree. Names are without prefixes.
class Element {
public:
    Element() = default;
    explicit operator bool() const { return tree_ != nullptr; }
    std::string_view Name() const;
    /// The first child of that name, or none.
    Element Child(std::string_view name) const;
    Element First() const; ///< child
    Element Next() const;  ///< sibling
    /// The decoded value of an attribute without a prefix; empty if it is missing.
    std::string Attribute(std::string_view name) const;
    bool Has(std::string_view attribute) const;
    bool Is(std::string_view attribute, std::string_view value) const;
    /// The same for an attribute with whatever prefix ("r:embed").
    std::string Prefixed(std::string_view localName) const;
    /// The decoded text in the element and in those below.
    std::string Text() const;

    class Iterator {
    public:
        Iterator(const Tree* tree, std::uint32_t node) : tree_(tree), node_(node) {}
        Element operator*() const { return Element(tree_, node_); }
        Iterator& operator++();
        bool operator!=(const Iterator& other) const { return node_ != other.node_; }

    private:
        const Tree* tree_;
        std::uint32_t node_;
    };
    Iterator begin() const; ///< of the children
    Iterator end() const;

private:
    friend class Tree;
    Element(const Tree* tree, std::uint32_t node) : tree_(tree), node_(node) {}

    const Tree* tree_ = nullptr;
    std::uint32_t node_ = 0;
};

/// A part of a text as elements. Where the text has alternate content (ECMA-376-3 7.5), the tree
/// has in its place the first choice that is understood, else the fallback.
class Tree {
public:
    /// Reads the scanner's current element to its end. At most `maxNodes` elements and texts are
    /// kept, `IsWhole` tells whether those are all. The text outlives the tree.
    Tree(Scanner& scanner, const Understands& understands, std::size_t maxNodes);
    Tree(const Tree&) = delete; // its elements point to it
    Tree& operator=(const Tree&) = delete;

    Element Root() const { return nodes_.empty() ? Element() : Element(this, 0); }
    bool IsWhole() const { return isWhole_; }

private:
    friend class Element;
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    struct Node {
        std::string_view name; // of an element; of a text empty
        std::string_view raw;  // of a text
        std::uint32_t child = kNone;
        std::uint32_t next = kNone;
        std::uint32_t attribute = 0; // the first of its attributes
        std::uint32_t attributes = 0;
        bool isCData = false;
    };
    struct Attribute {
        std::string_view name; // with its prefix
        std::string_view raw;
    };

    void ReadContent(Scanner& scanner, const Understands& understands, std::uint32_t parent,
                     std::uint32_t& last);
    void ReadChild(Scanner& scanner, const Understands& understands, std::uint32_t parent,
                   std::uint32_t& last);
    std::uint32_t AddElement(const Scanner& scanner);
    void AddText(const Scanner& scanner, bool isCData, std::uint32_t parent, std::uint32_t& last);
    void Attach(std::uint32_t node, std::uint32_t parent, std::uint32_t& last);
    bool HasRoom();
    const Attribute* FindAttribute(std::uint32_t node, std::string_view name) const;
    void AppendText(std::uint32_t node, std::string& text) const;
    std::uint32_t FirstElement(std::uint32_t node) const; // from a sibling on

    std::size_t maxNodes_;
    bool isWhole_ = true;
    std::vector<Node> nodes_;
    std::vector<Attribute> attributes_;
};

} // namespace orrery::xml
