// Prints what is read of the drawings of workbooks: for each sheet one line with the name of the
// file, the part and the number of drawings of each kind, those in groups included.

#include "engines/builtin/xlsx/look/drawing/read_drawings.h"
#include "engines/builtin/xlsx/look/style/theme_part.h"
#include "engines/builtin/xlsx/package/package.h"
#include "util/error.h"

#include <array>
#include <filesystem>
#include <iostream>

namespace orrery::xlsx {
namespace {

using Counts = std::array<std::size_t, 7>;

void Count(const std::vector<book::Drawing>& drawings, Counts& counts)
{
    for (const book::Drawing& drawing : drawings) {
        ++counts[static_cast<std::size_t>(drawing.kind)];
        Count(drawing.children, counts);
    }
}

void PrintSheets(const std::filesystem::path& file)
{
    const Package package(file);
    const builtin::ThemeColors theme = ReadTheme(package);
    for (const Relationship& sheet : package.RelationshipsOf(package.MainPart()).All()) {
        if (!sheet.Is("worksheet") && !sheet.Is("chartsheet"))
            continue;
        const std::string part = ResolveTarget(package.MainPart(), sheet.Target);
        book::SheetLook look;
        Counts counts{};
        ReadDrawings(package, part, theme, look);
        Count(look.drawings, counts);
        std::cout << file.filename().string() << '\t' << part;
        for (const std::size_t count : counts)
            std::cout << '\t' << count;
        for (const book::LeftOut& left : look.leftOut)
            std::cerr << file.filename().string() << ": " << left.what << ' ' << left.where << ' '
                      << left.reason << '\n';
        std::cout << '\n';
    }
}

} // namespace
} // namespace orrery::xlsx

int main(int count, char** arguments)
{
    int failures = 0;
    for (int i = 1; i < count; ++i) {
        try {
            orrery::xlsx::PrintSheets(arguments[i]);
        }
        catch (const orrery::util::Error& error) {
            std::cerr << arguments[i] << ": " << error.what() << '\n';
            ++failures;
        }
    }
    return failures == 0 ? 0 : 1;
}
