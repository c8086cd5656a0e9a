#pragma once

#include "look/evaluate/formula/tree.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::formula {

enum class TokenKind : std::uint8_t {
    End,
    Bad,
    Number,
    Text,
    Error,
    Area,     ///< "A1", "A1:B2", "A:B", "1:2", without sheets
    Word,     ///< a name, TRUE, FALSE
    Function, ///< a word before "(", which is taken
    Sheet,    ///< what stands before "!", which is taken; "[" is in `text` if it names a workbook
    Brackets, ///< "[...]" with all inside
    Symbol    ///< one or two characters in `text`
};

struct Token {
    TokenKind kind = TokenKind::End;
    bool hasSpaceBefore = false;
    std::string text;
    std::string lastSheet; ///< of Sheet: of "Jan:Mar!"
    double number = 0;
    CellError error = CellError::Value;
    AreaText area;
};

/// Cuts a formula into tokens.
class Lexer {
public:
    explicit Lexer(std::string_view text) : text_(text) {}
    Token Next();

private:
    Token Read();
    bool ReadText(Token& token);
    bool ReadError(Token& token);
    bool ReadQuotedSheet(Token& token);
    bool ReadArea(Token& token);
    bool ReadNumber(Token& token);
    bool ReadWord(Token& token);
    bool ReadBrackets(Token& token);
    bool ReadSymbol(Token& token);
    std::optional<Corner> ReadCell(std::size_t& at) const;
    std::optional<Corner> ReadColumn(std::size_t& at) const;
    std::optional<Corner> ReadRow(std::size_t& at) const;
    bool ReadSpan(Token& token, std::optional<Corner> (Lexer::*read)(std::size_t&) const);
    bool IsEndOfReference(std::size_t at) const;
    char At(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }

    std::string_view text_;
    std::size_t at_ = 0;
};

/// Whether a byte may stand in a name: letters, digits, "_", ".", "\\", "?" and all beyond ASCII.
bool IsWordByte(char byte);

} // namespace orrery::formula
