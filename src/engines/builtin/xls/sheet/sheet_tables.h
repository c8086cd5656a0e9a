#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xls/records/globals.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::xls {

using builtin::TextPatch;

/// The place of a table's name in a sheet. The size of its record changes with the name.
struct TableNamePlace {
    std::size_t record = 0; ///< offset of the record's header in the sheet
    std::size_t begin = 0;  ///< of the text, count included
    std::size_t end = 0;
    std::string name;        ///< UTF-8
    std::uint32_t id = 0;    ///< of the table
    std::size_t longest = 0; ///< the longest name that fits into the record, in UTF-16 units
};

/// A table with columns that are mapped to elements of the workbook's XML maps.
struct MappedTable {
    Span records; ///< its record and what continues it, in the sheet
    Span name;    ///< in the joined data of those records
    std::uint32_t id = 0;
    TextPatch unmapped; ///< of that data: what makes it a plain table
};

/// The tables ("lists") of a sheet: names and ids that must be unique in the workbook, and where
/// they are. [MS-XLS] 2.5.266, 2.4.157
/// An element of an XML map is mapped once, so that a copy's tables are not mapped, and it lacks
/// those that are nothing but a mapped cell.
struct TablePlaces {
    std::vector<TableNamePlace> names;        ///< several for a table whose name is repeated
    std::map<std::size_t, std::uint32_t> ids; ///< by offset in the sheet, four bytes each
    std::vector<std::size_t> nextIds;         ///< offsets of the id that a new table would get
    std::vector<MappedTable> mapped;
    std::set<std::uint32_t> mappedCells; ///< ids
    std::vector<Span> modelOnly;         ///< the records of those cells
    bool understood = true;              ///< false: a mapped table is damaged

    bool Empty() const { return names.empty() && mappedCells.empty() && understood; }
};

/// Finds them in a sheet's substream. Tables with damaged records are left out; a mapped one also
/// clears `understood`.
/// Throws Error(DamagedWorkbook) if a record runs past the end.
TablePlaces FindTables(std::string_view sheet);

/// The new ids and names of the tables of one copy, by the model's.
struct FreshTables {
    std::map<std::uint32_t, std::uint32_t> ids;
    std::map<std::uint32_t, std::string> names; ///< by the model's ids
    std::uint32_t nextId = 0;
};

/// Writes the ids into a copy's bytes and adds names, and what unmaps it, to a patch of them.
/// `places` are those of the model.
void PutTables(std::string& sheet, TextPatch& patch, const TablePlaces& places,
               const FreshTables& tables);

/// The names and ids of the workbook's tables, so that those of copies are unique.
class TableIdentities {
public:
    /// The workbook's defined names, which tables may not have.
    explicit TableIdentities(const std::vector<std::string>& definedNames);

    /// Registers the tables of a sheet of the template.
    void Reserve(const TablePlaces& places);
    /// New ids and names for one more copy: "Table1" becomes "Table1_2", then "Table1_3". Throws
    /// Error(SheetNotCopied) without a subject if no such name fits or a table was not understood.
    FreshTables AddCopy(const TablePlaces& places);

private:
    std::string FreeName(const std::string& name, std::size_t longest);

    std::set<std::string> taken_; // folded
    /// by folded name and maximum length, the number that was tried last
    std::map<std::pair<std::string, std::size_t>, unsigned> lastNumbers_;
    std::uint32_t lastId_ = 0;
};

} // namespace orrery::xls
