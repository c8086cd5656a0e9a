#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orrery::cli {

enum class Command {
    Generate,
    Templates,
    Parameters,
    Check,
    Look,
    Propose,
    Holidays,
    Import,
    Easter
};

/// A parsed command line. Texts are unchanged; fields that a command does not use stay empty.
struct CommandLine {
    Command command = Command::Generate;
    std::string templateName;       ///< a name in the template folder, or a path
    std::vector<std::string> years; ///< one number for each year
    /// Holiday files, or parameter files if there is a section.
    std::vector<std::string> holidayFiles;
    std::string region;     ///< whose holidays are shown, too; empty means the country's own
    std::string language;   ///< of the holidays' names; empty means the files' own
    std::string icsFile;    ///< where they are saved as iCalendar; as with `svgFile`
    std::string sheetName;  ///< a sheet to look at; empty means the one that opens first
    std::string svgFile;    ///< where its picture is saved; empty means nowhere, "-" is the output
    std::int16_t month = 0; ///< [1:12] of the calendar to look at; 0 means its year
    bool allKinds = false;  ///< not only public holidays
    std::string section;    ///< "monthly", "yearly" or empty; of a .hol file its name
    std::string importFile; ///< a calendar of another program
    std::string outputFile; ///< the holiday file that it becomes; empty means an own one
    std::string dateOrder;  ///< "dmy", "mdy", "ymd" or empty
    std::string settingsFile; ///< empty means the program's own
    std::optional<std::string> templateFolder;
    std::optional<std::string> outputFolder;
    std::optional<std::string> holidayFolder;
    std::string engine;   ///< empty means the one in the settings
    bool open = false;    ///< open the saved workbook
    bool pdf = false;     ///< also make a PDF
    bool write = false;   ///< save the proposed parameters
    bool replace = false; ///< an existing holiday file that is imported
    bool json = false;
    std::string pdfBy; ///< who makes the PDF: "builtin", "office", or empty, which is "office"
};

/// The name of a file that stands for the standard output.
inline constexpr std::string_view kStandardOutput = "-";

/// The program ends at once.
struct Finished {
    int exitCode = 0;
};

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitReported = 1; ///< something was reported
inline constexpr int kExitUsage = 2;    ///< the command line is invalid

/// Parses the arguments. Writes help to `out` and errors to `err`.
std::variant<CommandLine, Finished> ParseCommandLine(int argc, const char* const* argv,
                                                     std::ostream& out, std::ostream& err);

/// Expands "2027" or "2027-2036". A single number is returned unchanged, even if it is out of
/// range. Returns nothing for any other text and for a range that is reversed or exceeds 32767.
///     accepted: "2027" " -5 " "2027-2036"    rejected: "" "next" "2027-" "2036-2027" "2027..2036"
std::optional<std::vector<std::string>> ExpandYears(const std::string& text);

} // namespace orrery::cli
