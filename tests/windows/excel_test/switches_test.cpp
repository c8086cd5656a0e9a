// The switches of an instance as its own object model tells them, beside what the engine has set.
#include "engines/excel/excel_application.h"
#include "excel_test/client.h"
#include "excel_test/run_test.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace orrery;
using namespace orrery::excel_test;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Whether DisplayAlerts, Visible, Interactive and ScreenUpdating are on, in this order.
using Switches = std::vector<bool>;

const Switches kAllOn(4, true);
const Switches kAllOff(4, false);

class ExcelSwitchesTest : public RunTest {
protected:
    void TearDown() override { application_ = {}; }

    /// Starts an instance and keeps a reference of the test's own, with which it lives on.
    std::unique_ptr<book::Application> Start()
    {
        const auto start = [this] {
            application_ = StartServer();
            excel::Pointer<IDispatch> object;
            EXPECT_NE(application_.AsObject(), nullptr);
            application_.AsObject()->QueryInterface(IID_IDispatch, object.ReceiveAny());
            return excel::Instance{std::move(object), std::nullopt};
        };
        return std::make_unique<excel::ExcelApplication>(start,
                                                         std::make_unique<excel::SystemClock>());
    }
    Switches Read() const
    {
        Switches switches;
        for (const char* const name : {"DisplayAlerts", "Visible", "Interactive", "ScreenUpdating"})
            switches.push_back(IsOn(name));
        return switches;
    }
    /// The user's workbook is opened in the instance when the third month sheet is made.
    std::string UserOpensAWorkbook() const
    {
        const auto path = folder_.Path() / "Mine.xlsx";
        std::filesystem::copy_file(XlsxTemplate(), path);
        return "open Worksheet.Copy 3 " + util::FromPath(path);
    }

    const Apartment apartment_;
    automation::Variant application_;

private:
    bool IsOn(const char* name) const
    {
        const Answer answer = Get(application_, name);
        EXPECT_EQ(answer.result, S_OK) << name;
        EXPECT_EQ(answer.value.Type(), VT_BOOL) << name;
        return V_BOOL(&answer.value.Get()) != VARIANT_FALSE;
    }
};

/// Reads the switches when a failure is reported, before the run ends the application.
class FailureObserver : public fake::ListObserver {
public:
    explicit FailureObserver(std::function<Switches()> read) : read_(std::move(read)) {}
    void Report(const std::string& text) override
    {
        atReport = read_();
        ListObserver::Report(text);
    }

    Switches atReport;

private:
    std::function<Switches()> read_;
};

TEST_F(ExcelSwitchesTest, AreOffDuringARunAndOnAfterwards)
{
    std::vector<Switches> seen;
    observer_.monthDone = [&](generate::CalendarKind /*kind*/, std::int16_t month) {
        if (month == 1 || month == 12)
            seen.push_back(Read());
    };
    observer_.saving = [&] { seen.push_back(Read()); };
    EXPECT_EQ(Run([this] { return Start(); }), util::FromPath(Target()));
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_EQ(seen.size(), 5U);
    EXPECT_THAT(seen, Each(kAllOff));
    EXPECT_EQ(Read(), kAllOn);
    application_ = {};
    TestServer::CloseAll();
}

TEST_F(ExcelSwitchesTest, AreStillOffWhenARunThatFailedTellsExcelToQuit)
{
    TestServer::SetFaults({"fail Workbook.SaveAs 1 The disk is full."});
    FailureObserver observer([this] { return Read(); });
    generate::Context context{names_, observer};
    const std::string folder = util::WithTrailingSeparator(util::FromPath(folder_.Path()));
    EXPECT_FALSE(generate::RunGenerate(
        {"2024", "Desk.xlsx", folder, folder + "out\\"}, sets_,
        [this](const auto& /*job*/) { return Start(); }, context));
    EXPECT_THAT(observer.reports,
                ElementsAre("Failed to save the calendar file.\r\nThe disk is full."));
    EXPECT_EQ(observer.atReport, kAllOff);
    EXPECT_EQ(Get(application_, "Visible").result, CO_E_OBJNOTCONNECTED) << "it was not quit";
    application_ = {};
    EXPECT_TRUE(TestServer::WaitForProcesses(0));
}

TEST_F(ExcelSwitchesTest, AreOnAfterAFailureThatLeavesExcelToItsUser)
{
    TestServer::SetFaults({UserOpensAWorkbook(), "fail Workbook.SaveAs 1 The disk is full."});
    EXPECT_EQ(Run([this] { return Start(); }), std::nullopt);
    EXPECT_EQ(Read(), kAllOn);
    application_ = {};
    EXPECT_FALSE(TestServer::WaitForProcesses(0, std::chrono::milliseconds(500)));
    TestServer::CloseAll();
}

} // namespace
