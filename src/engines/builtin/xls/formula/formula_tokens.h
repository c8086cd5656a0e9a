#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Parsed expressions ("rgce"): a sequence of tokens, operands before their operators.
/// [MS-XLS] 2.5.198
namespace orrery::xls {

/// A token of an expression.
struct FormulaToken {
    std::uint8_t id = 0;   ///< [0x01:0x3F]; of operands, the id in the reference class
    std::size_t begin = 0; ///< offset in the expression
    std::size_t size = 0;  ///< bytes, with the id

    std::size_t End() const { return begin + size; }
};

/// Goes through the tokens of an expression.
class FormulaTokenReader {
public:
    explicit FormulaTokenReader(std::string_view rgce) : rgce_(rgce) {}

    /// The next token; nothing at the end, and if a token is unknown or runs past the end: the rest
    /// cannot be read then.
    std::optional<FormulaToken> Next();
    /// After `Next` returned nothing: whether all of the expression was read.
    bool Complete() const { return position_ == rgce_.size(); }

private:
    std::string_view rgce_;
    std::size_t position_ = 0;
};

/// What a token refers to outside its sheet.
struct FormulaUse {
    enum class Kind {
        Sheet,     ///< sheets, by an index into EXTERNSHEET's list
        Name,      ///< a name of this workbook, by a one-based index of the NAME records
        ExternName ///< both: a name in an entry of that list, often of an add-in
    };
    Kind kind = Kind::Sheet;
    std::size_t sheetAt = 0; ///< offset in the expression of that index, two bytes; not for Name
    std::size_t nameAt = 0;  ///< offset of the name's index, four bytes; not for Sheet
};
std::optional<FormulaUse> UseOf(const FormulaToken& token);

/// Whether the token is a volatile function, which may read anything (INDIRECT, OFFSET) or changes
/// on its own (TODAY), or the mark of a formula that has one.
bool IsVolatile(std::string_view rgce, const FormulaToken& token);

} // namespace orrery::xls
