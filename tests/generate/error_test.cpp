#include "generate/error.h"

#include "util/expect_sentences.h"

#include <gtest/gtest.h>

namespace orrery::generate {
namespace {

TEST(RunErrors, HaveASentenceEach)
{
    test::ExpectSentences(ErrorKind::OutputIsTemplate, {});
}

} // namespace
} // namespace orrery::generate
