#include "engines/builtin/xls/formula_text/formula_text.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/formula/formula_tokens.h"
#include "engines/builtin/xls/formula_text/formula_parts.h"
#include "engines/builtin/xls/formula_text/function_table.h"
#include "engines/builtin/xls/formula_text/token_text.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/error.h"

#include <array>
#include <bit>
#include <cstdint>

namespace orrery::xls {
namespace {

constexpr std::uint8_t kSumAttribute = 0x10;

/// [MS-XLS] 2.5.198.25
enum Token : std::uint8_t {
    Add = 0x03,
    Subtract,
    Multiply,
    Divide,
    Power,
    Concatenate,
    Less,
    LessOrEqual,
    Equal,
    GreaterOrEqual,
    Greater,
    NotEqual,
    Intersection,
    Union,
    Range,
    Plus,
    Minus,
    Percent,
    Parentheses,
    MissingArgument,
    Text,
    Attribute = 0x19,
    ErrorValue = 0x1C,
    TruthValue,
    WholeNumber,
    Number,
    ArrayConstant,
    Function,
    VariableFunction,
    Name,
    Cell,
    Area,
    MemoryArea, // what it remembers follows as tokens
    MemoryError,
    MemoryFull,
    MemoryFunction,
    DeletedCell,
    DeletedArea,
    RelativeCell,
    RelativeArea,
    LinkedName = 0x39,
    SheetCell,
    SheetArea,
    DeletedSheetCell,
    DeletedSheetArea
};

class Writer {
public:
    Writer(std::string_view tokens, std::string_view extra, const FormulaContext& context)
        : tokens_(tokens), extra_(extra), context_(context)
    {
    }

    std::optional<std::string> Write()
    {
        FormulaTokenReader reader(tokens_);
        while (const auto token = reader.Next())
            if (!WriteToken(*token))
                return std::nullopt;
        return reader.Complete() ? parts_.Take() : std::nullopt;
    }

private:
    bool WriteToken(const FormulaToken& token)
    {
        if (token.id >= Add && token.id <= Parentheses)
            return WriteOperator(token.id);
        bytes_ = tokens_.substr(token.begin, token.size);
        return token.id >= Cell ? WriteReference(token.id) : WriteValue(token.id);
    }

    bool WriteOperator(std::uint8_t id)
    {
        switch (id) {
        case Add:
            return parts_.Join("+", Binding::Sum);
        case Subtract:
            return parts_.Join("-", Binding::Sum);
        case Multiply:
            return parts_.Join("*", Binding::Product);
        case Divide:
            return parts_.Join("/", Binding::Product);
        case Power:
            return parts_.Join("^", Binding::Power);
        case Concatenate:
            return parts_.Join("&", Binding::Concatenation);
        case Intersection:
            return parts_.Join(" ", Binding::Intersection);
        case Union:
            return parts_.Join(",", Binding::Union);
        case Range:
            return parts_.Join(":", Binding::Range);
        case Plus:
            return parts_.PutBefore("+", Binding::Sign);
        case Minus:
            return parts_.PutBefore("-", Binding::Sign);
        case Percent:
            return parts_.PutAfter("%", Binding::Percent);
        case Parentheses:
            return parts_.Enclose();
        default:
            return WriteComparison(id);
        }
    }

    bool WriteComparison(std::uint8_t id)
    {
        constexpr std::array<const char*, 6> kComparisons = {"<", "<=", "=", ">=", ">", "<>"};
        return parts_.Join(kComparisons[std::size_t{id} - Less], Binding::Comparison);
    }

