#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace orrery::test {

/// A saved .xls workbook, read without the engine's code except for the container.
class SavedBook {
public:
    using Value = std::variant<double, std::string>;
    struct Cell {
        Value value;
        std::uint16_t format = 0;
    };
    struct Sheet {
        std::string name;
        std::map<std::pair<std::int32_t, std::int32_t>, Cell> cells; ///< row and column from 1
        std::string bytes;                                           ///< from BOF to EOF
    };

    explicit SavedBook(const std::filesystem::path& path);

    const std::vector<Sheet>& Sheets() const { return sheets_; }
    const Sheet& At(std::string_view name) const;
    std::vector<std::string> Names() const;
    /// The data of all records of a type in the globals.
    std::vector<std::string> GlobalRecords(std::uint16_t type) const;
    /// The data of all records of a type in a sheet.
    static std::vector<std::string> Records(const Sheet& sheet, std::uint16_t type);
    const std::string& Stream() const { return stream_; }

private:
    void ReadTexts(std::size_t at);
    void ReadCells(Sheet& sheet) const;

    std::string stream_;
    std::size_t globalsEnd_ = 0;
    std::vector<std::string> texts_;
    std::vector<Sheet> sheets_;
};

} // namespace orrery::test
