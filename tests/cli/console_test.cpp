#include "cli/console.h"

#include <gtest/gtest.h>

#include <sstream>

namespace orrery::cli {
namespace {

TEST(WithPlainLineEndsTest, KeepsALoneCarriageReturn)
{
    EXPECT_EQ(WithPlainLineEnds("a\r\nb\rc\r\n\r"), "a\nb\rc\n\r");
}

TEST(ConsoleReporterTest, WritesTheReportWithPlainLineEnds)
{
    std::ostringstream out;
    std::ostringstream err;
    Console console{out, err};
    ConsoleReporter reporter(console);
    EXPECT_EQ(reporter.ExitCode(), 0);
    reporter.Report("Error in filling data(2024-3).\r\nThe cell is locked.");
    EXPECT_EQ(err.str(), "Error!\nError Info: Error in filling data(2024-3).\nThe cell is "
                         "locked.\n");
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(reporter.ExitCode(), 1);
    EXPECT_EQ(reporter.Reports(),
              (std::vector<std::string>{"Error in filling data(2024-3).\nThe cell is locked."}));
}

TEST(ConsoleReporterTest, WritesAWarningOnceAndCountsItForNothing)
{
    std::ostringstream out;
    std::ostringstream err;
    Console console{out, err};
    ConsoleReporter reporter(console);
    reporter.Warn("The macros\r\nare gone.");
    reporter.Warn("The macros\r\nare gone.");
    reporter.Warn("The signature is gone.");
    EXPECT_EQ(err.str(), "Warning: The macros\nare gone.\nWarning: The signature is gone.\n");
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(reporter.ExitCode(), 0);
    EXPECT_EQ(reporter.Reports(), std::vector<std::string>());
    EXPECT_EQ(reporter.Warnings(),
              (std::vector<std::string>{"The macros\nare gone.", "The signature is gone."}));
}

TEST(ProgressBarTest, FillsFromEmptyToFull)
{
    std::ostringstream err;
    {
        ProgressBar bar(err, true, 4);
        bar.Show(1, "one");
        bar.Show(4, "all");
        bar.Show(9, "more than all");
    }
    const std::string quarter = "[" + std::string(10, '#') + std::string(30, ' ') + "] one";
    const std::string full = "[" + std::string(40, '#') + "] ";
    EXPECT_EQ(err.str(), "\r\033[K" + quarter + "\r\033[K" + full + "all\r\033[K" + full +
                             "more than all\r\033[K");
}

TEST(ProgressBarTest, PrintsNothingWithoutATerminal)
{
    std::ostringstream err;
    {
        ProgressBar bar(err, false, 0);
        bar.Show(1, "one");
        bar.Clear();
    }
    EXPECT_EQ(err.str(), "");
}

} // namespace
} // namespace orrery::cli
