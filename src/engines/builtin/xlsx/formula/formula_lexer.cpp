#include "engines/builtin/xlsx/formula/formula_lexer.h"

#include "engines/builtin/xlsx/formula/cell_address.h"

#include <algorithm>
#include <array>

namespace orrery::xlsx {
namespace {

using Kind = FormulaToken::Kind;

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Whether names, cells and numbers can contain it. All characters beyond ASCII count: which of
/// them are letters matters only to a program that accepts new formulas.
bool IsRunCharacter(char c)
{
    return IsLetter(c) || IsDigit(c) || c == '_' || c == '.' || c == '$' || c == '\\' || c == '?' ||
           static_cast<unsigned char>(c) >= 0x80;
}

std::size_t SkipDollar(std::string_view text, std::size_t at)
{
    return at < text.size() && text[at] == '$' ? at + 1 : at;
}

bool IsColumn(std::string_view text)
{
    text.remove_prefix(SkipDollar(text, 0));
    std::size_t length = 0;
    return ReadColumn(text, length) != 0 && length == text.size();
}

bool IsRow(std::string_view text)
{
    text.remove_prefix(SkipDollar(text, 0));
    std::size_t length = 0;
    return ReadRow(text, length) != 0 && length == text.size();
}

/// Whether a sheet of that name can begin a range of sheets without apostrophes; "A1:Sheet2!B1" is
/// a range of cells.
bool MayBeginSheets(std::string_view run)
{
    return !IsDigit(run.front()) && run.find('$') == run.npos && !IsCellReference(run);
}

/// The text without its enclosing apostrophes, and with doubled ones single.
std::string Unquote(std::string_view text)
{
    std::string plain;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\'') {
            plain += text[i];
        }
        else if (quoted && i + 1 < text.size() && text[i + 1] == '\'') {
            plain += text[i++];
        }
        else {
            quoted = !quoted;
        }
    }
    return plain;
}

} // namespace

std::int32_t ReadColumn(std::string_view text, std::size_t& length)
{
    std::int32_t column = 0;
    for (length = 0; length < text.size() && IsLetter(text[length]); ++length) {
        const char lower = static_cast<char>(text[length] | 0x20);
        column = length < 3 ? column * 26 + (lower - 'a' + 1) : kSheetColumns + 1;
    }
    return column <= kSheetColumns ? column : 0;
}

std::int32_t ReadRow(std::string_view text, std::size_t& length)
{
    std::int32_t row = 0;
    for (length = 0; length < text.size() && IsDigit(text[length]); ++length)
        row = row <= kSheetRows ? row * 10 + (text[length] - '0') : row;
    return row <= kSheetRows ? row : 0;
}

bool IsCellReference(std::string_view text)
{
    std::size_t length = 0;
    std::size_t at = SkipDollar(text, 0);
    if (ReadColumn(text.substr(at), length) == 0)
        return false;
    at = SkipDollar(text, at + length);
    return ReadRow(text.substr(at), length) != 0 && at + length == text.size();
}

std::optional<FormulaToken> FormulaLexer::Next()
{
    if (at_ >= text_.size())
        return std::nullopt;
    FormulaToken token;
    token.begin = at_;
    token.kind = ReadToken();
    token.end = at_;
    afterPrefix_ = token.kind == Kind::Prefix;
    afterName_ = token.kind == Kind::Name;
    return token;
}

FormulaToken::Kind FormulaLexer::ReadToken()
{
    if (const std::size_t end = PrefixEnd(); end != at_) {
        at_ = end;
        return Kind::Prefix;
    }
    switch (const char c = text_[at_]) {
    case '"':
    case '\'':
        at_ = QuotedEnd(at_);
        return Kind::Text;
    case '[':
        at_ = BracketsEnd(at_);
        return Kind::Brackets;
    case '#':
        at_ = ErrorEnd(at_);
        return text_[at_ - 1] == c ? Kind::Other : Kind::Error;
    default:
        if (IsRunCharacter(c))
            return ReadRun();
        ++at_;
        return Kind::Other;
    }
}

FormulaToken::Kind FormulaLexer::ReadRun()
{
    const std::size_t end = RunEnd(at_);
    const std::string_view run = text_.substr(at_, end - at_);
    if (At(end) != '(') {
        if (const auto range = ReadRange(end))
            return *range;
        if (IsDigit(run.front()) || run.front() == '.') {
            at_ = NumberEnd(end);
            return Kind::Number;
        }
    }
    at_ = end;
    if (At(end) == '(')
        return Kind::Function; // LOG10(100), even though LOG10 is a cell too
    return At(end) != '[' && IsCellReference(run) ? Kind::Cell : Kind::Name;
}

