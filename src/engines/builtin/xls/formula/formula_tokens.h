#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Parsed expressions ("rgce"): tokens one behind the other, operands before their operators.
/// [MS-XLS] 2.5.198
namespace orrery::xls {

/// A token of an expression.
struct FormulaToken {
    std::uint8_t id = 0;   ///< [0x01:0x3F]; operands of all three classes as those of references
    std::size_t begin = 0; ///< offset in the expression
    std::size_t size = 0;  ///< bytes, with the id

    std::size_t End() const { return begin + size; }
};

/// Goes through the tokens of an expression.
class FormulaTokenReader {
public:
    explicit FormulaTokenReader(std::string_view rgce) : rgce_(rgce) {}

    /// The next token; nothing at the end, and where a token is unknown or runs past the end: what
    /// comes behind cannot be told then.
    std::optional<FormulaToken> Next();
    /// After `Next` gave nothing: whether it was the end.
    bool Complete() const { return position_ == rgce_.size(); }

private:
    std::string_view rgce_;
    std::size_t position_ = 0;
};

/// What a token names outside its sheet.
struct FormulaUse {
    enum class Kind {
        Sheet,     ///< sheets, by an index of EXTERNSHEET's list
        Name,      ///< a name of this workbook, by a one-based index of the NAME records
        ExternName ///< both: a name of what the list gives, often of an add-in
    };
    Kind kind = Kind::Sheet;
    std::size_t sheetAt = 0; ///< offset in the expression of the two bytes; not for Name
    std::size_t nameAt = 0;  ///< offset of the four bytes of the name's index; not for Sheet
};
std::optional<FormulaUse> UseOf(const FormulaToken& token);

/// Whether the token is a function that may read anything (INDIRECT, OFFSET), that changes by
/// itself (TODAY), or the mark of a formula that has one.
bool IsRestless(std::string_view rgce, const FormulaToken& token);

} // namespace orrery::xls
