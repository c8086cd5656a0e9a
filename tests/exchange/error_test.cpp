#include "exchange/error.h"

#include "util/expect_sentences.h"

#include <gtest/gtest.h>

namespace orrery::exchange {
namespace {

TEST(ExchangeErrors, HaveOneMessageEach)
{
    test::ExpectSentences(ErrorKind::NoSuchSection, {});
    test::ExpectSubject(ErrorKind::FileTooLarge);
    test::ExpectNoEmptyName(ErrorKind::NotAText);
    test::ExpectNoEmptyName(ErrorKind::NoDates);
}

} // namespace
} // namespace orrery::exchange
