#include "engines/builtin/application.h"
#include "engines/builtin/saved_sheets.h"
#include "engines/libreoffice/plugin/office_application.h"
#include "generate/run.h"
#include "generate/run_support.h"
#include "holidays/holiday_dates.h"
#include "model/parameter_file.h"
#include "office.h"
#include "places/places.h"
#include "processes.h"
#include "util/paths.h"
#include "util/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace orrery::libreoffice {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const std::filesystem::path kTemplates = places::SourceFolder() / "data/template";

class OfficeRunTest : public testing::Test {
protected:
    OfficeRunTest() { model::ReadParameterFile(kTemplates / "Desk.ini", names_, sets_); }

    using Starter = std::function<std::unique_ptr<book::Application>()>;

    bool Run(const Starter& start, const std::filesystem::path& target,
             const std::filesystem::path& source)
    {
        context_.easter = holidays::EasterDate(2027);
        std::optional<generate::SavedCalendar> saved;
        generate::GenerateCalendar([&](const auto& /*job*/) { return start(); },
                                   {2027, util::FromPath(source), util::FromPath(target)}, sets_,
                                   context_, saved);
        return saved.has_value();
    }

    testing_support::ScratchFolder folder_;
    model::NameTables names_ = fake::TestNames();
    fake::ListObserver observer_;
    generate::Context context_{names_, observer_};
    model::ParameterSets sets_;
};

class OfficeWholeRunTest : public OfficeRunTest, public testing::WithParamInterface<const char*> {};

TEST_P(OfficeWholeRunTest, WritesWhatTheBuiltInEngineWrites)
{
    const std::string format = GetParam();
    const auto source = kTemplates / ("Desk." + format);
    const auto own = folder_ / ("own." + format);
    const auto other = folder_ / ("other." + format);
    ASSERT_TRUE(Run([] { return builtin::CreateApplication({}); }, other, source));
    ASSERT_TRUE(
        Run([] { return std::make_unique<OfficeApplication>(test::Options()); }, own, source));
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_THAT(test::Descendants(), IsEmpty()) << "there is no display to show it on";
    const auto read = format == "xlsx" ? orrery::test::ReadXlsx : orrery::test::ReadXls;
    const auto ours = read(own);
    const auto theirs = read(other);
    ASSERT_EQ(ours.size(), theirs.size());
    for (std::size_t i = 0; i < ours.size(); ++i) {
        EXPECT_EQ(ours[i].name, theirs[i].name);
        EXPECT_EQ(ours[i].cells, theirs[i].cells) << ours[i].name;
        EXPECT_GT(ours[i].cells.size(), 28U) << ours[i].name;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, OfficeWholeRunTest, testing::Values("xlsx", "xls"),
                         [](const auto& format) { return std::string(format.param); });

/// An application that the test goes on looking at after a run.
class LentApplication : public book::Application {
public:
    explicit LentApplication(book::Application& real) : real_(real) {}
    void SetDisplayAlerts(bool on) override { real_.SetDisplayAlerts(on); }
    void SetVisible(bool on) override { real_.SetVisible(on); }
    bool Visible() const override { return real_.Visible(); }
    void SetInteractive(bool on) override { real_.SetInteractive(on); }
    void SetScreenUpdating(bool on) override { real_.SetScreenUpdating(on); }
    book::Workbook& OpenWorkbook(const std::filesystem::path& path, bool readOnly) override
    {
        return real_.OpenWorkbook(path, readOnly);
    }
    void ReleaseWorkbook(book::Workbook& workbook) override { real_.ReleaseWorkbook(workbook); }
    void Quit() override { real_.Quit(); }

private:
    book::Application& real_;
};

TEST_F(OfficeRunTest, IsVisibleAfterARunButNotAfterOneThatFailed)
{
    OfficeApplication application(test::Options());
    const auto lend = [&] { return std::make_unique<LentApplication>(application); };
    observer_.monthDone = [&](auto /*kind*/, auto /*month*/) {
        EXPECT_FALSE(application.Visible());
    };
    ASSERT_TRUE(Run(lend, folder_ / "2027Desk.xlsx", kTemplates / "Desk.xlsx"));
    EXPECT_TRUE(application.Visible());
    EXPECT_THAT(observer_.reports, IsEmpty());
    observer_.saving = [&] { std::filesystem::remove_all(folder_ / "out"); };
    EXPECT_FALSE(Run(lend, folder_ / "out/2027Desk.xlsx", kTemplates / "Desk.xlsx"));
    EXPECT_FALSE(application.Visible());
    EXPECT_THAT(observer_.reports, ElementsAre(StartsWith("Failed to save the calendar file.")));
}

/// When the instance is interrupted, and the beginning of the single report.
struct Interruption {
    const char* name;
    const char* report;
};

class OfficeInterruptionTest : public OfficeRunTest,
                               public testing::WithParamInterface<Interruption> {};

TEST_P(OfficeInterruptionTest, EndsInOneReportWithoutAProcessOrAFile)
{
    const std::string moment = GetParam().name;
    const auto sendSignal = [](int signal) { EXPECT_EQ(test::SignalOffice(signal), 1); };
    const auto start = [&] {
        auto application = std::make_unique<OfficeApplication>(
            moment == "CellHangs" ? test::ShortTimeoutOptions() : test::Options());
        if (moment == "Open")
            sendSignal(SIGKILL);
        return application;
    };
    observer_.monthDone = [&](generate::CalendarKind kind, std::int16_t month) {
        const bool isMonthly = kind == generate::CalendarKind::Monthly;
        if (month == 3 && moment == (isMonthly ? "Next" : "Cell"))
            sendSignal(SIGKILL);
        if (month == 3 && !isMonthly && moment == "CellHangs")
            sendSignal(SIGSTOP);
    };
    observer_.saving = [&] {
        if (moment == "Save")
            sendSignal(SIGKILL);
    };
    EXPECT_FALSE(Run(start, folder_ / "out/2027Desk.xlsx", kTemplates / "Desk.xlsx"));
    EXPECT_THAT(observer_.reports, ElementsAre(StartsWith(GetParam().report)));
    EXPECT_THAT(observer_.reports.at(0), testing::HasSubstr("does not answer any more"));
    EXPECT_THAT(test::Descendants(), IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "out"));
}

INSTANTIATE_TEST_SUITE_P(Moments, OfficeInterruptionTest,
                         testing::Values(Interruption{"Open", "Failed to open the calendar file"},
                                         Interruption{"Next", "Error in making monthly calendar."},
                                         Interruption{"Cell", "Error in filling data(2027-4)."},
                                         Interruption{"CellHangs",
                                                      "Error in filling data(2027-4)."},
                                         Interruption{"Save", "Failed to save the calendar file."}),
                         [](const auto& blow) { return std::string(blow.param.name); });

} // namespace
} // namespace orrery::libreoffice
