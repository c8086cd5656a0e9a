#include "holidays/error.h"

#include "util/error_text.h"
#include "util/sentence.h"

namespace orrery::holidays {
namespace {

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
        return "The kind " + subject + " is not known. Write DAY, a weekday or EASTER.";
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
