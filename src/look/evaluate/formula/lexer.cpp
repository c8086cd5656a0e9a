#include "look/evaluate/formula/lexer.h"

#include "util/fixed_text.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace orrery::formula {
namespace {

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}
bool IsLetter(char byte)
{
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}
bool IsBlankByte(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

constexpr std::array<std::pair<std::string_view, CellError>, 10> kErrors = {{
    {"#NULL!", CellError::Null},
    {"#DIV/0!", CellError::DivisionByZero},
    {"#VALUE!", CellError::Value},
    {"#REF!", CellError::Reference},
    {"#NAME?", CellError::Name},
    {"#NUM!", CellError::Number},
    {"#N/A", CellError::NotAvailable},
    {"#GETTING_DATA", CellError::GettingData},
    {"#SPILL!", CellError::Spill},
    {"#CALC!", CellError::Calculation},
}};

/// Takes "Jan:Mar" apart; a workbook's name in brackets stays.
void SetSheets(Token& token, std::string name)
{
    token.kind = TokenKind::Sheet;
    const auto colon = name.rfind(':');
    if (colon == std::string::npos || name.find('[') != std::string::npos) {
        token.lastSheet = name;
        token.text = std::move(name);
        return;
    }
    token.text = name.substr(0, colon);
    token.lastSheet = name.substr(colon + 1);
}

} // namespace

bool IsWordByte(char byte)
{
    return IsLetter(byte) || IsDigit(byte) || byte == '_' || byte == '.' || byte == '\\' ||
           byte == '?' || static_cast<unsigned char>(byte) >= 0x80;
}

Token Lexer::Next()
{
    const std::size_t begin = at_;
    while (IsBlankByte(At(at_)))
        ++at_;
    const bool hasSpace = at_ > begin;
    Token token = Read();
    token.hasSpaceBefore = hasSpace;
    return token;
}

Token Lexer::Read()
{
    Token token;
    if (at_ >= text_.size())
        return token;
    token.kind = TokenKind::Bad;
    const bool isRead = ReadText(token) || ReadError(token) || ReadQuotedSheet(token) ||
                        ReadArea(token) || ReadNumber(token) || ReadWord(token) ||
                        ReadBrackets(token) || ReadSymbol(token);
    if (!isRead)
        at_ = text_.size();
    return token;
}

bool Lexer::ReadText(Token& token)
{
    if (At(at_) != '"')
        return false;
    std::string text;
    for (std::size_t at = at_ + 1; at < text_.size(); ++at) {
        if (text_[at] == '"' && At(at + 1) != '"') {
            at_ = at + 1;
            token.kind = TokenKind::Text;
            token.text = std::move(text);
            return true;
        }
        if (text_[at] == '"')
            ++at;
        text += text_[at];
    }
    return false;
}

bool Lexer::ReadError(Token& token)
{
    if (At(at_) != '#')
        return false;
    for (const auto& [name, error] : kErrors) {
        if (util::EqualIgnoringCase(text_.substr(at_, name.size()), name)) {
            at_ += name.size();
            token.kind = TokenKind::Error;
            token.error = error;
            return true;
        }
    }
    return false;
}

bool Lexer::ReadQuotedSheet(Token& token)
{
    if (At(at_) != '\'')
        return false;
    std::string name;
    for (std::size_t at = at_ + 1; at < text_.size(); ++at) {
        if (text_[at] == '\'' && At(at + 1) != '\'') {
            if (At(at + 1) != '!')
                return false;
            at_ = at + 2;
            SetSheets(token, std::move(name));
            return true;
        }
        if (text_[at] == '\'')
            ++at;
        name += text_[at];
    }
    return false;
}

std::optional<Corner> Lexer::ReadColumn(std::size_t& at) const
{
    Corner corner;
    corner.isColumnRelative = At(at) != '$';
    if (!corner.isColumnRelative)
        ++at;
    std::int32_t column = 0;
    const std::size_t begin = at;
    for (; at - begin < 4 && IsLetter(At(at)); ++at)
        column = column * 26 + (At(at) & 0x1F);
    if (at == begin || column > kSheetColumns)
        return std::nullopt;
    corner.column = column;
    return corner;
}

std::optional<Corner> Lexer::ReadRow(std::size_t& at) const
{
    Corner corner;
    corner.isRowRelative = At(at) != '$';
    if (!corner.isRowRelative)
        ++at;
    std::int32_t row = 0;
    const std::size_t begin = at;
    for (; at - begin < 8 && IsDigit(At(at)); ++at)
        row = row * 10 + (At(at) - '0');
    if (at == begin || row < 1 || row > kSheetRows)
        return std::nullopt;
    corner.row = row;
    return corner;
}

std::optional<Corner> Lexer::ReadCell(std::size_t& at) const
{
    auto corner = ReadColumn(at);
    const auto row = corner ? ReadRow(at) : std::nullopt;
    if (!row)
        return std::nullopt;
    corner->row = row->row;
    corner->isRowRelative = row->isRowRelative;
    return corner;
}

