#include "engines/builtin/xls/formula/formula_tokens.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/unicode_string.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orrery::xls {
namespace {

constexpr std::uint8_t kText = 0x17;
constexpr std::uint8_t kLabel = 0x18;     // "PtgElf...", "PtgSxName"
constexpr std::uint8_t kAttribute = 0x19; // "PtgAttr..."
constexpr std::uint8_t kFunction = 0x21;
constexpr std::uint8_t kVariableFunction = 0x22;
constexpr std::uint8_t kName = 0x23;
constexpr std::uint8_t kRelativeCell = 0x2C; // "PtgRefN"
constexpr std::uint8_t kRelativeArea = 0x2D; // "PtgAreaN"
constexpr std::uint8_t kExternName = 0x39;
constexpr std::uint8_t kFirstOfSheets = 0x3A; // cells and areas of sheets, deleted ones too
constexpr std::uint8_t kLastOfSheets = 0x3D;
constexpr std::uint8_t kClasses = 0x60; // bits: operands are references, values or arrays
constexpr std::uint8_t kOneClass = 0x20;

constexpr std::uint8_t kVolatile = 0x01; // an attribute
constexpr std::uint8_t kChoose = 0x04;

/// The sizes of tokens that depend on the id alone; 0 for ids that do not exist and for texts,
/// labels and attributes. [MS-XLS] 2.5.198.25
constexpr std::array<std::uint8_t, 0x40> kSizes = [] {
    std::array<std::uint8_t, 0x40> sizes{};
    sizes[0x01] = 5; // a cell of a shared formula or an array
    sizes[0x02] = 5; // a cell of a data table
    for (std::size_t id = 0x03; id <= 0x16; ++id)
        sizes[id] = 1; // operators, parentheses, a missing argument
    sizes[0x1C] = 2;   // error value
    sizes[0x1D] = 2;   // truth value
    sizes[0x1E] = 3;   // whole number
    sizes[0x1F] = 9;   // number
    sizes[0x20] = 8;   // array
    sizes[kFunction] = 3;
    sizes[kVariableFunction] = 4;
    sizes[kName] = 5;
    sizes[0x24] = 5; // cell
    sizes[0x25] = 9; // area
    sizes[0x26] = 7; // the same, deleted
    sizes[0x27] = 7; // the same, lost
    sizes[0x28] = 7; // the same, too large
    sizes[0x29] = 3; // the same, by a function
    sizes[0x2A] = 5; // deleted cell
    sizes[0x2B] = 9; // deleted area
    sizes[kRelativeCell] = 5;
    sizes[kRelativeArea] = 9;
    sizes[kExternName] = 7;
    sizes[0x3A] = 7;
    sizes[0x3B] = 11;
    sizes[0x3C] = 7;
    sizes[0x3D] = 11;
    return sizes;
}();

/// The id of an operand without its class; other ids unchanged.
std::uint8_t WithoutClass(std::uint8_t id)
{
    return id < 0x40 ? id : static_cast<std::uint8_t>((id & ~kClasses) | kOneClass);
}

bool IsLabel(std::uint8_t kind)
{
    constexpr std::array<std::uint8_t, 11> kinds = {0x01, 0x02, 0x03, 0x06, 0x07, 0x0A,
                                                    0x0B, 0x0D, 0x0F, 0x10, 0x1D};
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

bool IsAttribute(std::uint8_t kind)
{
    constexpr std::array<std::uint8_t, 9> kinds = {0x01, 0x02, kChoose, 0x08, 0x10,
                                                   0x20, 0x21, 0x40,    0x41};
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

/// The size of an attribute; CHOOSE has a jump table with one entry more than it counts.
std::size_t AttributeSize(std::string_view token)
{
    constexpr std::size_t kHeader = 4;
    if (token.size() < kHeader || !IsAttribute(ReadU8(token, 1)))
        return 0;
    return ReadU8(token, 1) == kChoose ? kHeader + 2 * (ReadU16(token, 2) + std::size_t{1})
                                       : kHeader;
}

std::size_t TextSize(std::string_view token)
{
    constexpr std::size_t kHeader = 3;
    if (token.size() < kHeader)
        return 0;
    const bool wide = (ReadU8(token, 2) & kWideCharacters) != 0;
    return kHeader + ReadU8(token, 1) * std::size_t{wide ? 2U : 1U};
}

/// The size of the token at the beginning of `token`, which may be longer; 0 if it is unknown.
std::size_t TokenSize(std::string_view token)
{
    constexpr std::uint8_t kLastId = 0x7F;
    constexpr std::size_t kLabelSize = 6;
    const auto id = static_cast<std::uint8_t>(token[0]);
    if (id > kLastId)
        return 0;
    switch (id) {
    case kText:
        return TextSize(token);
    case kLabel:
        return token.size() > 1 && IsLabel(ReadU8(token, 1)) ? kLabelSize : 0;
    case kAttribute:
        return AttributeSize(token);
    default:
        return kSizes[WithoutClass(id)];
    }
}

} // namespace

std::optional<FormulaToken> FormulaTokenReader::Next()
{
    if (Complete())
        return std::nullopt;
    const std::string_view rest = rgce_.substr(position_);
    const std::size_t size = TokenSize(rest);
    if (size == 0 || size > rest.size())
        return std::nullopt;
    const FormulaToken token{WithoutClass(static_cast<std::uint8_t>(rest[0])), position_, size};
    position_ += size;
    return token;
}

std::optional<FormulaUse> UseOf(const FormulaToken& token)
{
    if (token.id == kName)
        return FormulaUse{FormulaUse::Kind::Name, 0, token.begin + 1};
    if (token.id == kExternName)
        return FormulaUse{FormulaUse::Kind::ExternName, token.begin + 1, token.begin + 3};
    if (token.id >= kFirstOfSheets && token.id <= kLastOfSheets)
        return FormulaUse{FormulaUse::Kind::Sheet, token.begin + 1, 0};
    return std::nullopt;
}

bool IsVolatile(std::string_view rgce, const FormulaToken& token)
{
    // RAND, NOW, OFFSET, CELL, INDIRECT, TODAY, INFO, GETPIVOTDATA
    constexpr std::array<std::uint16_t, 8> kVolatileFunctions = {63,  74,  78,  125,
                                                                 148, 221, 244, 358};
    const auto isVolatile = [&](std::size_t at) {
        const auto function = ReadU16(rgce, at);
        return std::find(kVolatileFunctions.begin(), kVolatileFunctions.end(), function) !=
               kVolatileFunctions.end();
    };
    switch (token.id) {
    case kAttribute:
        return (ReadU8(rgce, token.begin + 1) & kVolatile) != 0;
    case kFunction:
        return isVolatile(token.begin + 1);
    case kVariableFunction:
        return isVolatile(token.begin + 2); // after the count of arguments
    default:
        return false;
    }
}

} // namespace orrery::xls
