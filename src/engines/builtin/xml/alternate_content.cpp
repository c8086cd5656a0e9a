#include "engines/builtin/xml/alternate_content.h"

#include "engines/builtin/xml/reading.h"

#include <string>

namespace orrery::xml {
namespace {

constexpr std::string_view kCompatibility =
    "http://schemas.openxmlformats.org/markup-compatibility/2006";

/// Whether the current element is a choice whose namespaces are all understood.
bool IsUnderstood(const Scanner& scanner, const Understands& understands)
{
    const std::string required = scanner.AttributeText("Requires").value_or("");
    std::size_t begin = required.find_first_not_of(" \t\r\n");
    if (begin == required.npos)
        return false;
    while (begin != required.npos) {
        const std::size_t end = std::min(required.find_first_of(" \t\r\n", begin), required.size());
        if (!understands(
                scanner.NamespaceUri(std::string_view(required).substr(begin, end - begin))))
            return false;
        begin = required.find_first_not_of(" \t\r\n", end);
    }
    return true;
}

} // namespace

bool IsAlternateContent(const Scanner& scanner)
{
    return scanner.LocalName() == "AlternateContent" && scanner.NamespaceUri() == kCompatibility;
}

void ReadAlternateContent(Scanner& scanner, const Understands& understands,
                          const std::function<void()>& visit)
{
    bool isChosen = false;
    ForEachChild(scanner, [&] {
        const bool isNow =
            !isChosen && (scanner.LocalName() == "Fallback" ||
                          (scanner.LocalName() == "Choice" && IsUnderstood(scanner, understands)));
        if (!isNow)
            return scanner.SkipElement();
        isChosen = true;
        visit();
    });
}

void ForEachUnderstoodChild(Scanner& scanner, const Understands& understands,
                            const std::function<void()>& visit)
{
    ForEachChild(scanner, [&] {
        if (!IsAlternateContent(scanner))
            return visit();
        ReadAlternateContent(scanner, understands,
                             [&] { ForEachUnderstoodChild(scanner, understands, visit); });
    });
}

} // namespace orrery::xml
