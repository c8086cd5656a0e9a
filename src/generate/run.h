#pragma once

#include "book/spreadsheet.h"
#include "generate/context.h"
#include "generate/pdf.h"
#include "model/parameters.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orrery::generate {

/// What the user chose.
struct GenerateRequest {
    std::string yearText;
    std::string templateFile;   ///< file name only; empty if none is selected
    std::string templateFolder; ///< ends in a separator, like the next
    std::string outputFolder;
};

/// A request that passed the checks.
struct GenerateJob {
    std::int16_t year = 0; ///< at least 1
    std::string templatePath;
    std::string outputPath; ///< output folder, year, template's file name
};

/// The files that an application opens and saves in a run.
std::vector<std::filesystem::path> FilesOf(const GenerateJob& job);

/// Starts an instance of the spreadsheet application for a run. Throws Error if there is none, or
/// if it cannot open or save files of these paths.
using ApplicationFactory =
    std::function<std::unique_ptr<book::Application>(const GenerateJob& job)>;

inline constexpr const char* kNoYearMessage = "Please inupt a year."; ///< kept on purpose
inline constexpr const char* kNoTemplateMessage = "Please select a template.";

/// Reads a year, at least 1; nothing for other texts and numbers. Throws OverflowError outside 16
/// bits.
std::optional<std::int16_t> ReadYear(std::string_view text);

/// Checks the year, then the template, and builds the paths. Throws OverflowError like `ReadYear`.
std::variant<GenerateJob, RequestProblem> CheckRequest(const GenerateRequest& request);

/// Paths of the files that a run created.
struct SavedCalendar {
    std::string workbook;
    std::optional<std::string> pdf; ///< absent if not requested, or if it failed
};

/// The Generate command: the checks, Easter Sunday of the year, the run, and with a `pdfMaker` the
/// PDF of the sheets that it filled. Returns nothing if no workbook was saved; one that was saved
/// stays so, whatever fails afterwards. An error that the run itself does not catch is reported
/// while the hourglass is still on.
std::optional<SavedCalendar> RunGenerate(const GenerateRequest& request, model::ParameterSets& sets,
                                         const ApplicationFactory& startApplication,
                                         Context& context, PdfMaker* pdfMaker = nullptr);

/// One run, from starting the application to releasing it: visible with the new workbook, or ended
/// if nothing was saved. Sets `saved` when the workbook is saved, before anything else can fail.
/// Throws if starting, hiding, showing or ending the application fails; everything else is
/// reported. A lost application ends the run with one report. An output file that was not saved is
/// removed.
void GenerateCalendar(const ApplicationFactory& startApplication, const GenerateJob& job,
                      model::ParameterSets& sets, Context& context,
                      std::optional<SavedCalendar>& saved);

/// Makes sure that the output file can be written, then opens the template read-only. An existing
/// output file is removed. Reports a failure and returns nullptr; throws only RunEnded.
book::Workbook* OpenCalendarWorkbook(book::Application& application, const GenerateJob& job,
                                     Context& context);

/// Saves under the output path. Reports a failure and returns false; throws only RunEnded.
bool SaveCalendar(book::Workbook& workbook, const std::string& outputPath, Context& context);

} // namespace orrery::generate
