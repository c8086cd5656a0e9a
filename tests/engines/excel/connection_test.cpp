#include "engines/excel/connection.h"

#include "book/error.h"
#include "engines/excel/busy.h"
#include "fake_object.h"
#include "util/error_text.h"

#include <gtest/gtest.h>

#include <numeric>

namespace orrery::excel {
namespace {

using namespace std::chrono_literals;
using book::ErrorKind;

constexpr auto kCellIsEdited = static_cast<HRESULT>(0x800AC472);
constexpr auto kServerUnavailable = static_cast<HRESULT>(0x800706BA);
constexpr auto kCallFailed = static_cast<HRESULT>(0x800706BE);

class ConnectionTest : public testing::Test {
protected:
    /// Makes a call that gets these answers, the last one repeatedly.
    void Make(std::vector<fake::Answer> answers)
    {
        connection_.Make("Worksheet.Copy", [&](ExceptionInfo& info) {
            const std::size_t at = std::min<std::size_t>(tries_++, answers.size() - 1);
            return answers[at](nullptr, info.Receive());
        });
    }

    /// The error of a call that must fail.
    Error ErrorOf(std::vector<fake::Answer> answers)
    {
        try {
            Make(std::move(answers));
        }
        catch (const Error& error) {
            return error;
        }
        ADD_FAILURE() << "nothing was thrown";
        return Error(util::ErrorKind::OutOfRange);
    }

    HRESULT CodeOf(fake::Answer answer)
    {
        try {
            Make({std::move(answer)});
        }
        catch (const CallFailure& failure) {
            return failure.Code();
        }
        return S_OK;
    }

