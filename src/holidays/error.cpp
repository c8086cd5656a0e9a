#include "holidays/error.h"

#include "util/error_text.h"
#include "util/sentence.h"
#include "util/text.h"

namespace orrery::holidays {
namespace {

/// A sentence that may be missing, behind another one.
std::string Behind(const std::string& sentence)
{
    return sentence.empty() ? sentence : ' ' + sentence;
}

/// Asks whether a known word was meant, if one is like it.
std::string DidYouMean(const std::string& word)
{
    return word.empty() ? word : " Did you mean " + util::Quoted(word) + "?";
}

constexpr const char* kWriteDate = " Write the month and the day, such as 1225.";
constexpr const char* kNothingAfter = " Nothing after this line is read.";

} // namespace

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details)
{
    const std::string subject = util::QuotedBeginning(details.subject);
    switch (kind) {
    case ErrorKind::RuleWithoutFields:
        return subject + " is not a holiday. Write the date, the kind and the name with commas "
                         "between them, such as 1225,DAY,Christmas Day.";
    case ErrorKind::UnknownRuleKind:
        return "The kind " + subject + " is not known." +
               (details.cause.empty() ? " Write DAY, a weekday or EASTER."
                                      : DidYouMean(details.cause));
    case ErrorKind::RuleDateNotNumeric:
        return (details.subject.empty() ? "The date is missing."
                                        : "The date " + subject + " is not a number.") +
               kWriteDate;
    case ErrorKind::NoSuchRuleDate:
        return "The date " + subject + " does not exist." + kWriteDate;
    case ErrorKind::RuleNumberTooLarge:
        return "The number " + subject + " is too large." + kNothingAfter;
    case ErrorKind::RuleWithoutMonth:
        return "The date " + subject + " has no month." + kWriteDate + kNothingAfter;
    case ErrorKind::TooManyRules:
        return "There are more than 1,025 holidays. Those from this line on are not read.";
    case ErrorKind::TooManyExtraLines:
        return "There are more than 8,200 lines that refine holidays. Those from this line on are "
               "not read.";
    case ErrorKind::WrongRuleDate:
        return (details.subject.empty() ? "The date is missing."
                                        : "The date " + subject + " is not one of its kind.") +
               Behind(details.cause);
    case ErrorKind::UnknownRefinement:
        return subject + " is not understood." + DidYouMean(util::ToLowerAscii(details.cause));
    case ErrorKind::WrongRefinement:
        return subject + " is not understood." + Behind(details.cause);
    case ErrorKind::RefinementWithoutRule:
        return subject + " has no holiday above it that it could refine.";
    }
    return {};
}

bool EndsReading(const util::Error& error)
{
    return error.Kind() == ErrorKind::RuleNumberTooLarge ||
           error.Kind() == ErrorKind::RuleWithoutMonth;
}

std::string DescribeProblem(const LineProblem& problem)
{
    return "Line " + std::to_string(problem.line) + ": " + util::ErrorText(problem.error);
}

} // namespace orrery::holidays
