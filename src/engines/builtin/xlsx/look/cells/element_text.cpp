#include "engines/builtin/xlsx/look/cells/element_text.h"

#include "engines/builtin/xlsx/look/cells/limits.h"

namespace orrery::xlsx {

std::string_view ReadElementText(xml::Scanner& scanner, std::string& buffer)
{
    using Token = xml::Scanner::Token;
    constexpr std::size_t kCDataBegin = 9; // <![CDATA[
    constexpr std::size_t kCDataEnd = 3;   // ]]>
    const std::size_t depth = scanner.Depth();
    std::string_view text;
    bool isBuffered = false;
    const auto add = [&](std::string_view piece, bool isRaw) {
        const bool isPlain = !isRaw || piece.find_first_of("&\r") == piece.npos;
        if (isPlain && text.empty() && !isBuffered) {
            text = piece;
            return;
        }
        if (!isBuffered)
            buffer.assign(text);
        isBuffered = true;
        buffer += isPlain ? std::string(piece) : xml::DecodeText(piece);
    };
    while (true) {
        const Token token = scanner.Next();
        if (token == Token::Text)
            add(scanner.Raw(), true);
        else if (token == Token::CData)
            add(scanner.Raw().substr(kCDataBegin, scanner.Raw().size() - kCDataBegin - kCDataEnd),
                false);
        else if ((token == Token::EndTag && scanner.Depth() < depth) || token == Token::End)
            return isBuffered ? std::string_view(buffer) : text;
    }
}

std::string ReadFormulaText(xml::Scanner& scanner, bool* isTooLong)
{
    std::string buffer;
    std::string_view formula = ReadElementText(scanner, buffer);
    while (!formula.empty() && (formula.front() == ' ' || formula.front() == '\n'))
        formula.remove_prefix(1);
    if (formula.starts_with('='))
        formula.remove_prefix(1);
    if (isTooLong != nullptr)
        *isTooLong = formula.size() > kMaxFormula;
    return formula.size() <= kMaxFormula ? std::string(formula) : std::string();
}

} // namespace orrery::xlsx
