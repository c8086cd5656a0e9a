#pragma once

#include "generate/spreadsheet.h"
#include "util/error.h"

#include "require.h"

#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

/// What the fuzzers of both formats do to a workbook.
namespace orrery::fuzz {

/// A file of this process in a folder that is quick to write to.
inline std::filesystem::path Scratch(const char* name)
{
    static const std::filesystem::path folder =
        std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
    return folder / ("orrery-fuzz-" + std::to_string(getpid()) + name);
}

inline void Fill(generate::Worksheet& sheet)
{
    for (const std::int32_t row : {1, 2, 3, 14, 27, 40}) {
        for (std::int32_t column = 1; column <= 4; ++column) {
            try {
                sheet.SetCell(row, column, generate::CellValue(std::int16_t{7}),
                              generate::CellMember::Value);
                sheet.SetCell(row + 1, column + 1, generate::CellValue(std::string("text")),
                              generate::CellMember::Default);
            }
            catch (const Error&) {
                // a locked cell or a part of an array
            }
        }
    }
}

/// Renames, copies and fills the first sheet of the names that is there. Whether the workbook could
/// be edited and saved.
template <class Book>
bool Edit(const std::filesystem::path& source, const std::filesystem::path& target,
          const std::vector<std::string>& names)
{
    try {
        Book workbook(source);
        generate::Worksheet* sheet = nullptr;
        for (const auto& name : names) {
            if (sheet == nullptr)
                sheet = workbook.FindWorksheet(name);
        }
        if (sheet == nullptr)
            return false;
        sheet->SetName("It's");
        sheet->CopyAfter(*sheet);
        Fill(*sheet);
        Fill(*sheet->Next());
        workbook.SaveAs(target, generate::AccessMode::NoChange);
        return true;
    }
    catch (const Error&) {
        return false;
    }
}

/// An error or a workbook that opens again, whatever the source.
template <class Book>
void EditAndOpenAgain(const std::filesystem::path& source, const std::vector<std::string>& names)
{
    static const auto target = Scratch(".out");
    if (Edit<Book>(source, target, names)) {
        Book again(target);
        Require(again.FindWorksheet("It's") != nullptr);
        again.SaveAs(target, generate::AccessMode::NoChange);
    }
    std::filesystem::remove(source);
    std::filesystem::remove(target);
}

} // namespace orrery::fuzz
