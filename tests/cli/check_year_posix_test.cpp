#include "cli/commands.h"

#include "book/fake_engines.h"
#include "util/scratch_folder_test.h"
#include "util/time_zone_posix.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace orrery::cli {
namespace {

using CheckYearTest = testing_support::ScratchFolderTest;

/// What the command prints without a year on New Year's Eve.
std::string CheckOnNewYearsEve(const std::string& folder)
{
    app::SystemFolders system;
    system.executable = folder;
    CommandLine line;
    line.command = Command::Check;
    line.templateName = "Desk.xlsx";
    std::ostringstream out;
    std::ostringstream err;
    Console console{out, err, false, nullptr, testing_support::kNewYearsEve};
    fake::Engines engines;
    EXPECT_EQ(RunCommand(line, system, engines, console), 0) << err.str();
    return out.str();
}

TEST_F(CheckYearTest, IsThatOfTheUsersTimeZone)
{
    Write("orrery.ini", "[Environment]\n");
    Write("template/Desk.xlsx", "");
    fake::WriteWorkbookFile(folder_ / "template/Desk.xlsx", {{"Sheet1", {}}, {"Sheet2", {}}});
    const std::string before = "Desk.xlsx: every sheet is there and every cell of ";
    const testing_support::ScopedTimeZone ahead("XXX-1");
    EXPECT_EQ(CheckOnNewYearsEve(At("")), before + "2027 lies inside it.\n");
    const testing_support::ScopedTimeZone behind("XXX+1");
    EXPECT_EQ(CheckOnNewYearsEve(At("")), before + "2026 lies inside it.\n");
}

} // namespace
} // namespace orrery::cli
