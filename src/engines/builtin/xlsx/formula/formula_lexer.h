#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::xlsx {

/// A token of a formula, as a range of its text.
struct FormulaToken {
    enum class Kind {
        Prefix,   ///< sheets and workbook before a reference or name, "!" included
        Cell,     ///< A1, $B$6
        Columns,  ///< A:C, $A:$A
        Rows,     ///< 1:3, $1:$1
        Name,     ///< a defined name, a table, TRUE, FALSE
        Function, ///< the name before "("
        Brackets, ///< of a structured reference: [Day], [[#This Row],[Day]]
        Text,     ///< "Monday", also a text in apostrophes without "!" after it
        Number,
        Error, ///< #REF!, #N/A
        Other, ///< one sign or blank
    };
    Kind kind = Kind::Other;
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Reads a formula in the A1 form of workbook files, without "=" before it.
///
///     formula   = { token }
///     prefix    = ( [book] [sheets] | "'" [path] [book] [sheets] "'" ) "!"
///     book      = "[" (number | file name) "]"          number 0 is the workbook itself
///     sheets    = sheet [":" sheet]
///     cell      = ["$"] letters ["$"] digits            not before "("
///     text      = '"' {any, '"' doubled} '"'
///     brackets  = "[" {any, "'" before a sign, brackets} "]"
///
/// So "SUM('It''s:Dec'!A1)" has one prefix; in "LOG10(A1)" only A1 is a cell. Every text is read to
/// its end: one that is not a formula gives tokens, too.
class FormulaLexer {
public:
    /// `formula` is decoded text and outlives the lexer.
    explicit FormulaLexer(std::string_view formula) : text_(formula) {}

    /// The next token; nothing at the end.
    std::optional<FormulaToken> Next();
    std::string_view TextOf(const FormulaToken& token) const
    {
        return text_.substr(token.begin, token.end - token.begin);
    }

private:
    FormulaToken::Kind ReadToken();
    FormulaToken::Kind ReadRun();
    std::optional<FormulaToken::Kind> ReadRange(std::size_t runEnd);
    std::size_t PrefixEnd() const;
    std::size_t SheetEnd(std::size_t at) const;
    std::size_t RunEnd(std::size_t at) const;
    std::size_t QuotedEnd(std::size_t at) const;
    std::size_t BracketsEnd(std::size_t at) const;
    std::size_t ErrorEnd(std::size_t at) const;
    std::size_t NumberEnd(std::size_t runEnd) const;
    char At(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }

    std::string_view text_;
    std::size_t at_ = 0;
    bool afterPrefix_ = false; // no second prefix follows
    bool afterName_ = false;   // brackets belong to a table
};

/// The sheets and the workbook in a prefix, decoded.
struct SheetPrefix {
    std::string Book;  ///< "[0]" if it is written, else empty
    std::string First; ///< empty if only the workbook is named ("[0]!Name")
    std::string Last;  ///< the other end of a range of sheets; empty for one sheet
};
/// Reads a prefix token, "!" included; nothing if it names another workbook.
std::optional<SheetPrefix> ParseSheetPrefix(std::string_view token);

/// Whether the text is a cell within the sheet ("A1", "$b$6"; not "A0", "XFE1").
bool IsCellReference(std::string_view text);

/// The column at the beginning of `text`, from 1, up to the first character that is not a letter; 0
/// if the sheet has no such column. `length` becomes the number of letters.
std::int32_t ReadColumn(std::string_view text, std::size_t& length);
/// The same for a row.
std::int32_t ReadRow(std::string_view text, std::size_t& length);

} // namespace orrery::xlsx
