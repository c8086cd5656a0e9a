#pragma once

#include "exchange/event.h"
#include "exchange/rules_of.h"
#include "exchange/table/find_table.h"

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// Calendars of other programs, whatever their kind: read, and written as holiday files.
namespace orrery::app {

/// How a calendar is read.
struct ImportChoices {
    exchange::Years years;                        ///< of events that come again
    std::optional<exchange::DateOrder> dateOrder; ///< of a table; nothing: as found
    std::string section;                          ///< of a .hol file; empty: all
};

/// A file or a text with a calendar of another program. Its kind is told by its ending, else by its
/// content.
class ImportSource {
public:
    /// Throws Error if it cannot be read or, as a table, has no dates.
    explicit ImportSource(const std::filesystem::path& path);
    /// A text of the clipboard, UTF-8. Throws Error likewise.
    explicit ImportSource(std::string text);

    /// "iCalendar", "Outlook holidays" or "table".
    std::string KindInWords() const;
    /// One word for other programs: "ics", "hol" or "table".
    std::string KindWord() const;
    /// What a table is like; null for other kinds.
    const exchange::FoundTable* Table() const;
    /// The sections of a .hol file.
    std::vector<std::string> Sections() const;
    /// Throws Error if the section is not there, or the file is no calendar.
    exchange::Calendar Read(const ImportChoices& choices) const;

private:
    struct Ics {
        std::filesystem::path path;
    };
    struct Hol {
        exchange::TableText text;
    };
    struct TextTable {
        exchange::TableText text;
        exchange::FoundTable found;
    };
    using Content = std::variant<Ics, Hol, TextTable>;

    static Content ContentOf(const std::filesystem::path& path);
    static Content ContentOf(exchange::TableText text, const std::string& name);

    Content content_;
};

/// The ten years from one on: those for which events that come again are asked for.
exchange::Years TenYearsFrom(int year);

/// Writes the rules as a holiday file; an existing one is replaced. `source` is the name of the
/// file that they come from. Throws Error if it cannot be written.
void WriteImportedFile(const std::string& file, const exchange::ImportedRules& rules,
                       const std::string& source);

} // namespace orrery::app
