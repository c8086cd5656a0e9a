#include "engines/builtin/xlsx/sheet/shared_strings.h"

#include "book/error.h"
#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/formula/escaped_text.h"
#include "engines/builtin/xml/reading.h"
#include "engines/common/cell_text.h"

#include <algorithm>
#include <optional>

namespace orrery::xlsx {

using builtin::TextPatch;

namespace {

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Whether readers may drop blanks of the text unless told to preserve them.
bool NeedsPreserving(std::string_view text)
{
    return !text.empty() && (IsBlank(text.front()) || IsBlank(text.back()) ||
                             text.find('\n') != std::string_view::npos);
}

void SetNumber(TextPatch& patch, const std::optional<xml::ScannedAttribute>& attribute,
               std::size_t number)
{
    if (attribute)
        patch.Replace(attribute->valueBegin, attribute->end - 1, std::to_string(number));
}

std::size_t CountAfter(std::size_t number, long change)
{
    return change >= 0 || number >= static_cast<std::size_t>(-change)
               ? number + static_cast<std::size_t>(change)
               : 0;
}

} // namespace

SharedStrings::SharedStrings(PartText xml, std::string partName, std::string mainNamespace)
    : xml_(std::move(xml)), partName_(std::move(partName)), mainNamespace_(std::move(mainNamespace))
{
    if (xml_)
        ReadItems();
}

void SharedStrings::ReadItems()
{
    xml::Scanner scanner(*xml_, partName_);
    xml::EnterRoot(scanner);
    if (scanner.LocalName() != "sst") {
        throw util::Error(book::ErrorKind::DamagedWorkbook, {},
                          "the part " + partName_ + " holds no shared texts");
    }
    itemsEnd_ = scanner.End();
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() != "si")
            return scanner.SkipElement();
        ReadItem(scanner);
        itemsEnd_ = scanner.End();
        ++count_;
    });
}

/// An item is plain if it consists of a single t element: no runs, no phonetic data.
void SharedStrings::ReadItem(xml::Scanner& scanner)
{
    std::size_t children = 0;
    std::optional<std::string> plain;
    xml::ForEachChild(scanner, [&] {
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
        items += xml::EncodeText(added);
        items += end;
    }
    return items;
}

std::string SharedStrings::ToXml(long references) const
{
    if (!xml_) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<sst xmlns=\"" +
               xml::EncodeAttribute(mainNamespace_) + "\" count=\"" +
               std::to_string(CountAfter(0, references)) + "\" uniqueCount=\"" +
               std::to_string(added_.size()) + "\">" + NewItems({}) + "</sst>";
    }
    if (!Changed())
        return *xml_;
    xml::Scanner scanner(*xml_, partName_);
    xml::EnterRoot(scanner);
    const std::string_view root = scanner.Name();
    const std::string_view prefix = root.substr(0, root.size() - scanner.LocalName().size());
    TextPatch patch;
    if (const auto count = scanner.Attribute("count"); xml::ReadDigits(count))
        SetNumber(patch, count, CountAfter(*xml::ReadDigits(count), references));
    SetNumber(patch, scanner.Attribute("uniqueCount"), count_ + added_.size());
    if (scanner.IsEmptyElement())
        patch.Replace(scanner.End() - 2, scanner.End(),
                      '>' + NewItems(prefix) + "</" + std::string(root) + '>');
    else
        patch.Insert(itemsEnd_, NewItems(prefix));
    return patch.Apply(*xml_);
}

} // namespace orrery::xlsx
