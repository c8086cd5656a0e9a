#include "look/evaluate/functions/text/text.h"

#include "book/names.h"
#include "look/evaluate/values/compare.h"
#include "util/unicode.h"

#include <algorithm>
#include <cmath>

namespace orrery::formula {
namespace {

constexpr auto kNone = std::u16string_view::npos;

std::u16string Units(Call& call, std::size_t at)
{
    return util::ToUtf16(call.Text(at));
}

/// A count of characters; fails if it is negative.
std::size_t Count(Call& call, std::size_t at, double absent, double lowest = 0)
{
    const double count = call.Whole(at, absent);
    if (!call.Require(count >= lowest, CellError::Value))
        return 0;
    return static_cast<std::size_t>(std::min(count, 1e9));
}

/// Looking for a text in another may compare each character with each.
bool SpendSearch(Call& call, std::size_t text, std::size_t wanted)
{
    return call.context.Spend(text * wanted / 1024);
}

Value Bounded(Call& call, std::string text)
{
    call.Require(text.size() <= 3 * kLongestText, CellError::Value);
    return text;
}

Value Left(Call& call)
{
    return util::FromUtf16(Units(call, 0).substr(0, Count(call, 1, 1)));
}

Value Right(Call& call)
{
    const std::u16string text = Units(call, 0);
    return util::FromUtf16(text.substr(text.size() - std::min(text.size(), Count(call, 1, 1))));
}

Value Mid(Call& call)
{
    const std::u16string text = Units(call, 0);
    const std::size_t begin = Count(call, 1, 0, 1);
    const std::size_t count = Count(call, 2, 0);
    if (begin == 0 || begin > text.size())
        return std::string();
    return util::FromUtf16(text.substr(begin - 1, count));
}

Value Find(Call& call)
{
    const std::u16string wanted = Units(call, 0);
    const std::u16string text = Units(call, 1);
    const std::size_t from = Count(call, 2, 1, 1);
    if (from == 0 || from > text.size() + 1 || !SpendSearch(call, text.size(), wanted.size()))
        return CellError::Value;
    const std::size_t found = text.find(wanted, from - 1);
    return found == kNone ? Value(CellError::Value) : Value(static_cast<double>(found + 1));
}

std::size_t CountUnits(std::u32string_view characters)
{
    const auto beyond = std::count_if(characters.begin(), characters.end(),
                                      [](char32_t character) { return character > 0xFFFF; });
    return characters.size() + static_cast<std::size_t>(beyond);
}

Value Search(Call& call)
{
    const std::string wanted = call.Text(0);
    const TextPattern pattern(wanted);
    const std::u32string text = ToCharacters(book::FoldCase(call.Text(1)));
    const std::size_t from = Count(call, 2, 1, 1);
    if (from == 0 || from > text.size() + 1 || !SpendSearch(call, text.size(), wanted.size()))
        return CellError::Value;
    const std::size_t found = pattern.Find(text, from - 1);
    if (found == std::u32string::npos)
        return CellError::Value;
    return static_cast<double>(CountUnits(std::u32string_view(text).substr(0, found)) + 1);
}

Value Replace(Call& call)
{
    std::u16string text = Units(call, 0);
    const std::size_t begin = Count(call, 1, 0, 1);
    const std::size_t count = Count(call, 2, 0);
    if (begin == 0)
        return CellError::Value;
    const std::size_t at = std::min(begin - 1, text.size());
    text.replace(at, std::min(count, text.size() - at), Units(call, 3));
    return Bounded(call, util::FromUtf16(text));
}

Value Substitute(Call& call)
{
    const std::string text = call.Text(0);
    const std::string wanted = call.Text(1);
    const std::string instead = call.Text(2);
    const double only = call.Whole(3, 0);
    if (call.Has(3) && only < 1)
        return CellError::Value;
    if (wanted.empty() || !SpendSearch(call, text.size(), wanted.size()))
        return text;
    std::string result;
    std::size_t begin = 0;
    double count = 0;
    for (std::size_t at = text.find(wanted); at != std::string::npos && result.size() < 1'000'000;
         at = text.find(wanted, at + wanted.size())) {
        if (only != 0 && ++count != only)
            continue;
        result.append(text, begin, at - begin);
        result += instead;
        begin = at + wanted.size();
    }
    return Bounded(call, result + text.substr(begin));
}

Value Repeat(Call& call)
{
    const std::string text = call.Text(0);
    const std::size_t count = Count(call, 1, 0);
    if (text.empty() || count == 0)
        return std::string();
    if (count > kLongestText || text.size() * count > kLongestText)
        return CellError::Value;
    std::string result;
    for (std::size_t at = 0; at < count; ++at)
        result += text;
    return result;
}

Value Concatenate(Call& call)
{
    std::string result;
    for (std::size_t at = 0; at < call.Count() && result.size() < 1'000'000; ++at)
        result += call.Text(at);
    return Bounded(call, std::move(result));
}

/// Appends the texts of an argument, a separator between any two; all cells, the empty ones too, if
/// wanted.
class Joiner {
public:
    Joiner(Call& call, std::vector<std::string> separators, bool skipsEmpty)
        : call_(call), separators_(std::move(separators)), skipsEmpty_(skipsEmpty)
    {
    }
    void Add(std::size_t at)
    {
        const auto* single = std::get_if<Value>(&call_.arguments[at]);
        if (single != nullptr) {
            AddValue(*single);
            return;
        }
        if (skipsEmpty_) {
            call_.ForEach(at, [this](const Value& value, Call::Source) { return AddValue(value); });
            return;
        }
        const ArrayPointer table = call_.Table(at);
        for (const Value& value : table->values)
            if (!AddValue(value))
                return;
    }
    std::string Take() { return std::move(text_); }

private:
    bool AddValue(const Value& value)
    {
        const auto converted = ToText(value);
        if (converted.error)
            call_.Fail(*converted.error);
        if (skipsEmpty_ && converted.value.empty())
            return !call_.failure;
        if (count_++ > 0)
            text_ += separators_[(count_ - 2) % separators_.size()];
        text_ += converted.value;
        return !call_.failure && call_.Require(text_.size() <= 3 * kLongestText, CellError::Value);
    }

