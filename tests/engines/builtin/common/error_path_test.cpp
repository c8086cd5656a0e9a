#include "engines/builtin/common/error_path.h"

#include "book/error.h"
#include "util/error.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::builtin {
namespace {

using book::ErrorKind;

TEST(ErrorPathTest, AddsThePathToErrorsWithoutASubject)
{
    const auto subjectOf = [](const std::string& thrown) -> std::string {
        try {
            WithErrorPath("Desk.xlsx",
                          [&] { throw util::Error(ErrorKind::DamagedWorkbook, thrown); });
        }
        catch (const util::Error& error) {
            return error.Subject();
        }
        return "nothing thrown";
    };
    EXPECT_EQ(subjectOf(""), "Desk.xlsx");
    EXPECT_EQ(subjectOf("Other.xlsx"), "Other.xlsx");
}

} // namespace
} // namespace orrery::builtin
