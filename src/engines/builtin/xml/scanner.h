#pragma once

#include "engines/builtin/xml/text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orrery::xml {

/// An attribute of the current start tag, as written in the text.
struct ScannedAttribute {
    std::string_view name; ///< with its prefix
    std::string_view raw;  ///< the value as written, without its quotes
    std::size_t begin = 0; ///< offset of the blank before the name
    std::size_t valueBegin = 0;
    std::size_t end = 0;        ///< after the closing quote
    bool hasReferences = false; ///< whether the value contains references ("&#x41;")

    /// The value with its references decoded; `decoded` holds the result if there are any.
    std::string_view Value(std::string& decoded) const;
    /// Whether the decoded value equals the text.
    bool Is(std::string_view text) const;
};

/// Reads well-formed XML forward without building a tree. Every token knows its offsets in the
/// text, so that a writer can replace just that range and leave every other byte alone.
class Scanner {
public:
    /// Other is a comment, a processing instruction, the XML declaration, or blanks outside the
    /// root.
    enum class Token { StartTag, EndTag, Text, CData, Other, End };
    static constexpr std::size_t kMaxDepth = 256;

    /// `text` is UTF-8 and outlives the scanner. `partName` goes into errors.
    explicit Scanner(std::string_view text, std::string_view partName = {});

    /// The next token. An empty element gives a StartTag, then an EndTag of length 0.
    /// Throws Error: DamagedWorkbook if the text is not well-formed (a repeated attribute included)
    /// or has a document type declaration, TooDeeplyNested beyond 256 levels.
    Token Next();

    std::size_t Begin() const { return begin_; } ///< offset of the token
    std::size_t End() const { return end_; }     ///< offset after the token
    std::string_view Raw() const { return text_.substr(begin_, end_ - begin_); }

    // StartTag and EndTag
    std::string_view Name() const { return name_; } ///< with its prefix
    std::string_view LocalName() const;
    std::string_view Prefix() const; ///< without the ":"
    /// The namespace URI of the current element; empty if its prefix is not declared.
    std::string NamespaceUri() const { return NamespaceUri(Prefix()); }
    /// The URI that a prefix stands for at the current element; "" is the default namespace.
    std::string NamespaceUri(std::string_view prefix) const;
    bool IsEmptyElement() const { return emptyElement_; }
    /// The number of open elements: at a StartTag its own is counted, at an EndTag no longer.
    std::size_t Depth() const { return stack_.size(); }

    // StartTag
    /// Checks that the prefixes of the element and its attributes are declared, for callers that
    /// check a whole part. Throws Error(DamagedWorkbook).
    void CheckPrefixes() const;
    /// The attribute with that name, prefix included; nothing if it is missing.
    std::optional<ScannedAttribute> Attribute(std::string_view name) const;
    /// Its decoded value.
    std::optional<std::string> AttributeText(std::string_view name) const;
    /// All attributes in order; valid until the next token.
    const std::vector<ScannedAttribute>& Attributes() const { return attributes_; }

    /// Skips from a StartTag past its EndTag; End() is then the offset after the element.
    void SkipElement();
    /// Reads from a StartTag to its EndTag. The decoded text of the element and of those in it.
    std::string ElementText();

private:
    struct Declaration {
        std::size_t depth; // of the element that declares it
        std::string_view prefix;
        std::string_view uri;                // undecoded
        std::optional<std::size_t> shadowed; // the outer declaration of the same prefix
    };

    Token ReadMarkup();
    Token ReadStartTag();
    void ReadAttribute(std::size_t blank);
    void CheckAttributeNames() const;
    void Declare(std::string_view prefix, std::string_view uri);
    void EndDeclarations();
    Token ReadEndTag();
    Token ReadText();
    Token ReadProcessingInstruction();
    Token ReadDeclaration();
    /// A comment or CDATA section from `begin_` to after `terminator`.
    Token ReadUntil(std::size_t contentBegin, std::string_view terminator, Token token);
    Token ReadEnd();
    void CloseElement();
    std::size_t SkipName(std::size_t at) const;
    std::size_t SkipBlanks(std::size_t at) const;
    char At(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }
    [[noreturn]] void Fail(std::size_t at, std::string_view what) const;

    std::string_view text_;
    std::string_view partName_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::string_view name_;
    bool emptyElement_ = false;
    bool pendingEnd_ = false;
    bool rootSeen_ = false;
    std::vector<std::string_view> stack_;                       // names of the open elements
    std::vector<ScannedAttribute> attributes_;                  // of the current StartTag
    std::vector<Declaration> declarations_;                     // of the open elements
    std::unordered_map<std::string_view, std::size_t> inScope_; // by prefix, into declarations_
};

} // namespace orrery::xml
