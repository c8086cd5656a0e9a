#include "cli/commands.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/shell.h"

#include <ostream>

namespace orrery::cli {
namespace {

/// The console has neither fields nor a pointer; a wrong year or template is a report like others.
class ConsoleView : public generate::GenerateView {
public:
    explicit ConsoleView(util::ErrorReporter& reporter) : reporter_(reporter) {}
    void ShowProblem(const generate::RequestProblem& problem) override
    {
        reporter_.Report(problem.message);
    }
    void SetHourglass(bool /*on*/) override {}

private:
    util::ErrorReporter& reporter_;
};

/// Clears the progress bar before a report is written.
class ReporterBesideBar : public util::ErrorReporter {
public:
    ReporterBesideBar(util::ErrorReporter& reporter, ProgressBar& bar)
        : reporter_(reporter), bar_(bar)
    {
    }
    void Report(const std::string& text) override
    {
        bar_.Clear();
        reporter_.Report(text);
    }

private:
    util::ErrorReporter& reporter_;
    ProgressBar& bar_;
};

constexpr std::size_t kStepsPerYear = 24; // twelve months of either calendar

std::string ProgressLabel(std::size_t done, std::size_t years, const std::string& year)
{
    return std::to_string(done) + '/' + std::to_string(years) + "  " + year;
}

/// Nobody is shown a workbook unasked.
generate::Opener OpenerFor(const CommandLine& line, util::ErrorReporter& reporter)
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
    ProgressBar bar(session.console.err, session.console.errIsTerminal && line.years.size() > 1,
                    line.years.size() * kStepsPerYear);
    ReporterBesideBar reporter(session.reporter, bar);
    ConsoleView view(reporter);
    std::size_t year = 0;
    generate::Context context{chosen.settings.names, reporter};
    context.progress = [&](generate::CalendarKind kind, std::int16_t month) {
        const std::size_t before = kind == generate::CalendarKind::Monthly ? 0 : kStepsPerYear / 2;
        bar.Show(year * kStepsPerYear + before + static_cast<std::size_t>(month),
                 ProgressLabel(year + 1, line.years.size(), line.years[year]));
    };
    generate::PdfMaker pdfMaker(session.engines);
    MadeFiles made;
    for (; year < line.years.size(); ++year) {
        const generate::GenerateRequest request{line.years[year], chosen.file,
                                                chosen.settings.TemplatePath,
                                                chosen.settings.OutputPath};
        const auto saved = generate::RunGenerate(
            request, chosen.sets,
            [&] { return session.engines.Start(engine, OpenerFor(line, reporter)); }, context, view,
            line.pdf ? &pdfMaker : nullptr);
        bar.Clear();
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
        throw Error(util::ErrorKind::PdfNotAvailable);
    const MadeFiles made = GenerateYears(session, chosen, engine);
    if (session.line.json)
        PrintGenerateJson(session, engine, made);
}

} // namespace orrery::cli
