#pragma once

#include "book/spreadsheet.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace orrery::excel_server {

/// An open workbook, which the application keeps whether or not anything refers to it.
struct Book {
    /// Opens the file with the built-in engine. Throws Error.
    Book(book::Application& engine, std::filesystem::path file);

    book::Workbook& workbook;
    std::filesystem::path path;
    std::vector<book::Worksheet*> sheets; ///< the worksheets in their order
    std::int32_t rows;                    ///< of each sheet
    std::int32_t columns;
    std::set<std::string> hidden;           ///< the names of hidden sheets; known for .xlsx alone
    std::vector<book::Worksheet*> selected; ///< the active one first
    bool readOnly = false;
    bool changed = false;

    /// The selected sheets in the order of the workbook.
    std::vector<book::Worksheet*> SelectedInOrder() const;
    /// The worksheet of that name or nullptr.
    book::Worksheet* Find(const std::string& name) const;
    /// Position from 0; the sheet is one of the workbook's.
    std::size_t PositionOf(const book::Worksheet& sheet) const;
    /// Copies a sheet and places the copy directly after another one. Throws Error.
    void Copy(book::Worksheet& sheet, book::Worksheet& after);
};

/// The names of all sheets of a workbook, in their order. Throws Error.
std::vector<std::string> ReadSheetNames(const std::filesystem::path& path);

} // namespace orrery::excel_server
