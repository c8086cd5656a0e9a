#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// How tightly the outermost operator of an expression binds, loosest first.
enum class Binding : std::uint8_t {
    Union,
    Comparison,
    Concatenation,
    Sum,
    Product,
    Power,
    Percent,
    Sign,
    Intersection,
    Range,
    Operand
};

/// Puts a formula together from operands that come before their operators. Its pieces are joined in
/// `Take`, so that each step takes the same time however long the operands are.
class FormulaParts {
public:
    /// The longest text of a formula, in bytes. Excel's formulas have up to 8,192 characters.
    static constexpr std::size_t kLongest = 32768;

    // These return false if operands are missing or the text becomes too long.
    bool Add(std::string text, Binding binding = Binding::Operand);
    bool Join(std::string_view op, Binding binding); ///< the last two operands
    bool PutBefore(std::string_view op, Binding binding);
    bool PutAfter(std::string_view op, Binding binding);
    bool Enclose(); ///< the last operand in parentheses
    /// `name` followed by the last `count` operands in parentheses; without a name the first of
    /// them is the name.
    bool Call(std::string_view name, std::size_t count);

    /// The text, if there is exactly one operand.
    std::optional<std::string> Take() const;

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    struct Piece {
        std::string text;
        std::size_t next = kNone;
    };
    struct Operand {
        std::size_t first = 0; // pieces
        std::size_t last = 0;
        Binding binding = Binding::Operand;
    };

    std::size_t AddPiece(std::string_view text);
    void Prepend(Operand& operand, std::string_view text);
    void Append(Operand& operand, std::string_view text);
    void Append(Operand& operand, const Operand& other);
    void EncloseIf(Operand& operand, bool isNeeded);
    bool FitsText() const { return size_ <= kLongest; }

    std::vector<Piece> pieces_;
    std::vector<Operand> operands_;
    std::size_t size_ = 0; // of all pieces
};

} // namespace orrery::xls