    Call& call_;
    std::vector<std::string> separators_;
    bool skipsEmpty_;
    std::size_t count_ = 0;
    std::string text_;
};

Value Concat(Call& call)
{
    Joiner joiner(call, {""}, true);
    for (std::size_t at = 0; at < call.Count() && !call.failure; ++at)
        joiner.Add(at);
    return joiner.Take();
}

Value TextJoin(Call& call)
{
    std::vector<std::string> separators;
    const ArrayPointer given = call.Table(0);
    for (const Value& value : given->values)
        separators.push_back(ToText(value).value);
    Joiner joiner(call, std::move(separators), call.Logical(1));
    for (std::size_t at = 2; at < call.Count() && !call.failure; ++at)
        joiner.Add(at);
    return joiner.Take();
}

/// TEXTBEFORE, TEXTAFTER without their rarer arguments.
Value Around(Call& call, bool isBefore)
{
    const std::string text = call.Text(0);
    const std::string mark = call.Text(1);
    const double instance = std::trunc(call.Number(2, 1));
    if (instance == 0 || mark.empty() || !SpendSearch(call, text.size(), mark.size()))
        return CellError::Value;
    std::size_t at = std::string::npos;
    std::size_t from = instance > 0 ? 0 : text.size();
    // There are no more of them than the text has bytes.
    const double wanted = std::min(std::fabs(instance), static_cast<double>(text.size()) + 1);
    for (auto left = static_cast<std::size_t>(wanted); left > 0; --left) {
        at = instance > 0 ? text.find(mark, from) : text.rfind(mark, from);
        if (at == std::string::npos || (instance < 0 && at == 0 && left > 1))
            return CellError::NotAvailable;
        from = instance > 0 ? at + mark.size() : at - 1;
    }
    return isBefore ? text.substr(0, at) : text.substr(at + mark.size());
}

} // namespace

const FunctionList& TextFunctions()
{
    static const FunctionList kFunctions = {
        {"LEFT", "v|v", Left},
        {"LEFTB", "v|v", Left},
        {"RIGHT", "v|v", Right},
        {"RIGHTB", "v|v", Right},
        {"MID", "vvv", Mid},
        {"MIDB", "vvv", Mid},
        {"LEN", "v",
         [](Call& call) -> Value { return static_cast<double>(Units(call, 0).size()); }},
        {"LENB", "v",
         [](Call& call) -> Value { return static_cast<double>(Units(call, 0).size()); }},
        {"FIND", "vv|v", Find},
        {"FINDB", "vv|v", Find},
        {"SEARCH", "vv|v", Search},
        {"SEARCHB", "vv|v", Search},
        {"REPLACE", "vvvv", Replace},
        {"REPLACEB", "vvvv", Replace},
        {"SUBSTITUTE", "vvv|v", Substitute},
        {"REPT", "vv", Repeat},
        {"CONCATENATE", "v", Concatenate, 1},
        {"CONCAT", "r", Concat, 1},
        {"TEXTJOIN", "rvr", TextJoin, 1},
        {"EXACT", "vv", [](Call& call) -> Value { return call.Text(0) == call.Text(1); }},
        {"TEXTBEFORE", "vv|v", [](Call& call) { return Around(call, true); }},
        {"TEXTAFTER", "vv|v", [](Call& call) { return Around(call, false); }},
    };
    return kFunctions;
}

} // namespace orrery::formula
