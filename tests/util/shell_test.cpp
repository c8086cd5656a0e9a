#include "util/shell.h"

#include <gtest/gtest.h>
#include <string_view>

namespace orrery::util {
namespace {

struct MessageCase {
    int result;
    std::string_view message;
};
class ShellErrorMessageTest : public testing::TestWithParam<MessageCase> {};
TEST_P(ShellErrorMessageTest, HasItsText)
{
    EXPECT_EQ(ShellErrorMessage(GetParam().result), GetParam().message);
}
INSTANTIATE_TEST_SUITE_P(
    Table, ShellErrorMessageTest,
    testing::Values(
        MessageCase{0, "Out of memory"}, MessageCase{8, "Out of memory"},
        MessageCase{2, "File not found"}, MessageCase{3, "Path not found"},
        MessageCase{5, "Path/file access error"},
        MessageCase{11, "The executable file is invalid or corrupt"},
        MessageCase{26, "A sharing violation occurred."},
        MessageCase{27, "This file type does not have a valid file association."},
        MessageCase{28,
                    "The file could not be opened due to time out.  Please try again in a moment."},
        MessageCase{29,
                    "The file could not be opened because the DDE transaction failed.  Please try "
                    "again in a moment."},
        MessageCase{30,
                    "The file could not be opened because the target application is busy.  Please "
                    "try again in a moment."},
        MessageCase{31, "No application is associated with this file type."},
        MessageCase{32, "The specified dynamic-link library was not found."}));

TEST(ShellErrorMessage, HasAGeneralMessageForOtherResults)
{
    for (const int result : {1, 4, 6, 7, 9, 10, 12, 25})
        EXPECT_EQ(ShellErrorMessage(result),
                  "An error occurred occurred whilst trying to open or print the selected file.");
}

} // namespace
} // namespace orrery::util
