#include "engines/builtin/xlsx/look/style/theme_part.h"

#include "util/error.h"

namespace orrery::xlsx {

builtin::ThemeColors ReadTheme(const Package& package)
{
    try {
        const auto* theme = package.RelationshipsOf(package.MainPart()).FindByType("theme");
        if (theme != nullptr && !theme->External)
            return builtin::ParseTheme(
                *package.ReadXml(ResolveTarget(package.MainPart(), theme->Target)));
    }
    catch (const util::Error&) {
        // a damaged theme is as good as none
    }
    return {};
}

} // namespace orrery::xlsx
