#pragma once

#include "places/places.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace orrery::test {

/// The fixture with every part that a sheet can own.
inline std::filesystem::path EverythingPath()
{
    return places::SourceFolder() / "tests/engines/builtin/xlsx/data" / "everything.xlsx";
}

/// A saved workbook, read with libzip and pugixml, so that the engine does not judge its own
/// output.
class SavedPackage {
public:
    struct Target {
        std::string id;
        std::string type;
        std::string target; ///< an entry's name, or the target as written if it is external
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
    /// The unpacked bytes; a test failure if the entry is missing.
    const std::string& Bytes(const std::string& name) const;
    /// The texts of the nodes or attributes that an XPath finds. Elements of the main namespace
    /// have no prefix in it; other prefixes are the document's.
    std::vector<std::string> Values(const std::string& name, const char* xpath) const;
    /// The shared strings without their formatting.
    std::vector<std::string> Texts() const;
    /// The cells of a worksheet's part that have a value.
    std::vector<Cell> Cells(const std::string& name) const;
    /// The entry of the worksheet of that name.
    std::string SheetPart(const std::string& sheet) const;
    std::vector<Target> Targets(const std::string& name) const;

private:
    std::vector<std::string> names_;
    std::map<std::string, std::string> parts_;
};

} // namespace orrery::test
