#include "engines/builtin/xlsx/shared_strings.h"

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/xml_reading.h"
#include "engines/common/cell_text.h"

#include <algorithm>
#include <optional>

namespace orrery::xlsx {

using builtin::TextPatch;

namespace {

constexpr std::string_view kNotCharacter1 = "\xEF\xBF\xBE"; // U+FFFE
constexpr std::string_view kNotCharacter2 = "\xEF\xBF\xBF"; // U+FFFF

bool IsHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

/// The code of the character at the beginning when XML cannot hold it, and its length in bytes.
struct Unwritable {
    unsigned code = 0;
    std::size_t length = 0; ///< 0 where XML can hold it
};

Unwritable UnwritableAt(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text.empty() ? ' ' : text.front());
    if (first < 0x20 && first != '\t' && first != '\n')
        return {first, 1};
    if (text.starts_with(kNotCharacter1))
        return {0xFFFE, kNotCharacter1.size()};
    if (text.starts_with(kNotCharacter2))
        return {0xFFFF, kNotCharacter2.size()};
    return {};
}

std::string Escape(unsigned code)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "_x";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += digits[(code >> static_cast<unsigned>(shift)) & 0xF];
    return text + '_';
}

/// Whether the text begins as an escape would in the file: its last underscore may also be the
/// first of the escape that follows.
bool LooksLikeEscape(std::string_view text)
{
    constexpr std::size_t kDigitsEnd = 6;
    if (!text.starts_with("_x") || text.size() <= kDigitsEnd)
        return false;
    const std::string_view digits = text.substr(2, kDigitsEnd - 2);
    return std::all_of(digits.begin(), digits.end(), IsHexDigit) &&
           (text[kDigitsEnd] == '_' || UnwritableAt(text.substr(kDigitsEnd)).length != 0);
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Whether readers may drop blanks of the text unless they are told not to.
bool NeedsPreserving(std::string_view text)
{
    return !text.empty() && (IsBlank(text.front()) || IsBlank(text.back()) ||
                             text.find('\n') != std::string_view::npos);
}

void SetNumber(TextPatch& patch, const std::optional<XmlAttribute>& attribute, std::size_t number)
{
    if (attribute)
        patch.Replace(attribute->valueBegin, attribute->end - 1, std::to_string(number));
}

/// A number of cells after a change of it.
std::size_t CountAfter(std::size_t number, long change)
{
    return change >= 0 || number >= static_cast<std::size_t>(-change)
               ? number + static_cast<std::size_t>(change)
               : 0;
}

} // namespace

std::string EscapeText(std::string_view text)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view rest = text.substr(at);
        if (const Unwritable unwritable = UnwritableAt(rest); unwritable.length != 0) {
            escaped += Escape(unwritable.code);
            at += unwritable.length;
            continue;
        }
        if (LooksLikeEscape(rest))
            escaped += Escape('_');
        else
            escaped += text[at];
        ++at;
    }
    return escaped;
}

SharedStrings::SharedStrings(PartText xml, std::string partName, std::string mainNamespace)
    : xml_(std::move(xml)), partName_(std::move(partName)), mainNamespace_(std::move(mainNamespace))
{
    if (xml_)
        ReadItems();
}

void SharedStrings::ReadItems()
{
    XmlScanner scanner(*xml_, partName_);
    EnterRoot(scanner);
    if (scanner.LocalName() != "sst") {
        throw util::Error(util::ErrorKind::DamagedWorkbook, {},
                          "the part " + partName_ + " holds no shared texts");
    }
    itemsEnd_ = scanner.End();
    ForEachChild(scanner, [&] {
        if (scanner.LocalName() != "si")
            return scanner.SkipElement();
        ReadItem(scanner);
        itemsEnd_ = scanner.End();
        ++count_;
    });
}

/// An item is plain when a single t is all that it has: no runs, no reading aids.
void SharedStrings::ReadItem(XmlScanner& scanner)
{
    std::size_t children = 0;
    std::optional<std::string> plain;
    ForEachChild(scanner, [&] {
        ++children;
        if (scanner.LocalName() != "t")
            return scanner.SkipElement();
        const auto space = scanner.Attribute("xml:space");
        const bool isPreserved = space && space->Is("preserve");
        plain = scanner.ElementText();
        if (NeedsPreserving(*plain) && !isPreserved)
            plain.reset();
    });
    if (children != 1 || !plain)
        return;
    texts_.push_back(std::move(*plain));
    indexes_.emplace(texts_.back(), count_);
}

std::size_t SharedStrings::IndexOf(std::string_view text)
{
    engines::CheckTextLength(text);
    std::string escaped = EscapeText(text);
    if (const auto found = indexes_.find(escaped); found != indexes_.end())
        return found->second;
    const std::size_t index = count_ + added_.size();
    texts_.push_back(std::move(escaped));
    added_.emplace_back(texts_.back());
    indexes_.emplace(texts_.back(), index);
    return index;
}

std::string SharedStrings::NewItems(std::string_view prefix) const
{
    const std::string item = std::string(prefix) + "si>";
    const std::string text = std::string(prefix) + 't';
    const std::string begin = '<' + item + '<' + text;
    const std::string end = "</" + text + "></" + item;
    std::string items;
    for (const std::string_view added : added_) {
        items += begin;
        items += NeedsPreserving(added) ? " xml:space=\"preserve\">" : ">";
        items += EncodeXmlText(added);
        items += end;
    }
    return items;
}

std::string SharedStrings::ToXml(long references) const
{
    if (!xml_) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<sst xmlns=\"" +
               EncodeXmlAttribute(mainNamespace_) + "\" count=\"" +
               std::to_string(CountAfter(0, references)) + "\" uniqueCount=\"" +
               std::to_string(added_.size()) + "\">" + NewItems({}) + "</sst>";
    }
    if (!Changed())
        return *xml_;
    XmlScanner scanner(*xml_, partName_);
    EnterRoot(scanner);
    const std::string_view root = scanner.Name();
    const std::string_view prefix = root.substr(0, root.size() - scanner.LocalName().size());
    TextPatch patch;
    if (const auto count = scanner.Attribute("count"); ReadDigits(count))
        SetNumber(patch, count, CountAfter(*ReadDigits(count), references));
    SetNumber(patch, scanner.Attribute("uniqueCount"), count_ + added_.size());
    if (scanner.IsEmptyElement())
        patch.Replace(scanner.End() - 2, scanner.End(),
                      '>' + NewItems(prefix) + "</" + std::string(root) + '>');
    else
        patch.Insert(itemsEnd_, NewItems(prefix));
    return patch.Apply(*xml_);
}

} // namespace orrery::xlsx
