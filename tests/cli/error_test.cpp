#include "cli/error.h"

#include "util/expect_sentences.h"

#include <gtest/gtest.h>

namespace orrery::cli {
namespace {

TEST(CommandLineErrors, HaveASentenceEach)
{
    test::ExpectSentences(ErrorKind::WrongUsage, {});
}

} // namespace
} // namespace orrery::cli
