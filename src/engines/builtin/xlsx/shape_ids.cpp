#include "engines/builtin/xlsx/shape_ids.h"

#include "engines/builtin/xml/reading.h"

#include <algorithm>
#include <string>

namespace orrery::xlsx {
namespace {

constexpr std::uint32_t kShapesInBlock = 1024;

std::size_t DigitsEnd(std::string_view text, std::size_t at)
{
    while (at < text.size() && text[at] >= '0' && text[at] <= '9')
        ++at;
    return at;
}

/// Calls `visit(begin, end, number)` for every name of a shape, with the place of its number. VML
/// need not be well-formed, so it is searched as text.
template <typename Visit> void ForEachShape(std::string_view vml, Visit visit)
{
    constexpr std::string_view kName = "_x0000_s";
    for (auto at = vml.find(kName); at != vml.npos; at = vml.find(kName, at + 1)) {
        const std::size_t begin = at + kName.size();
        const std::size_t end = DigitsEnd(vml, begin);
        if (const auto number = xml::ReadDigits(vml.substr(begin, end - begin)))
            visit(begin, end, *number);
    }
}

/// The same for every block that a list of the drawing names: `<o:idmap data="1,3"/>`.
template <typename Visit> void ForEachListedBlock(std::string_view vml, Visit visit)
{
    constexpr std::string_view kTag = ":idmap ";
    constexpr std::string_view kList = "data=";
    std::size_t end = 0; // of the tag
    for (auto tag = vml.find(kTag); tag != vml.npos; tag = vml.find(kTag, end)) {
        end = std::min(vml.find('>', tag), vml.size());
        const std::string_view text = vml.substr(0, end);
        std::size_t at = text.find(kList, tag);
        if (at == text.npos || at + kList.size() == end)
            continue;
        at += kList.size() + 1;
        const std::size_t listEnd = std::min(text.find(text[at - 1], at), end);
        for (; at < listEnd; ++at) {
            const std::size_t digitsEnd = DigitsEnd(text, at);
            if (const auto number = xml::ReadDigits(text.substr(at, digitsEnd - at)))
                visit(at, digitsEnd, *number);
            at = digitsEnd;
        }
    }
}

} // namespace

std::set<std::uint32_t> FindShapeBlocks(std::string_view vml)
{
    std::set<std::uint32_t> blocks;
    const auto add = [&](std::size_t block) {
        if (block != 0 && block <= kLastShapeBlock)
            blocks.insert(static_cast<std::uint32_t>(block));
    };
    ForEachListedBlock(vml, [&](std::size_t, std::size_t, std::size_t block) { add(block); });
    ForEachShape(vml, [&](std::size_t, std::size_t, std::size_t shape) {
        add(shape / kShapesInBlock); // some writers number from 1: those shapes are in no block
    });
    return blocks;
}

std::optional<std::uint32_t> MoveShape(std::size_t shape, const ShapeBlocks& blocks)
{
    const auto block = blocks.find(static_cast<std::uint32_t>(shape / kShapesInBlock));
    if (block == blocks.end())
        return std::nullopt;
    return block->second * kShapesInBlock + static_cast<std::uint32_t>(shape % kShapesInBlock);
}

TextPatch MoveShapes(std::string_view vml, const ShapeBlocks& blocks)
{
    TextPatch patch;
    ForEachListedBlock(vml, [&](std::size_t begin, std::size_t end, std::size_t listed) {
        const auto block = blocks.find(static_cast<std::uint32_t>(listed));
        if (block != blocks.end())
            patch.Replace(begin, end, std::to_string(block->second));
    });
    ForEachShape(vml, [&](std::size_t begin, std::size_t end, std::size_t shape) {
        if (const auto moved = MoveShape(shape, blocks))
            patch.Replace(begin, end, std::to_string(*moved));
    });
    return patch;
}

TextPatch MoveShapesOfDrawing(std::string_view xml, std::string_view partName,
                              const ShapeBlocks& blocks)
{
    TextPatch patch;
    std::map<std::size_t, std::string> moved;
    ForEachShape(xml, [&](std::size_t begin, std::size_t end, std::size_t shape) {
        if (const auto number = MoveShape(shape, blocks)) {
            moved.emplace(shape, std::to_string(*number));
            patch.Replace(begin, end, std::to_string(*number));
        }
    });
    if (moved.empty())
        return patch;
    xml::Scanner scanner(xml, partName);
    for (auto token = scanner.Next(); token != xml::Scanner::Token::End; token = scanner.Next()) {
        const std::string_view name = scanner.LocalName();
        if (token != xml::Scanner::Token::StartTag ||
            (name != "cNvPr" && name != "stCxn" && name != "endCxn"))
            continue;
        const auto id = scanner.Attribute("id");
        const auto shape = xml::ReadDigits(id);
        if (!id || !shape)
            continue;
        if (const auto found = moved.find(*shape); found != moved.end())
            patch.Replace(id->valueBegin, id->end - 1, found->second);
    }
    return patch;
}

} // namespace orrery::xlsx