bool Lexer::IsEndOfReference(std::size_t at) const
{
    return !IsWordByte(At(at)) && At(at) != '(' && At(at) != '!' && At(at) != '[';
}

/// "A:B" or "1:2".
bool Lexer::ReadSpan(Token& token, std::optional<Corner> (Lexer::*read)(std::size_t&) const)
{
    std::size_t at = at_;
    const auto first = (this->*read)(at);
    if (!first || At(at) != ':')
        return false;
    const auto last = (this->*read)(++at);
    if (!last || !IsEndOfReference(at))
        return false;
    token.area.first = *first;
    token.area.last = *last;
    if (read == &Lexer::ReadColumn)
        token.area.last.row = kSheetRows;
    else
        token.area.last.column = kSheetColumns;
    token.kind = TokenKind::Area;
    at_ = at;
    return true;
}

bool Lexer::ReadArea(Token& token)
{
    if (ReadSpan(token, &Lexer::ReadColumn) || ReadSpan(token, &Lexer::ReadRow))
        return true;
    std::size_t at = at_;
    const auto first = ReadCell(at);
    if (!first || !IsEndOfReference(at))
        return false;
    token.area.first = *first;
    token.area.last = *first;
    std::size_t end = at;
    if (At(at) == ':') {
        const auto last = ReadCell(++at);
        if (last && IsEndOfReference(at)) {
            token.area.last = *last;
            end = at;
        }
    }
    token.kind = TokenKind::Area;
    at_ = end;
    return true;
}

bool Lexer::ReadNumber(Token& token)
{
    if (!IsDigit(At(at_)) && !(At(at_) == '.' && IsDigit(At(at_ + 1))))
        return false;
    std::size_t end = at_;
    while (IsDigit(At(end)) || At(end) == '.')
        ++end;
    if (At(end) == 'E' || At(end) == 'e') {
        std::size_t exponent = end + 1;
        if (At(exponent) == '+' || At(exponent) == '-')
            ++exponent;
        if (IsDigit(At(exponent))) {
            for (end = exponent; IsDigit(At(end));)
                ++end;
        }
    }
    if (IsWordByte(At(end)) || At(end) == '!') // a sheet's name that begins with digits
        return false;
    const char* last = text_.data() + end;
    const auto result = std::from_chars(text_.data() + at_, last, token.number);
    if (result.ec != std::errc() || result.ptr != last)
        return false;
    token.kind = TokenKind::Number;
    at_ = end;
    return true;
}

bool Lexer::ReadWord(Token& token)
{
    std::size_t end = at_;
    if (At(end) == '[') { // "[1]Sheet1!A1", "[0]!name"
        end = text_.find(']', end);
        if (end == std::string_view::npos)
            return false;
        ++end;
    }
    while (IsWordByte(At(end)))
        ++end;
    std::size_t colon = end;
    if (At(end) == ':') { // "Jan:Mar!A1"
        for (++colon; IsWordByte(At(colon));)
            ++colon;
    }
    if (colon > end + 1 && At(colon) == '!')
        end = colon;
    if (end > at_ && At(end) == '!') {
        SetSheets(token, std::string(text_.substr(at_, end - at_)));
        at_ = end + 1;
        return true;
    }
    if (end == at_ || At(at_) == '[')
        return false;
    token.kind = At(end) == '(' ? TokenKind::Function : TokenKind::Word;
    token.text = text_.substr(at_, end - at_);
    at_ = end + (At(end) == '(' ? 1 : 0);
    return true;
}

bool Lexer::ReadBrackets(Token& token)
{
    if (At(at_) != '[')
        return false;
    int depth = 0;
    for (std::size_t at = at_; at < text_.size(); ++at) {
        if (text_[at] == '\'')
            ++at; // the next one stands for itself
        else if (text_[at] == '[')
            ++depth;
        else if (text_[at] == ']' && --depth == 0) {
            token.kind = TokenKind::Brackets;
            token.text = text_.substr(at_, at + 1 - at_);
            at_ = at + 1;
            return true;
        }
    }
    return false;
}

bool Lexer::ReadSymbol(Token& token)
{
    static constexpr std::array<util::FixedText<2>, 23> kSymbols = {
        "<=", ">=", "<>", "<", ">", "=", "+", "-", "*", "/", "^", "&",
        "%",  "(",  ")",  ",", ":", "{", "}", ";", "@", "#", "!"};
    const auto found =
        std::find_if(kSymbols.begin(), kSymbols.end(), [this](std::string_view symbol) {
            return text_.substr(at_, symbol.size()) == symbol;
        });
    if (found == kSymbols.end())
        return false;
    token.kind = TokenKind::Symbol;
    token.text = std::string_view(*found);
    at_ += token.text.size();
    return true;
}

} // namespace orrery::formula
