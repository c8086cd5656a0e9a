#include "look/evaluate/formula/table_text.h"

#include "util/text.h"

#include <string>

namespace orrery::formula {
namespace {

std::string WithoutEscapes(std::string_view text)
{
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\'' && at + 1 < text.size())
            ++at;
        plain += text[at];
    }
    return plain;
}

/// The end of a piece "[...]" that begins at `at`: behind its last bracket.
std::size_t EndOfPiece(std::string_view text, std::size_t at)
{
    for (; at < text.size(); ++at) {
        if (text[at] == '\'')
            ++at;
        else if (text[at] == ']')
            return at + 1;
    }
    return std::string_view::npos;
}

bool TakeItem(TableText& table, std::string_view item)
{
    if (util::EqualIgnoringCase(item, "#This Row"))
        return table.isThisRow = true;
    if (util::EqualIgnoringCase(item, "#All"))
        return table.hasHeaders = table.hasData = table.hasTotals = true;
    if (util::EqualIgnoringCase(item, "#Headers"))
        return table.hasHeaders = true;
    if (util::EqualIgnoringCase(item, "#Data"))
        return table.hasData = true;
    if (util::EqualIgnoringCase(item, "#Totals"))
        return table.hasTotals = true;
    return false;
}

bool TakePiece(TableText& table, std::string_view piece, bool isAfterColon)
{
    if (piece.starts_with('#'))
        return TakeItem(table, piece);
    if (isAfterColon) {
        table.lastColumn = WithoutEscapes(piece);
        return table.firstColumn.has_value();
    }
    if (table.firstColumn)
        return false;
    table.firstColumn = WithoutEscapes(piece);
    table.lastColumn = table.firstColumn;
    return true;
}

/// "[#Headers],[Day]:[Week]"
bool TakePieces(TableText& table, std::string_view text)
{
    bool isAfterColon = false;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == ',' || text[at] == ' ' || text[at] == ':') {
            isAfterColon = text[at] == ':' || (text[at] == ' ' && isAfterColon);
            ++at;
            continue;
        }
        const std::size_t end = text[at] == '[' ? EndOfPiece(text, at) : std::string_view::npos;
        if (end == std::string_view::npos ||
            !TakePiece(table, text.substr(at + 1, end - at - 2), isAfterColon))
            return false;
        isAfterColon = false;
        at = end;
    }
    return true;
}

} // namespace

std::optional<TableText> ReadTableText(std::string_view name, std::string_view brackets)
{
    TableText table;
    table.table = name;
    std::string_view inner = brackets.substr(1, brackets.size() - 2);
    if (inner.starts_with('@')) {
        table.isThisRow = true;
        inner.remove_prefix(1);
    }
    const std::string_view trimmed = util::Trim(inner);
    const bool isRead =
        trimmed.empty() ||
        (trimmed.starts_with('[') ? TakePieces(table, trimmed) : TakePiece(table, inner, false));
    if (!isRead)
        return std::nullopt;
    if (!table.hasHeaders && !table.hasTotals && !table.isThisRow)
        table.hasData = true;
    return table;
}

} // namespace orrery::formula
