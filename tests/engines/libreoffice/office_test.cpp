#include "engines/libreoffice/plugin/office.h"

#include "book/error.h"
#include "engines/libreoffice/plugin/office_application.h"
#include "office.h"
#include "places/places.h"
#include "processes.h"
#include "util/error_text.h"
#include "util/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace orrery::libreoffice {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
namespace fs = std::filesystem;

/// Instances that do not start: a script stands in for LibreOffice.
class OfficeStartTest : public testing::Test {
protected:
    StartOptions Program(const std::string& script)
    {
        const auto program = test::Options().programFolder;
        for (const auto& entry : fs::directory_iterator(program))
            if (entry.path().filename() != "soffice")
                fs::create_symlink(entry.path(), folder_ / entry.path().filename().string());
        const auto file = folder_.Write("soffice", "#!/bin/sh\n" + script + "\n");
        fs::permissions(file, fs::perms::owner_all);
        auto options = test::Options();
        options.programFolder = folder_.Path();
        options.profiles = folder_ / "profiles";
        return options;
    }

    std::string ErrorOf(const StartOptions& options) const
    {
        try {
            const Office office(options);
            return "it started";
        }
        catch (const Error& error) {
            EXPECT_THAT(test::Descendants(), IsEmpty());
            EXPECT_FALSE(fs::exists(options.profiles / "1")) << "a profile of unknown state";
            return util::ErrorText(error);
        }
    }

    testing_support::ScratchFolder folder_;
};

TEST_F(OfficeStartTest, EndsAtOnce)
{
    EXPECT_EQ(ErrorOf(Program("exit 1")), "LibreOffice could not be started: it ended at once.");
}

TEST_F(OfficeStartTest, RemovesThePipeOfAnInstanceThatWasKilledWithItsProgram)
{
    const std::string prefix = "/tmp/OSL_PIPE_" + std::to_string(::getuid()) + '_';
    const std::string name = "orrery-0123456789abcdef";
    const auto options = Program("exit 1");
    for (const bool isOurs : {true, false}) {
        const std::string pipe = isOurs ? name : "own-" + name;
        std::ofstream(prefix + pipe).close();
        fs::create_directories(options.profiles / "1");
        folder_.Write("profiles/1/pipe", pipe);
        ErrorOf(options);
        EXPECT_EQ(fs::exists(prefix + pipe), !isOurs) << pipe;
        fs::remove(prefix + pipe);
    }
}

TEST_F(OfficeStartTest, CannotBeRun)
{
    auto options = Program("");
    fs::permissions(folder_ / "soffice", fs::perms::owner_read);
    EXPECT_EQ(ErrorOf(options), "LibreOffice could not be started: it ended at once.");
}

TEST_F(OfficeStartTest, NeverListens)
{
    auto options = Program("exec sleep 1000");
    options.timeouts.start = 300ms;
    EXPECT_EQ(ErrorOf(options), "LibreOffice could not be started: it did not answer in time.");
}

TEST_F(OfficeStartTest, ListensAndNeverAnswers)
{
    auto options =
        Program("exec " ORRERY_PYTHON " " +
                (places::SourceFolder() / "tests/engines/libreoffice/never_answers.py").string() +
                " \"$1\"");
    options.timeouts.idle = 300ms;
    EXPECT_EQ(ErrorOf(options), "LibreOffice could not be started: it did not answer in time.");
}

/// Calls to an instance that is gone, for whatever reason.
class OfficeLossTest : public testing::TestWithParam<int> {
protected:
    /// The cause of the call's error, which must be that the instance is lost.
    static std::string LossIn(const std::function<void()>& call)
    {
        try {
            call();
        }
        catch (const Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::ApplicationLost);
            return util::ErrorText(error);
        }
        return "nothing was thrown";
    }
};