    fake::PausedClock clock_;
    Connection connection_{clock_};
    std::size_t tries_ = 0;
};

TEST_F(ConnectionTest, ReturnsAfterASuccess)
{
    EXPECT_NO_THROW(Make({fake::Refuse(S_OK)}));
    EXPECT_NO_THROW(Make({fake::Refuse(S_FALSE)}));
    EXPECT_TRUE(clock_.pauses.empty());
}

TEST_F(ConnectionTest, UsesTheApplicationsDescription)
{
    const Error error = ErrorOf({fake::Explain(L"That name is taken \x2014 sorry.", 0)});
    EXPECT_EQ(error.Kind(), ErrorKind::ApplicationFailure);
    EXPECT_EQ(error.Subject(), "Worksheet.Copy");
    EXPECT_EQ(util::ErrorText(error), "That name is taken \xE2\x80\x94 sorry.");
    EXPECT_FALSE(connection_.IsLost());
}

TEST_F(ConnectionTest, KeepsTheApplicationsOwnCode)
{
    EXPECT_EQ(CodeOf(fake::Explain(L"Refused", static_cast<SCODE>(0x800A03EC))),
              static_cast<HRESULT>(0x800A03EC));
    EXPECT_EQ(CodeOf(fake::Explain(L"Refused", 0)), DISP_E_EXCEPTION);
    EXPECT_EQ(CodeOf(fake::Refuse(DISP_E_BADINDEX)), DISP_E_BADINDEX);
}

TEST_F(ConnectionTest, UsesTheSystemsMessageIfTheApplicationGivesNone)
{
    const std::string text = util::ErrorText(ErrorOf({fake::Refuse(E_ACCESSDENIED)}));
    EXPECT_TRUE(text.starts_with("Excel failed at Worksheet.Copy (0x80070005): ")) << text;
    EXPECT_GT(text.size(), 50U) << text;
    EXPECT_TRUE(text.ends_with('.')) << text;
}

TEST_F(ConnectionTest, NamesAnUnknownCode)
{
    const auto answer = [](VARIANT*, EXCEPINFO* info) {
        info->wCode = 1004;
        return DISP_E_EXCEPTION;
    };
    const std::string text = util::ErrorText(ErrorOf({answer}));
    EXPECT_TRUE(text.starts_with("Excel failed at Worksheet.Copy (0x800A03EC): ")) << text;
}

TEST_F(ConnectionTest, WaitsUntilTheApplicationIsFree)
{
    EXPECT_NO_THROW(Make({fake::Refuse(RPC_E_CALL_REJECTED),
                          fake::Refuse(RPC_E_SERVERCALL_RETRYLATER), fake::Refuse(kCellIsEdited),
                          fake::Explain(L"busy", kCellIsEdited), fake::Refuse(S_OK)}));
    EXPECT_EQ(tries_, 5U);
    EXPECT_EQ(clock_.pauses.size(), 4U);
}

TEST_F(ConnectionTest, AFailureAfterABusyTimeIsStillExplained)
{
    EXPECT_EQ(util::ErrorText(
                  ErrorOf({fake::Refuse(RPC_E_CALL_REJECTED), fake::Explain(L"Refused.", 0)})),
              "Refused.");
}

TEST_F(ConnectionTest, WaitsAMinuteAtMost)
{
    const Error error = ErrorOf({fake::Refuse(RPC_E_CALL_REJECTED)});
    EXPECT_EQ(error.Kind(), ErrorKind::ApplicationLost);
    EXPECT_EQ(util::ErrorText(error), "\"Excel\" does not answer any more: it has been busy for a "
                                      "minute. Generate the calendar again.");
    EXPECT_EQ(std::accumulate(clock_.pauses.begin(), clock_.pauses.end(), 0ms), 60s);
    EXPECT_LT(tries_, 100U);
    EXPECT_TRUE(std::is_sorted(clock_.pauses.begin(), clock_.pauses.end() - 1));
}

TEST_F(ConnectionTest, EachCallHasItsOwnMinute)
{
    clock_.now += 1h;
    EXPECT_NO_THROW(Make({fake::Refuse(RPC_E_CALL_REJECTED), fake::Refuse(S_OK)}));
}

TEST_F(ConnectionTest, FailsAtOnceAfterItWasBusyForTooLong)
{
    ErrorOf({fake::Refuse(RPC_E_SERVERCALL_RETRYLATER)});
    tries_ = 0;
    EXPECT_EQ(ErrorOf({fake::Refuse(S_OK)}).Kind(), ErrorKind::ApplicationLost);
    EXPECT_EQ(tries_, 0U);
}

TEST_F(ConnectionTest, AnApplicationThatIsGivenUpCountsAsLost)
{
    book::Patience patience;
    CallWatch watch(patience, [] { return true; });
    connection_.WatchBy(watch);
    EXPECT_NO_THROW(Make({fake::Refuse(S_OK)}));
    const Error during = ErrorOf({[&patience](VARIANT*, EXCEPINFO*) {
        patience.GiveUp();
        return RPC_E_SERVER_DIED;
    }});
    EXPECT_EQ(during.Kind(), ErrorKind::ApplicationLost);
    EXPECT_EQ(util::ErrorText(during), "\"Excel\" does not answer any more: the run was cancelled. "
                                       "Generate the calendar again.");
    tries_ = 0;
    EXPECT_EQ(util::ErrorText(ErrorOf({fake::Refuse(S_OK)})), util::ErrorText(during));
    EXPECT_EQ(tries_, 0U);
}

TEST_F(ConnectionTest, IsNotAskedAfterTheUserGaveUpBetweenCalls)
{
    book::Patience patience;
    CallWatch watch(patience, [] { return true; });
    connection_.WatchBy(watch);
    patience.GiveUp();
    EXPECT_EQ(ErrorOf({fake::Refuse(S_OK)}).Kind(), ErrorKind::ApplicationLost);
    EXPECT_EQ(tries_, 0U);
}

TEST_F(ConnectionTest, ACallThatEndsWellIsKeptAlthoughTheUserGaveUp)
{
    book::Patience patience;
    CallWatch watch(patience, [] { return true; });
    connection_.WatchBy(watch);
    EXPECT_NO_THROW(Make({[&patience](VARIANT*, EXCEPINFO*) {
        patience.GiveUp();
        return S_OK;
    }}));
}

TEST_F(ConnectionTest, OneThatWasLeftIsAskedAgainOnRequest)
{
    book::Patience patience;
    CallWatch watch(patience, [] { return false; });
    connection_.WatchBy(watch);
    connection_.AskAgain(); // changes nothing before the user gives up
    patience.GiveUp();
    EXPECT_EQ(ErrorOf({fake::Refuse(S_OK)}).Kind(), ErrorKind::ApplicationLost);
    EXPECT_EQ(tries_, 0U);
    connection_.AskAgain();
    EXPECT_NO_THROW(Make({fake::Refuse(S_OK)}));
    EXPECT_EQ(tries_, 1U);
}

TEST_F(ConnectionTest, OneThatIsGoneIsNotAskedAgain)
{
    book::Patience patience;
    CallWatch watch(patience, [] { return false; });
    connection_.WatchBy(watch);
    ErrorOf({fake::Refuse(RPC_E_DISCONNECTED)});
    patience.GiveUp();
    connection_.AskAgain();
    tries_ = 0;
    EXPECT_EQ(ErrorOf({fake::Refuse(S_OK)}).Kind(), ErrorKind::ApplicationLost);
    EXPECT_EQ(tries_, 0U);
}

TEST_F(ConnectionTest, OneThatWasEndedIsNotAskedAgain)
{
    book::Patience patience;
    CallWatch watch(patience, [] { return true; });
    connection_.WatchBy(watch);
    patience.GiveUp();
    connection_.AskAgain();
    EXPECT_EQ(ErrorOf({fake::Refuse(S_OK)}).Kind(), ErrorKind::ApplicationLost);
    EXPECT_EQ(tries_, 0U);
}

class LossTest : public ConnectionTest, public testing::WithParamInterface<HRESULT> {};

TEST_P(LossTest, EveryLaterCallFailsAtOnceWithTheSameError)
{
    const Error first = ErrorOf({fake::Refuse(GetParam())});
    EXPECT_EQ(first.Kind(), ErrorKind::ApplicationLost);
    EXPECT_EQ(first.Subject(), "Excel");
    EXPECT_FALSE(first.Cause().empty());
    EXPECT_TRUE(connection_.IsLost());
    tries_ = 0;
    const Error second = ErrorOf({fake::Refuse(S_OK)});
    EXPECT_EQ(util::ErrorText(second), util::ErrorText(first));
    EXPECT_EQ(tries_, 0U) << "nobody is asked any more";
    EXPECT_TRUE(clock_.pauses.empty());
}

INSTANTIATE_TEST_SUITE_P(Codes, LossTest,
                         testing::Values(RPC_E_DISCONNECTED, RPC_E_SERVER_DIED,
                                         RPC_E_SERVER_DIED_DNE, CO_E_OBJNOTCONNECTED,
                                         kServerUnavailable, kCallFailed));

} // namespace
} // namespace orrery::excel
