#pragma once

#include "book/error.h"
#include "book/spreadsheet.h"
#include "util/error.h"

#include "require.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <unistd.h>

/// What the fuzzers of both formats do to a workbook.
namespace orrery::fuzz {

inline constexpr const char* kNewName = "It's"; ///< of the edited sheet

/// A file of this process in a fast folder.
inline std::filesystem::path Scratch(const char* name)
{
    static const std::filesystem::path folder =
        std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
    return folder / ("orrery-fuzz-" + std::to_string(getpid()) + name);
}

/// Does something that may be refused. The run goes on with the same workbook, as a calendar's
/// does.
template <class Action> void Attempt(Action action)
{
    try {
        action();
    }
    catch (const Error&) {
        // a run reports it to the user
    }
}

inline void Fill(book::Worksheet& sheet)
{
    for (const std::int32_t row : {1, 2, 3, 14, 27, 40}) {
        for (std::int32_t column = 1; column <= 4; ++column) {
            Attempt([&] {
                sheet.SetCell(row, column, book::CellValue(std::int16_t{7}),
                              book::CellMember::Value);
            });
            Attempt([&] {
                sheet.SetCell(row + 1, column + 1, book::CellValue(std::string("text")),
                              book::CellMember::Default);
            });
        }
    }
}

/// Renames the sheet, copies it and its copies, and fills them all.
inline void EditSheet(book::Worksheet& model)
{
    constexpr int kCopies = 3;
    Attempt([&] { model.SetName(kNewName); });
    Fill(model);
    book::Worksheet* last = &model;
    for (int i = 0; i < kCopies; ++i) {
        Attempt([&] {
            last->CopyAfter(*last);
            last = last->Next();
            last->SetName("Copy " + std::to_string(i));
        });
        Fill(*last);
    }
    if (last->Next() != nullptr) // another sheet of the template, if there is one
        Fill(*last->Next());
}

/// Edits the first of the named sheets that exists. Returns its name in the saved workbook, or
/// nothing if the workbook could not be opened or saved.
template <class Book>
std::optional<std::string> Edit(const std::filesystem::path& source,
                                const std::filesystem::path& target,
                                const std::vector<std::string>& names)
{
    try {
        Book workbook(source);
        book::Worksheet* sheet = nullptr;
        for (const auto& name : names) {
            if (sheet == nullptr)
                sheet = workbook.FindWorksheet(name);
        }
        if (sheet == nullptr)
            return std::nullopt;
        EditSheet(*sheet);
        Attempt([&] { workbook.SaveAs(target, book::AccessMode::NoChange); });
        workbook.SaveAs(target, book::AccessMode::NoChange);
        return sheet->Name();
    }
    catch (const Error&) {
        return std::nullopt;
    }
}

/// A sheet that could be changed can be changed again.
inline void ChangeAgain(book::Worksheet& sheet)
{
    if (sheet.Name() != kNewName)
        return;
    try {
        sheet.SetName("Again");
    }
    catch (const Error& error) {
        Require(error.Kind() != book::ErrorKind::DamagedWorkbook);
    }
}

/// Whatever the source, the result is an error or a workbook that opens again.
template <class Book>
void EditAndOpenAgain(const std::filesystem::path& source, const std::vector<std::string>& names)
{
    static const auto target = Scratch(".out");
    if (const auto name = Edit<Book>(source, target, names)) {
        Book again(target);
        auto* const sheet = again.FindWorksheet(*name);
        Require(sheet != nullptr);
        ChangeAgain(*sheet);
        again.SaveAs(target, book::AccessMode::NoChange);
    }
    std::filesystem::remove(source);
    std::filesystem::remove(target);
}

} // namespace orrery::fuzz
