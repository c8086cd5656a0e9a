#include "engines/builtin/vba/module_source.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "util/text.h"

#include <algorithm>

namespace orrery::vba {
namespace {

constexpr std::string_view kAttribute = "Attribute ";
constexpr std::string_view kName = "Attribute VB_Name = \"";

bool StartsWith(std::string_view line, std::string_view beginning)
{
    return util::EqualIgnoringCase(line.substr(0, beginning.size()), beginning);
}

} // namespace

bool HasCode(std::string_view source)
{
    const auto lines = util::SplitLines(source.substr(0, source.find('\0')));
    return std::any_of(lines.begin(), lines.end(), [](std::string_view line) {
        return !util::Trim(line).empty() && !StartsWith(line, kAttribute);
    });
}

std::string RenameModule(std::string_view source, std::string_view model, std::string_view copy)
{
    for (const std::string_view line : util::SplitLines(source)) {
        if (!StartsWith(line, kName))
            continue;
        const auto begin = static_cast<std::size_t>(line.data() - source.data()) + kName.size();
        const std::size_t end = source.find('"', begin);
        if (end == source.npos ||
            !util::EqualIgnoringCase(source.substr(begin, end - begin), model))
            break;
        std::string renamed(source);
        renamed.replace(begin, end - begin, copy);
        return renamed;
    }
    xls::ThrowDamaged("the code of a sheet does not give the name of its module");
}

} // namespace orrery::vba
