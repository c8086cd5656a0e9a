#include "book/error.h"
#include "cli/commands.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/shell.h"

#include <ostream>

namespace orrery::cli {
namespace {

constexpr std::size_t kStepsPerYear = 24; // twelve months of either calendar

std::string ProgressLabel(std::size_t done, std::size_t years, const std::string& year)
{
    return std::to_string(done) + '/' + std::to_string(years) + "  " + year;
}

/// Shows runs on the console, the progress of several as a bar, which is cleared before a report is
/// written. There are neither fields nor a pointer; a wrong year or template is a report like
/// others.
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
    void MonthDone(generate::CalendarKind kind, std::int16_t month) override
    {
        const std::size_t before = kind == generate::CalendarKind::Monthly ? 0 : kStepsPerYear / 2;
        bar_.Show(year_ * kStepsPerYear + before + static_cast<std::size_t>(month),
                  ProgressLabel(year_ + 1, years_.size(), years_[year_]));
    }

private:
    util::ErrorReporter& reporter_;
    const std::vector<std::string>& years_;
    ProgressBar bar_;
    std::size_t year_ = 0; ///< of the list, from 0
};

/// A workbook is shown only on request.
book::Opener OpenerFor(const CommandLine& line, util::ErrorReporter& reporter)
{
    if (!line.open)
        return {};
    return [&reporter](const std::filesystem::path& path) {
        util::ShellOpen(util::FromPath(path), reporter);
    };
}

/// The paths of the files that a command made.
struct MadeFiles {
    std::vector<std::string> workbooks;
    std::vector<std::string> pdfs;
};

void PrintGenerateJson(Session& session, const std::string& engine, const MadeFiles& made)
{
    JsonWriter json;
    json.BeginObject().Key("engine").Text(engine).Key("saved").Texts(made.workbooks);
    if (session.line.pdf)
        json.Key("pdf").Texts(made.pdfs);
    json.Key("reports").Texts(session.reporter.Reports()).EndObject();
    PrintJson(session, json);
}

/// A path on a line of its own, as soon as the file is there.
void Take(const std::string& path, Session& session, std::vector<std::string>& paths)
{
    if (!session.line.json)
        session.console.out << path << '\n' << std::flush;
    paths.push_back(path);
}

/// One run for each year; a year that fails does not stop the others.
MadeFiles GenerateYears(Session& session, ChosenTemplate& chosen, const std::string& engine)
{
    const CommandLine& line = session.line;
    ConsoleObserver observer(session);
    generate::Context context{chosen.settings.names, observer};
    generate::PdfMaker pdfMaker(session.engines);
    MadeFiles made;
    for (std::size_t year = 0; year < line.years.size(); ++year) {
        observer.BeginYear(year);
        const generate::GenerateRequest request{line.years[year], chosen.file,
                                                chosen.settings.TemplatePath,
                                                chosen.settings.OutputPath};
        const auto saved = generate::RunGenerate(
            request, chosen.sets,
            [&] { return session.engines.Start(engine, OpenerFor(line, observer)); }, context,
            line.pdf ? &pdfMaker : nullptr);
        observer.EndYear();
        if (!saved)
            continue;
        Take(saved->workbook, session, made.workbooks);
        if (saved->pdf)
            Take(*saved->pdf, session, made.pdfs);
    }
    return made;
}

} // namespace

void RunGenerateCommand(Session& session)
{
    ChosenTemplate chosen = ChooseTemplate(session);
    const std::string engine = ChooseEngine(session, chosen.settings);
    if (session.line.pdf && !session.engines.CanPrintPdf())
        throw Error(book::ErrorKind::PdfNotAvailable);
    const MadeFiles made = GenerateYears(session, chosen, engine);
    if (session.line.json)
        PrintGenerateJson(session, engine, made);
}

} // namespace orrery::cli
