#include "exchange/table/row_reader.h"

#include "util/text.h"

#include <algorithm>

namespace orrery::exchange {
namespace {

/// A field in quotes that is longer was not meant so: its quote is not closed.
constexpr std::size_t kMostQuoted = 1U << 16U;
constexpr std::size_t kMostRead = 4096; ///< bytes of a field

bool IsLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

} // namespace

bool RawRow::IsEmpty() const
{
    return std::all_of(fields.begin(), fields.end(), [](const RawField& field) {
        return util::Trim(BeginningOf(field)).empty();
    });
}

bool RowReader::EndsField(std::size_t at) const
{
    return at >= text_.size() || IsLineEnd(text_[at]) ||
           (separator_ != kNoSeparator && text_[at] == separator_);
}

bool RowReader::ReadQuoted(std::size_t start, RawField& field, bool& isBroken)
{
    const std::string_view text = text_.substr(0, std::min(text_.size(), start + kMostQuoted));
    std::size_t lines = 0;
    for (std::size_t at = start + 1; at < text.size(); ++at) {
        const bool isPair = text.substr(at).starts_with("\r\n");
        lines += IsLineEnd(text[at]) && !isPair ? 1U : 0U;
        if (text[at] != '"')
            continue;
        if (text.substr(at + 1).starts_with('"')) {
            ++at;
            continue;
        }
        field = {text.substr(start + 1, at - start - 1), true};
        std::size_t end = at + 1;
        while (!EndsField(end) && text_[end] == ' ')
            ++end;
        if (!EndsField(end)) // "Ben" Smith
            return false;
        at_ = end;
        line_ += lines;
        return true;
    }
    isBroken = true;
    return false;
}

RawField RowReader::ReadField(bool& isBroken)
{
    RawField field;
    std::size_t start = at_;
    while (!EndsField(start) && text_[start] == ' ')
        ++start;
    if (separator_ != kNoSeparator && start < text_.size() && text_[start] == '"' && !isBroken &&
        ReadQuoted(start, field, isBroken))
        return field;
    const std::size_t begin = at_;
    while (!EndsField(at_))
        ++at_;
    return {text_.substr(begin, at_ - begin), false};
}

bool RowReader::Next(RawRow& row)
{
    if (at_ >= text_.size())
        return false;
    row.line = line_;
    row.isBroken = false;
    row.fields.clear();
    for (;;) {
        const RawField field = ReadField(row.isBroken);
        if (row.fields.size() < kMostFields)
            row.fields.push_back(field);
        if (at_ >= text_.size() || IsLineEnd(text_[at_]))
            break;
        ++at_; // the separator
    }
    if (at_ < text_.size())
        at_ += text_.substr(at_).starts_with("\r\n") ? 2U : 1U;
    ++line_;
    return true;
}

std::string_view BeginningOf(const RawField& field)
{
    return util::Trim(field.text.substr(0, kMostRead));
}

std::string WithSingleQuotes(std::string text)
{
    for (std::size_t at = 0; (at = text.find("\"\"", at)) != std::string::npos; ++at)
        text.erase(at, 1);
    return text;
}

} // namespace orrery::exchange