    bool WriteValue(std::uint8_t id)
    {
        switch (id) {
        case MissingArgument:
            return parts_.Add({});
        case Text:
            return parts_.Add(QuotedText(ReadShortUnicodeString(bytes_, 1).text));
        case Attribute: // the others steer the computation, or are blanks
            return ReadU8(bytes_, 1) != kSumAttribute || parts_.Call("SUM", 1);
        case ErrorValue:
            return AddIf(ErrorText(ReadU8(bytes_, 1)));
        case TruthValue:
            return parts_.Add(ReadU8(bytes_, 1) != 0 ? "TRUE" : "FALSE");
        case WholeNumber:
            return parts_.Add(std::to_string(ReadU16(bytes_, 1)));
        case Number:
            return AddIf(NumberText(std::bit_cast<double>(ReadU64(bytes_, 1))));
        case ArrayConstant:
            return AddIf(ArrayText(extra_, extraAt_, FormulaParts::kLongest));
        case Function:
            return CallFunction(ReadU16(bytes_, 1), std::nullopt);
        case VariableFunction:
            return CallFunction(ReadU16(bytes_, 2), ReadU8(bytes_, 1) & kCountMask);
        case Name:
            return AddIf(context_.names.Name(ReadU32(bytes_, 1)));
        default:
            return false;
        }
    }

    bool WriteReference(std::uint8_t id)
    {
        const auto form = ReferenceForm::Cell;
        switch (id) {
        case Cell:
            return parts_.Add(CellText(bytes_, 1, form, context_.cell));
        case Area:
            return parts_.Add(AreaText(bytes_, 1, form, context_.cell));
        case RelativeCell:
            return parts_.Add(CellText(bytes_, 1, ReferenceForm::Offset, context_.cell));
        case RelativeArea:
            return parts_.Add(AreaText(bytes_, 1, ReferenceForm::Offset, context_.cell));
        case MemoryArea:
            return SkipRemembered();
        case MemoryError:
        case MemoryFull:
        case MemoryFunction:
            return true;
        case DeletedCell:
        case DeletedArea:
            return parts_.Add("#REF!");
        case LinkedName:
            return AddIf(context_.names.LinkedName(ReadU16(bytes_, 1), ReadU32(bytes_, 3)));
        case SheetCell:
            return AddOnSheets(CellText(bytes_, 3, form, context_.cell));
        case SheetArea:
            return AddOnSheets(AreaText(bytes_, 3, form, context_.cell));
        case DeletedSheetCell:
        case DeletedSheetArea:
            return AddOnSheets("#REF!");
        default:
            return false;
        }
    }

    bool AddIf(std::optional<std::string> text) { return text && parts_.Add(std::move(*text)); }

    bool AddOnSheets(const std::string& reference)
    {
        const auto sheets = context_.names.SheetPrefix(ReadU16(bytes_, 1));
        if (!sheets)
            return false;
        const bool isDeleted = *sheets == "#REF!" && reference == *sheets;
        return parts_.Add(isDeleted ? reference : *sheets + reference);
    }

    /// The ranges that an operand had when it was last computed. [MS-XLS] 2.5.198.60
    bool SkipRemembered()
    {
        constexpr std::size_t kRangeSize = 8;
        extraAt_ += 2 + ReadU16(extra_, extraAt_) * kRangeSize;
        return true;
    }

    bool CallFunction(std::uint16_t number, std::optional<std::size_t> count)
    {
        if (number == kUserDefinedFunction)
            return count && parts_.Call({}, *count);
        const BuiltInFunction* function = FindFunction(number); // none: a command of macros
        return function != nullptr && parts_.Call(function->name, count.value_or(function->fewest));
    }

    static constexpr std::uint8_t kCountMask = 0x7F;

    std::string_view tokens_;
    std::string_view extra_;
    const FormulaContext& context_;
    std::string_view bytes_; // of the current token
    std::size_t extraAt_ = 0;
    FormulaParts parts_;
};

} // namespace

std::optional<std::string> FormulaText(std::string_view tokens, std::string_view extra,
                                       const FormulaContext& context)
{
    try {
        return Writer(tokens, extra, context).Write();
    }
    catch (const util::Error&) {
        return std::nullopt;
    }
}

} // namespace orrery::xls
