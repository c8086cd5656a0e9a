#include "cli/error.h"

#include "util/expect_sentences.h"

#include <gtest/gtest.h>

namespace orrery::cli {
namespace {

TEST(CommandLineErrors, HaveOneMessageEach)
{
    test::ExpectSentences(ErrorKind::WouldReplaceHolidays, {});
}

} // namespace
} // namespace orrery::cli
