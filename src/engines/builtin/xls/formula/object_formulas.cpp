#include "engines/builtin/xls/formula/object_formulas.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/formula/object_parts.h"

#include <cstdint>

namespace orrery::xls {
namespace {

/// A formula of an object: its size, then, unless that is 0, the size of its expression, four
/// unused bytes, the expression and perhaps more. [MS-XLS] 2.5.187
struct ObjectFormula {
    std::size_t end = 0;
    bool isEmbedded = false;
};

ObjectFormula ReadFormula(std::string_view data, std::size_t at, const ObjectFormulaVisitor& visit)
{
    constexpr std::size_t kHeader = 6;
    const std::string_view formula = Slice(data, at + 2, ReadU16(data, at));
    ObjectFormula result{at + 2 + formula.size(), false};
    if (formula.empty())
        return result;
    const std::size_t size = ReadU16(formula, 0) & 0x7FFF;
    const std::string_view rgce = Slice(formula, kHeader, size);
    if (rgce.empty())
        return result;
    result.isEmbedded = static_cast<std::uint8_t>(rgce[0]) == kEmbeddedToken;
    visit(at + 2 + kHeader, size);
    return result;
}

/// A picture's formula, the place of its data, and for a control its key, its linked cell and the
/// range of its list. [MS-XLS] 2.5.150, 2.5.203
void ReadPicture(std::string_view data, std::size_t at, std::uint16_t flags,
                 const ObjectFormulaVisitor& visit)
{
    constexpr unsigned kIsControl = 0x10;
    const auto formula = ReadFormula(data, at, visit);
    if ((flags & kIsControl) == 0)
        return;
    std::size_t key = formula.end + (formula.isEmbedded ? 4 : 0);
    if ((flags & kIsInControls) != 0)
        key += 4;
    const std::size_t keySize = ReadU32(data, key);
    Slice(data, key + 4, keySize);
    const auto linkedCell = ReadFormula(data, key + 4 + keySize, visit);
    ReadFormula(data, linkedCell.end, visit);
}

} // namespace

void ForEachObjectFormula(std::string_view data, const ObjectFormulaVisitor& visit)
{
    std::uint16_t pictureFlags = 0;
    for (std::size_t at = 0; data.size() - at >= kPartHeader;) {
        const auto part = ReadU16(data, at);
        const std::size_t size = ReadU16(data, at + 2);
        switch (part) {
        case kEndPart:
            return;
        case kMacroPart: // its size is that of the formula
        case kLinkPart:
        case kCheckLinkPart:
            ReadFormula(data, at + 2, visit);
            break;
        case kPictureFlagsPart:
            pictureFlags = ReadU16(data, at + kPartHeader);
            break;
        case kPictureFormulaPart:
            ReadPicture(Slice(data, 0, at + kPartHeader + size), at + kPartHeader, pictureFlags,
                        visit);
            break;
        case kListPart: // the last part; its size does not say where it ends
            if (size != 0)
                ReadFormula(data, at + kPartHeader, visit);
            return;
        default:
            break;
        }
        Slice(data, at + kPartHeader, size);
        at += kPartHeader + size;
    }
}

void ForEachTextFormula(std::string_view data, const ObjectFormulaVisitor& visit)
{
    constexpr std::size_t kFormulaAt = 16;
    if (data.size() > kFormulaAt)
        ReadFormula(data, kFormulaAt, visit);
}

} // namespace orrery::xls