TEST_P(OfficeLossTest, EveryCallReportsItAndNothingIsLeft)
{
    testing_support::ScratchFolder folder;
    const auto file = folder / "book.xlsx";
    fs::copy_file(places::SourceFolder() / "tests/engines/builtin/xlsx/data/contract.xlsx", file);
    const bool isStopped = GetParam() == SIGSTOP;
    auto options = isStopped ? test::ShortTimeoutOptions() : test::Options();
    options.timeouts.quit = 5min;
    {
        OfficeApplication application(options);
        auto& workbook = application.OpenWorkbook(file, true);
        auto* const sheet = workbook.FindWorksheet("Sheet1");
        ASSERT_EQ(test::SignalOffice(GetParam()), 1);
        const std::string end = " Generate the calendar again.";
        EXPECT_EQ(LossIn([&] { sheet->SetCell(1, 1, std::int16_t{1}, book::CellMember::Value); }),
                  "\"LibreOffice\" does not answer any more: " +
                      std::string(isStopped ? "it was waited for too long."
                                            : "it has ended unexpectedly.") +
                      end);
        for (const std::function<void()>& call : std::vector<std::function<void()>>{
                 [&] { workbook.FindWorksheet("Sheet2"); }, [&] { sheet->SetName("x"); },
                 [&] { sheet->CopyAfter(*sheet); }, [&] { sheet->Next(); },
                 [&] { workbook.SaveAs(folder / "saved.xlsx", book::AccessMode::NoChange); },
                 [&] { application.OpenWorkbook(file, true); },
                 [&] { application.SetScreenUpdating(false); }})
            EXPECT_THAT(LossIn(call), testing::HasSubstr("does not answer any more"));
        const auto begin = std::chrono::steady_clock::now();
        application.Quit();
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 1min) << "nobody is waited for";
    }
    EXPECT_THAT(test::Descendants(), IsEmpty());
    EXPECT_EQ(folder.Entries(), 1) << "only the template";
}

INSTANTIATE_TEST_SUITE_P(Ways, OfficeLossTest, testing::Values(SIGKILL, SIGSTOP),
                         [](const auto& way) {
                             return std::string(way.param == SIGKILL ? "Killed" : "Stopped");
                         });

TEST(OfficeQuit, KillsAStoppedInstance)
{
    Office office(test::ShortTimeoutOptions());
    ASSERT_EQ(test::SignalOffice(SIGSTOP), 1);
    office.Quit();
    EXPECT_THAT(test::Descendants(), IsEmpty());
}

/// The file of the pipe on which this program's instance listens.
fs::path PipeFile()
{
    for (const pid_t process : test::Descendants()) {
        const auto command =
            testing_support::BytesOf("/proc/" + std::to_string(process) + "/cmdline");
        const std::string_view key = "pipe,name=";
        const auto begin = command.find(key);
        if (begin != std::string::npos) {
            const auto name = begin + key.size();
            return "/tmp/OSL_PIPE_" + std::to_string(::getuid()) + '_' +
                   command.substr(name, command.find(';', name) - name);
        }
    }
    return {};
}

TEST(OfficeQuit, KilledInstanceLeavesNoFile)
{
    Office office(test::Options());
    const auto pipe = PipeFile();
    EXPECT_TRUE(fs::exists(pipe)) << pipe;
    EXPECT_FALSE(fs::is_empty(office.Folder() / "temporary"));
    ASSERT_EQ(test::SignalOffice(SIGKILL), 1);
    office.Quit();
    EXPECT_FALSE(fs::exists(pipe));
}

TEST(OfficeStart, BrokenPipeDoesNotEndTheProgram)
{
    std::signal(SIGPIPE, SIG_DFL);
    const Office office(test::Options());
    EXPECT_EQ(std::signal(SIGPIPE, SIG_IGN), SIG_IGN);
}

TEST(OfficeQuit, LeavesNothing)
{
    {
        const Office office(test::Options());
        EXPECT_FALSE(test::Descendants().empty());
    }
    EXPECT_THAT(test::Descendants(), IsEmpty());
}

TEST(OfficeProfile, TwoInstancesHaveTheirOwnProfiles)
{
    testing_support::ScratchFolder folder;
    auto options = test::Options();
    options.profiles = folder / "profiles";
    Office first(options);
    EXPECT_TRUE(fs::exists(options.profiles / "1"));
    EXPECT_FALSE(fs::exists(options.profiles / "2"));
    Office second(options);
    EXPECT_TRUE(fs::exists(options.profiles / "2"));
    second.Quit();
    first.Quit();
}

} // namespace
} // namespace orrery::libreoffice
