#pragma once

#include "book/spreadsheet.h"
#include "generate/context.h"
#include "generate/pdf.h"
#include "model/parameters.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace orrery::generate {

/// Starts an instance of the spreadsheet application. Throws Error when there is none.
using ApplicationFactory = std::function<std::unique_ptr<book::Application>()>;

/// What the user chose.
struct GenerateRequest {
    std::string yearText;
    std::string templateFile;   ///< its name alone; empty where none is selected
    std::string templateFolder; ///< ends in a separator, as does the next
    std::string outputFolder;
};

/// A request that passed the checks.
struct GenerateJob {
    std::int16_t year = 0; ///< at least 1
    std::string templatePath;
    std::string outputPath; ///< the output folder, the year and the template's name
};

inline constexpr const char* kNoYearMessage = "Please inupt a year."; ///< spelled as it always was
inline constexpr const char* kNoTemplateMessage = "Please select a template.";

/// The year of a text, at least 1; nothing for other texts and numbers. Throws OverflowError
/// beyond 32767.
std::optional<std::int16_t> ReadYear(std::string_view text);

/// Checks the year, then the template, and builds the paths. Throws OverflowError as `ReadYear`.
std::variant<GenerateJob, RequestProblem> CheckRequest(const GenerateRequest& request);

/// The paths of the files that a run made.
struct SavedCalendar {
    std::string workbook;
    std::optional<std::string> pdf; ///< nothing where none was asked for, or it failed
};

/// The Generate command: the checks, Easter Sunday of the year, the run, and with a `pdfMaker` the
/// PDF of the sheets that it filled. Nothing where no workbook was saved. An error that the run
/// itself does not catch is reported while the hourglass is still on.
std::optional<SavedCalendar> RunGenerate(const GenerateRequest& request, model::ParameterSets& sets,
                                         const ApplicationFactory& startApplication,
                                         Context& context, PdfMaker* pdfMaker = nullptr);

/// One run, from starting the application to letting go of it: visible with the new workbook, or
/// ended when nothing was saved. True when the workbook was saved. Throws what starting the
/// application and its switches throw; everything else is reported. An application that is gone
/// ends the run with one report. No output file is left that was not saved.
bool GenerateCalendar(const ApplicationFactory& startApplication, const GenerateJob& job,
                      model::ParameterSets& sets, Context& context);

/// Makes sure that the output file can be written, then opens the template read-only. An existing
/// output file is removed. A failure is reported and gives nullptr; throws RunEnded.
book::Workbook* OpenCalendarWorkbook(book::Application& application, const GenerateJob& job,
                                     Context& context);

/// Saves under the output path. A failure is reported and gives false; throws RunEnded.
bool SaveCalendar(book::Workbook& workbook, const std::string& outputPath, Context& context);

} // namespace orrery::generate
