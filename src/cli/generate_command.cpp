#include "book/error.h"
#include "cli/commands.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/shell.h"

#include <ostream>

namespace orrery::cli {
namespace {

constexpr std::size_t kStepsPerYear = 24; // twelve months in each calendar

std::string ProgressLabel(std::size_t done, std::size_t years, const std::string& year)
{
    return std::to_string(done) + '/' + std::to_string(years) + "  " + year;
}

/// Shows runs on the console. The progress of several years is a bar, which is cleared before a
/// report is written. An invalid year or template is reported like other errors.
class ConsoleObserver : public generate::RunObserver {
public:
    ConsoleObserver(Session& session)
        : reporter_(session.reporter), years_(session.line.years),
          bar_(session.console.err, session.console.errIsTerminal && years_.size() > 1,
               years_.size() * kStepsPerYear)
    {
    }
    void BeginYear(std::size_t year) { year_ = year; }
    void EndYear() { bar_.Clear(); }

    void Report(const std::string& text) override
    {
        bar_.Clear();
        reporter_.Report(text);
    }
    void Warn(const std::string& text) override
    {
        bar_.Clear();
        reporter_.Warn(text);
    }
    void MonthDone(generate::CalendarKind kind, std::int16_t month) override
    {
        const std::size_t before = kind == generate::CalendarKind::Monthly ? 0 : kStepsPerYear / 2;
        bar_.Show(year_ * kStepsPerYear + before + static_cast<std::size_t>(month),
                  ProgressLabel(year_ + 1, years_.size(), years_[year_]));
    }

private:
    ConsoleReporter& reporter_;
    const std::vector<std::string>& years_;
    ProgressBar bar_;
    std::size_t year_ = 0; ///< index in the list
};

/// The workbook is opened only on request.
book::Opener OpenerFor(const CommandLine& line, util::ErrorReporter& reporter)
{
    if (!line.open)
        return {};
    return [&reporter](const std::filesystem::path& path) {
        util::ShellOpen(util::FromPath(path), reporter);
    };
}

book::PdfBy PdfByOf(const CommandLine& line)
{
    return line.pdfBy == "builtin" ? book::PdfBy::BuiltIn : book::PdfBy::Office;
}

/// Throws Error(PdfNotAvailable) if the command line asks for PDF files that nothing here makes.
void CheckPdf(const Session& session)
{
    const book::PdfBy by = PdfByOf(session.line);
    if (session.line.pdf && !session.engines.CanPrintPdf(by))
        throw Error(book::ErrorKind::PdfNotAvailable, by == book::PdfBy::BuiltIn ? "builtin" : "");
}

/// Paths of the files that the command created.
struct SavedFiles {
    std::vector<std::string> workbooks;
    std::vector<std::string> pdfs;
};

void PrintGenerateJson(Session& session, const std::string& engine, const SavedFiles& files)
{
    JsonWriter json;
    json.BeginObject().Key("engine").Text(engine).Key("saved").Texts(files.workbooks);
    if (session.line.pdf)
        json.Key("pdf").Texts(files.pdfs);
    json.Key("reports").Texts(session.reporter.Reports());
    if (!session.reporter.Warnings().empty())
        json.Key("warnings").Texts(session.reporter.Warnings());
    json.EndObject();
    PrintJson(session, json);
}

/// Prints the path on its own line as soon as the file exists, and records it.
void AddSavedFile(const std::string& path, Session& session, std::vector<std::string>& paths)
{
    if (!session.line.json)
        session.console.out << path << '\n' << std::flush;
    paths.push_back(path);
}

bool IsInterrupted(const Session& session)
{
    return session.console.patience != nullptr && session.console.patience->IsOver();
}

/// One run for each year; a failed year does not stop the others, Ctrl+C does.
SavedFiles GenerateYears(Session& session, ChosenTemplate& chosen, const std::string& engine)
{
    const CommandLine& line = session.line;
    ConsoleObserver observer(session);
    generate::Context context{chosen.settings.names, observer};
    generate::PdfMaker pdfMaker(session.engines, PdfByOf(line), session.console.patience);
    const auto start = [&](const generate::GenerateJob& job) {
        return session.engines.Start(
            engine, {OpenerFor(line, observer), generate::FilesOf(job), session.console.patience});
    };
    SavedFiles files;
    for (std::size_t year = 0; year < line.years.size() && !IsInterrupted(session); ++year) {
        observer.BeginYear(year);
        const generate::GenerateRequest request{line.years[year], chosen.file,
                                                chosen.settings.TemplatePath,
                                                chosen.settings.OutputPath};
        const auto saved = generate::RunGenerate(request, chosen.sets, start, context,
                                                 line.pdf ? &pdfMaker : nullptr);
        observer.EndYear();
        if (!saved)
            continue;
        AddSavedFile(saved->workbook, session, files.workbooks);
        if (saved->pdf)
            AddSavedFile(*saved->pdf, session, files.pdfs);
    }
    if (IsInterrupted(session) && session.reporter.Reports().empty() &&
        files.workbooks.size() < line.years.size())
        observer.Report("Ctrl+C ended the command before all calendars were made.");
    return files;
}

} // namespace

void RunGenerateCommand(Session& session)
{
    ChosenTemplate chosen = ChooseTemplate(session);
    const std::string engine = ChooseEngine(session, chosen.settings);
    CheckPdf(session);
    const SavedFiles files = GenerateYears(session, chosen, engine);
    if (session.line.json)
        PrintGenerateJson(session, engine, files);
}

} // namespace orrery::cli
