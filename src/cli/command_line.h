#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace orrery::cli {

enum class Command { Generate, Templates, Parameters, Check, Holidays, Easter };

/// A command line that was understood. Texts are as they were given; a command leaves empty what
/// it does not have.
struct CommandLine {
    Command command = Command::Generate;
    std::string templateName;       ///< a name in the template folder or a path
    std::vector<std::string> years; ///< one numeric text for each year
    std::string holidayFile;        ///< a holiday file, or with a section a parameter file
    std::string section;            ///< "monthly", "yearly" or empty
    std::string settingsFile;       ///< empty: the program's own
    std::optional<std::string> templateFolder;
    std::optional<std::string> outputFolder;
    std::optional<std::string> holidayFolder;
    std::string engine; ///< empty: as the settings say
    bool open = false;  ///< open the saved workbook
    bool pdf = false;   ///< make a PDF of it, too
    bool json = false;
};

/// Why the program ends at once.
struct Finished {
    int exitCode = 0;
};

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitReported = 1; ///< a report was made
inline constexpr int kExitUsage = 2;    ///< the command line was not understood

/// Understands the arguments. Help goes to `out`, what is wrong with them to `err`.
std::variant<CommandLine, Finished> ParseCommandLine(int argc, const char* const* argv,
                                                     std::ostream& out, std::ostream& err);

/// The years of "2027" or "2027-2036". A single number is taken as it stands, in range or not;
/// nothing for every other text and for a range that is reversed or goes beyond 32767.
///     accepted: "2027" " -5 " "2027-2036"    rejected: "" "next" "2027-" "2036-2027" "2027..2036"
std::optional<std::vector<std::string>> ExpandYears(const std::string& text);

} // namespace orrery::cli