std::optional<FormulaToken::Kind> FormulaLexer::ReadRange(std::size_t runEnd)
{
    if (At(runEnd) != ':')
        return std::nullopt;
    const std::size_t end = RunEnd(runEnd + 1);
    const char next = At(end);
    if (next == '(' || next == '[' || next == '!')
        return std::nullopt;
    const std::string_view first = text_.substr(at_, runEnd - at_);
    const std::string_view last = text_.substr(runEnd + 1, end - runEnd - 1);
    const bool columns = IsColumn(first) && IsColumn(last);
    if (!columns && !(IsRow(first) && IsRow(last)))
        return std::nullopt;
    at_ = end;
    return columns ? Kind::Columns : Kind::Rows;
}

/// The end of the prefix that begins here; `at_` if none does.
std::size_t FormulaLexer::PrefixEnd() const
{
    const char c = text_[at_];
    if (afterPrefix_ || (afterName_ && c == '['))
        return at_;
    const std::size_t sheet = c == '[' ? BracketsEnd(at_) : at_;
    const std::size_t end = SheetEnd(sheet);
    if (end == at_)
        return at_;
    if (At(end) == '!')
        return end + 1;
    if (At(end) != ':' || end == sheet ||
        (c != '\'' && !MayBeginSheets(text_.substr(sheet, end - sheet))))
        return at_;
    const std::size_t last = SheetEnd(end + 1);
    return last > end + 1 && At(last) == '!' ? last + 1 : at_;
}

std::size_t FormulaLexer::SheetEnd(std::size_t at) const
{
    return At(at) == '\'' ? QuotedEnd(at) : RunEnd(at);
}

std::size_t FormulaLexer::RunEnd(std::size_t at) const
{
    while (at < text_.size() && IsRunCharacter(text_[at]))
        ++at;
    return at;
}

std::size_t FormulaLexer::QuotedEnd(std::size_t at) const
{
    const char quote = text_[at];
    for (++at; at < text_.size(); ++at) {
        if (text_[at] != quote)
            continue;
        if (At(at + 1) != quote)
            return at + 1;
        ++at;
    }
    return text_.size();
}

std::size_t FormulaLexer::BracketsEnd(std::size_t at) const
{
    std::size_t depth = 0;
    for (; at < text_.size(); ++at) {
        const char c = text_[at];
        if (c == '\'') {
            ++at; // an escaped character of a column's name: [Col'[x']]
        }
        else if (c == '[') {
            ++depth;
        }
        else if (c == ']' && --depth == 0) {
            return at + 1;
        }
    }
    return text_.size();
}

/// The end of an error value, or of the "#" of a spilled range.
std::size_t FormulaLexer::ErrorEnd(std::size_t at) const
{
    constexpr std::array<std::string_view, 2> kWithSlash = {"#N/A", "#DIV/0!"};
    const std::string_view rest = text_.substr(at);
    for (const std::string_view error : kWithSlash) {
        if (std::equal(error.begin(), error.end(), rest.begin(),
                       rest.begin() +
                           static_cast<std::ptrdiff_t>(std::min(error.size(), rest.size())),
                       [](char expected, char c) {
                           return expected == (IsLetter(c) ? static_cast<char>(c & ~0x20) : c);
                       }))
            return at + error.size();
    }
    std::size_t end = at + 1;
    while (IsLetter(At(end)) || At(end) == '_')
        ++end;
    return end > at + 1 && (At(end) == '!' || At(end) == '?') ? end + 1 : end;
}

/// The end of a number that may have a signed exponent (1E+5).
std::size_t FormulaLexer::NumberEnd(std::size_t runEnd) const
{
    const std::string_view run = text_.substr(at_, runEnd - at_);
    const bool exponent = run.find_first_not_of("0123456789.") == run.size() - 1 &&
                          (run.back() == 'E' || run.back() == 'e');
    const bool sign = At(runEnd) == '+' || At(runEnd) == '-';
    if (!exponent || !sign || !IsDigit(At(runEnd + 1)))
        return runEnd;
    std::size_t end = runEnd + 1;
    while (IsDigit(At(end)))
        ++end;
    return end;
}

std::optional<SheetPrefix> ParseSheetPrefix(std::string_view token)
{
    constexpr std::string_view kThisBook = "[0]";
    std::string sheets = Unquote(token.substr(0, token.size() - 1));
    SheetPrefix prefix;
    if (sheets.starts_with(kThisBook)) {
        prefix.Book = kThisBook;
        sheets.erase(0, kThisBook.size());
    }
    // Characters that no sheet name can have belong to the path or name of another workbook.
    if (sheets.find_first_of("[]\\/?*") != sheets.npos)
        return std::nullopt;
    const std::size_t colon = sheets.find(':');
    prefix.First = sheets.substr(0, colon);
    if (colon != sheets.npos)
        prefix.Last = sheets.substr(colon + 1);
    if (prefix.Last.find(':') != prefix.Last.npos)
        return std::nullopt;
    return prefix;
}

} // namespace orrery::xlsx
