#include "generate/error.h"

#include "util/expect_sentences.h"

#include <gtest/gtest.h>

namespace orrery::generate {
namespace {

TEST(RunErrors, HaveOneMessageEach)
{
    test::ExpectSentences(ErrorKind::OutputIsTemplate, {});
}

} // namespace
} // namespace orrery::generate
