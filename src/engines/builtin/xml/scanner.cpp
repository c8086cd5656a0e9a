#include "engines/builtin/xml/scanner.h"

#include "book/error.h"
#include "engines/builtin/xml/declaration.h"
#include "util/error.h"
#include "util/text.h"

#include <algorithm>
#include <array>

namespace orrery::xml {
namespace {

// Classes of bytes, in a table because every byte of a sheet is looked up. Bytes of non-ASCII
// characters count as name characters, so the scanner accepts a little more than XML does.
constexpr unsigned char kNameStart = 1;
constexpr unsigned char kName = 2;
constexpr unsigned char kBlank = 4;
constexpr unsigned char kTextStop = 8;   // ends a run of plain text: "<", "&", what XML forbids
constexpr unsigned char kValueStop = 16; // the same in an attribute value: quotes too

constexpr std::array<unsigned char, 256> MakeClasses()
{
    std::array<unsigned char, 256> classes{};
    for (unsigned c = 0; c < 256; ++c) {
        const bool letter =
            (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':' || c >= 0x80;
        const bool blank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        const bool stop = c == '<' || c == '&' || (c < 0x20 && !blank);
        unsigned flags = 0;
        if (letter)
            flags |= kNameStart | kName;
        if ((c >= '0' && c <= '9') || c == '-' || c == '.')
            flags |= kName;
        if (blank)
            flags |= kBlank;
        if (stop)
            flags |= kTextStop;
        if (stop || c == '"' || c == '\'')
            flags |= kValueStop;
        classes[c] = static_cast<unsigned char>(flags);
    }
    return classes;
}

constexpr std::array<unsigned char, 256> kClasses = MakeClasses();

bool Is(char c, unsigned char flags)
{
    return (kClasses[static_cast<unsigned char>(c)] & flags) != 0;
}

constexpr std::string_view kXmlNamespace = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view kDeclaration = "xmlns";

} // namespace

std::string_view ScannedAttribute::Value(std::string& decoded) const
{
    return hasReferences ? decoded = DecodeAttribute(raw) : raw;
}

bool ScannedAttribute::Is(std::string_view text) const
{
    std::string decoded;
    return Value(decoded) == text;
}

Scanner::Scanner(std::string_view text, std::string_view partName)
    : text_(text), partName_(partName)
{
    stack_.reserve(16);
    attributes_.reserve(16);
}

Scanner::Token Scanner::Next()
{
    EndDeclarations();
    begin_ = end_;
    if (pendingEnd_) {
        pendingEnd_ = false;
        CloseElement();
        return Token::EndTag;
    }
    if (begin_ == text_.size())
        return ReadEnd();
    return text_[begin_] == '<' ? ReadMarkup() : ReadText();
}

Scanner::Token Scanner::ReadMarkup()
{
    const char kind = At(begin_ + 1);
    if (kind == '/')
        return ReadEndTag();
    if (kind == '?')
        return ReadProcessingInstruction();
    if (kind != '!')
        return ReadStartTag();
    const std::string_view rest = text_.substr(begin_);
    if (rest.starts_with("<!--")) {
        const Token comment = ReadUntil(begin_ + 4, "--", Token::Other);
        if (At(end_++) != '>')
            Fail(begin_, "a comment that is not well-formed");
        return comment;
    }
    if (rest.starts_with("<![CDATA[") && !stack_.empty())
        return ReadUntil(begin_ + 9, "]]>", Token::CData);
    // Without a document type no entity is ever expanded or fetched.
    if (rest.starts_with("<!DOCTYPE"))
        Fail(begin_, "a document type declaration, which workbooks must not have");
    Fail(begin_, "markup that XML does not know");
}

Scanner::Token Scanner::ReadStartTag()
{
    if (stack_.empty() && rootSeen_)
        Fail(begin_, "a second root element");
    std::size_t at = SkipName(begin_ + 1);
    name_ = text_.substr(begin_ + 1, at - begin_ - 1);
    if (stack_.size() == kMaxDepth)
        throw util::Error(book::ErrorKind::TooDeeplyNested, {}, std::string(partName_));
    stack_.push_back(name_);
    rootSeen_ = true;
    attributes_.clear();
    while (true) {
        const std::size_t blank = at;
        at = SkipBlanks(at);
        const char c = At(at);
        if (c == '>' || c == '/')
            break;
        if (at == blank) {
            Fail(at, at < text_.size() ? "a start tag that is not well-formed"
                                       : "a start tag without an end");
        }
        ReadAttribute(blank);
        at = attributes_.back().end;
    }
    CheckAttributeNames();
    emptyElement_ = text_[at] == '/';
    if (emptyElement_ && At(++at) != '>')
        Fail(at, "a start tag that is not well-formed");
    pendingEnd_ = emptyElement_;
    end_ = at + 1;
    return Token::StartTag;
}

void Scanner::ReadAttribute(std::size_t blank)
{
    const std::size_t nameBegin = SkipBlanks(blank);
    const std::size_t nameEnd = SkipName(nameBegin);
    std::size_t at = SkipBlanks(nameEnd);
    if (At(at) != '=')
        Fail(at, "an attribute without a value");
    at = SkipBlanks(at + 1);
    const char quote = At(at);
    if (quote != '"' && quote != '\'')
        Fail(at, "an attribute value without quotes");
    const std::size_t valueBegin = ++at;
    bool hasReferences = false;
    while (true) {
        while (at < text_.size() && !Is(text_[at], kValueStop))
            ++at;
        const char c = At(at);
        if (c == quote)
            break;
        if (c == '&' && ReferenceLength(text_.substr(at)) == 0)
            Fail(at, "an entity that XML does not know");
        if (c != '&' && c != '"' && c != '\'')
            Fail(at, "an attribute value that is not well-formed");
        hasReferences = hasReferences || c == '&';
        ++at;
    }
    const std::string_view name = text_.substr(nameBegin, nameEnd - nameBegin);
    const std::string_view value = text_.substr(valueBegin, at - valueBegin);
    attributes_.push_back({name, value, blank, valueBegin, at + 1, hasReferences});
    if (name.starts_with(kDeclaration)) {
        if (name.size() == kDeclaration.size())
            Declare({}, value);
        else if (name[kDeclaration.size()] == ':')
            Declare(name.substr(kDeclaration.size() + 1), value);
    }
}

void Scanner::CheckAttributeNames() const
{
    constexpr std::size_t kFew = 12; // up to this count, comparing all pairs is fastest
    const auto fail = [this](std::string_view name) {
        Fail(begin_, "the attribute \"" + std::string(name) + "\" is there twice");
    };
    if (attributes_.size() <= kFew) {
        for (std::size_t i = 1; i < attributes_.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                if (attributes_[i].name == attributes_[j].name)
                    fail(attributes_[i].name);
            }
        }
        return;
    }
    std::vector<std::string_view> names;
    for (const ScannedAttribute& attribute : attributes_)
        names.push_back(attribute.name);
    std::sort(names.begin(), names.end());
    if (const auto twice = std::adjacent_find(names.begin(), names.end()); twice != names.end())
        fail(*twice);
}

/// Other readers reject a prefix that is not declared. [XML Names] 5
void Scanner::CheckPrefixes() const
{
    const auto check = [this](std::string_view name) {
        const std::size_t colon = name.find(':');
        if (colon == std::string_view::npos)
            return;
        const std::string_view prefix = name.substr(0, colon);
        if (prefix != kDeclaration && prefix != "xml" && !inScope_.contains(prefix))
            Fail(begin_, "the prefix \"" + std::string(prefix) + "\" is not declared");
    };
    check(name_);
    for (const ScannedAttribute& attribute : attributes_)
        check(attribute.name);
}

void Scanner::Declare(std::string_view prefix, std::string_view uri)
{
    const auto [outer, isNew] = inScope_.try_emplace(prefix, declarations_.size());
    declarations_.push_back(
        {stack_.size(), prefix, uri, isNew ? std::nullopt : std::optional(outer->second)});
    outer->second = declarations_.size() - 1;
}

/// The declarations of an element are in scope up to its EndTag, that included.
void Scanner::EndDeclarations()
{
    while (!declarations_.empty() && declarations_.back().depth > stack_.size()) {
        const Declaration& over = declarations_.back();
        if (over.shadowed)
            inScope_[over.prefix] = *over.shadowed;
        else
            inScope_.erase(over.prefix);
        declarations_.pop_back();
    }
}

Scanner::Token Scanner::ReadEndTag()
{
    const std::size_t nameBegin = begin_ + 2;
    if (stack_.empty())
        Fail(begin_, "an end tag without a start tag");
    const std::string_view open = stack_.back();
    const std::size_t at = SkipBlanks(nameBegin + open.size());
    if (text_.substr(nameBegin, open.size()) != open || At(at) != '>')
        Fail(begin_, "an end tag that does not fit the element \"" + std::string(open) + "\"");
    end_ = at + 1;
    CloseElement();
    return Token::EndTag;
}

void Scanner::CloseElement()
{
    name_ = stack_.back();
    stack_.pop_back();
    emptyElement_ = false;
    attributes_.clear();
}

Scanner::Token Scanner::ReadText()
{
    std::size_t at = begin_;
    if (stack_.empty()) {
        at = SkipBlanks(at);
        if (at < text_.size() && text_[at] != '<')
            Fail(at, "text outside the root element");
        end_ = at;
        return Token::Other;
    }
    while (true) {
        while (at < text_.size() && !Is(text_[at], kTextStop))
            ++at;
        if (at == text_.size() || text_[at] == '<')
            break;
        if (text_[at] != '&')
            Fail(at, "a control character");
        if (ReferenceLength(text_.substr(at)) == 0)
            Fail(at, "an entity that XML does not know");
        ++at;
    }
    end_ = at;
    return Token::Text;
}

Scanner::Token Scanner::ReadProcessingInstruction()
{
    const std::size_t nameEnd = SkipName(begin_ + 2);
    if (util::EqualIgnoringCase(text_.substr(begin_ + 2, nameEnd - begin_ - 2), "xml"))
        return ReadDeclaration();
    if (SkipBlanks(nameEnd) == nameEnd && !text_.substr(nameEnd).starts_with("?>"))
        Fail(begin_, "an instruction that is not well-formed");
    return ReadUntil(nameEnd, "?>", Token::Other);
}

Scanner::Token Scanner::ReadDeclaration()
{
    if (begin_ != 0)
        Fail(begin_, "an XML declaration that is not at the beginning");
    const auto declaration = xml::ReadDeclaration(text_);
    if (!declaration)
        Fail(begin_, "an XML declaration that is not well-formed");
    end_ = declaration->end;
    return Token::Other;
}

Scanner::Token Scanner::ReadUntil(std::size_t contentBegin, std::string_view terminator,
                                  Token token)
{
    const std::size_t found = text_.find(terminator, contentBegin);
    if (found == std::string_view::npos)
        Fail(begin_, "a comment, section or instruction without an end");
    end_ = found + terminator.size();
    return token;
}

Scanner::Token Scanner::ReadEnd()
{
    if (!stack_.empty())
        Fail(begin_, "no end of the element \"" + std::string(stack_.back()) + "\"");
    if (!rootSeen_)
        Fail(begin_, "no element");
    return Token::End;
}

std::size_t Scanner::SkipName(std::size_t at) const
{
    if (!Is(At(at), kNameStart))
        Fail(at, "a tag that is not well-formed");
    while (Is(At(at), kName))
        ++at;
    return at;
}

std::size_t Scanner::SkipBlanks(std::size_t at) const
{
    while (Is(At(at), kBlank))
        ++at;
    return at;
}

void Scanner::Fail(std::size_t at, std::string_view what) const
{
    std::string cause(partName_);
    if (!cause.empty())
        cause += ", ";
    cause += "offset " + std::to_string(at) + ": " + std::string(what);
    throw util::Error(book::ErrorKind::DamagedWorkbook, {}, std::move(cause));
}

std::string_view Scanner::LocalName() const
{
    const std::size_t colon = name_.find(':');
    return colon == std::string_view::npos ? name_ : name_.substr(colon + 1);
}

std::string_view Scanner::Prefix() const
{
    const std::size_t colon = name_.find(':');
    return colon == std::string_view::npos ? std::string_view() : name_.substr(0, colon);
}

std::string Scanner::NamespaceUri(std::string_view prefix) const
{
    if (const auto declaration = inScope_.find(prefix); declaration != inScope_.end())
        return DecodeAttribute(declarations_[declaration->second].uri);
    return prefix == "xml" ? std::string(kXmlNamespace) : std::string();
}

std::optional<ScannedAttribute> Scanner::Attribute(std::string_view name) const
{
    for (const ScannedAttribute& attribute : attributes_) {
        if (attribute.name == name)
            return attribute;
    }
    return std::nullopt;
}

std::optional<std::string> Scanner::AttributeText(std::string_view name) const
{
    const auto attribute = Attribute(name);
    return attribute ? std::optional(DecodeAttribute(attribute->raw)) : std::nullopt;
}

void Scanner::SkipElement()
{
    const std::size_t depth = stack_.size();
    while (Next() != Token::EndTag || stack_.size() >= depth) {
    }
}

std::string Scanner::ElementText()
{
    constexpr std::size_t kCDataBegin = 9; // <![CDATA[
    constexpr std::size_t kCDataEnd = 3;   // ]]>
    const std::size_t depth = stack_.size();
    std::string text;
    while (true) {
        switch (Next()) {
        case Token::Text:
            text += DecodeText(Raw());
            break;
        case Token::CData:
            text += Raw().substr(kCDataBegin, Raw().size() - kCDataBegin - kCDataEnd);
            break;
        case Token::EndTag:
            if (stack_.size() < depth)
                return text;
            break;
        default:
            break;
        }
    }
}

} // namespace orrery::xml
