#pragma once

#include "places/places.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace orrery::test {

/// The fixture that has every part a sheet can own.
inline std::filesystem::path EverythingPath()
{
    return places::SourceFolder() / "tests/engines/builtin/xlsx/data" / "everything.xlsx";
}

/// A saved workbook read back with libzip and pugixml alone, so that no code of the engine judges
/// its own output.
class SavedPackage {
public:
    struct Target {
        std::string id;
        std::string type;
        std::string target; ///< an entry's name, or the target as written when it is external
        bool external = false;
    };

    struct Cell {
        std::string reference;
        std::string type;  ///< as stored, "" for numbers
        std::string value; ///< as stored
    };

    explicit SavedPackage(const std::filesystem::path& path);

    /// Names of the entries, in the container's order.
    const std::vector<std::string>& Names() const { return names_; }
    std::vector<std::string> NamesWith(const std::string& prefix) const;
    bool Has(const std::string& name) const { return parts_.contains(name); }
    bool HasType(const std::string& name) const;
    /// The unpacked bytes; a test failure where the entry is missing.
    const std::string& Bytes(const std::string& name) const;
    /// The texts of the nodes or attributes that an XPath finds. Elements of the main namespace are
    /// asked for without a prefix; the usual prefixes of the others are those of the document.
    std::vector<std::string> Values(const std::string& name, const char* xpath) const;
    /// The shared texts, whatever formats are inside them.
    std::vector<std::string> Texts() const;
    /// The cells of a worksheet's part that hold a value.
    std::vector<Cell> Cells(const std::string& name) const;
    /// The entry of the worksheet of that name.
    std::string SheetPart(const std::string& sheet) const;
    std::vector<Target> Targets(const std::string& name) const;

private:
    std::vector<std::string> names_;
    std::map<std::string, std::string> parts_;
};

} // namespace orrery::test
