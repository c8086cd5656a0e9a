#include "excel_server/typed_value.h"

#include "excel_server/failure.h"
#include "util/text.h"

#include <algorithm>
#include <regex>
#include <vector>

namespace orrery::excel_server {
namespace {

/// What differs between the languages; regular expressions for text without blanks at its ends.
struct Rules {
    std::regex number;
    std::regex date;
    std::vector<std::string> logical;
    std::vector<std::string> errors;
};

/// `group` and `point` are the expressions for the separators of thousands and of decimals,
/// `months` those for names of months.
Rules MakeRules(const std::string& group, const std::string& point, const std::string& months)
{
    const std::string currency = "(\\$|€|£)?";
    const std::string digits =
        "(\\d+|\\d{1,3}(" + group + "\\d{3})+)?(" + point + "\\d*)?(e[-+]?\\d+)?";
    const std::string fraction = "\\d+ \\d+/\\d+";
    const std::string time = "\\d{1,2}:\\d{2}(:\\d{2})?( ?[ap]m?)?";
    const std::string year = "\\d{2,4}";
    Rules rules;
    rules.number = std::regex("[-+(]*" + currency + " ?(?=\\D?\\d)(" + digits + '|' + fraction +
                                  '|' + time + ") ?%? ?" + currency + "\\)?",
                              std::regex::icase);
    rules.date = std::regex("\\d{1,4}[-/]\\d{1,2}([-/]\\d{1,4})?|" // 1-2, 2027-03-28
                            "\\d{1,2}\\.? ?-?(" +
                                months + ")( |-|, )?(" + year + ")?|(" + months +
                                ")[ -]\\d{1,2}(, ?" + year + ")?|(" + months + ")[ -]" + year +
                                (point == "," ? "|\\d{1,2}\\.\\d{1,2}\\.?(" + year + ")?" : ""),
                            std::regex::icase);
    return rules;
}

const Rules& RulesOf(Language language)
{
    static const Rules english = [] {
        Rules rules =
            MakeRules(",", "\\.",
                      "jan(uary)?|feb(ruary)?|mar(ch)?|apr(il)?|may|june?|july?|aug(ust)?|"
                      "sep(tember)?|oct(ober)?|nov(ember)?|dec(ember)?");
        rules.logical = {"TRUE", "FALSE"};
        rules.errors = {"#N/A", "#DIV/0!", "#NAME?", "#NULL!", "#NUM!", "#REF!", "#VALUE!"};
        return rules;
    }();
    static const Rules german = [] {
        Rules rules = MakeRules("\\.", ",",
                                "jan(uar)?|feb(ruar)?|m(ä|Ä)rz|apr(il)?|mai|juni?|juli?|aug(ust)?|"
                                "sep(tember)?|okt(ober)?|nov(ember)?|dez(ember)?");
        rules.logical = {"WAHR", "FALSCH"};
        rules.errors = {"#NV", "#DIV/0!", "#NAME?", "#NULL!", "#ZAHL!", "#BEZUG!", "#WERT!"};
        return rules;
    }();
    return language == Language::German ? german : english;
}

bool IsOneOf(const std::vector<std::string>& words, const std::string& text)
{
    return std::any_of(words.begin(), words.end(), [&](const std::string& word) {
        return util::EqualIgnoringCase(word, text);
    });
}

bool BeginsFormula(const std::string& text)
{
    return text.size() > 1 && std::string("=+-@").find(text.front()) != std::string::npos;
}

TypedKind KindOf(const std::string& text, const Rules& rules)
{
    if (std::regex_match(text, rules.number))
        return TypedKind::Number;
    if (std::regex_match(text, rules.date))
        return TypedKind::Date;
    if (IsOneOf(rules.logical, text))
        return TypedKind::Logical;
    if (IsOneOf(rules.errors, text))
        return TypedKind::Error;
    if (!BeginsFormula(text))
        return TypedKind::Text;
    if (std::string("=+-*/&(").find(text.back()) != std::string::npos)
        throw ExcelFailure(kExcelError);
    return TypedKind::Formula;
}

} // namespace

std::string NameOf(TypedKind kind)
{
    switch (kind) {
    case TypedKind::Text:
        return "a text";
    case TypedKind::Number:
        return "a number";
    case TypedKind::Date:
        return "a date";
    case TypedKind::Logical:
        return "a logical value";
    case TypedKind::Error:
        return "an error value";
    case TypedKind::Formula:
        return "a formula";
    }
    return {};
}

TypedValue ReadTyped(const std::string& text, Language language)
{
    if (text.starts_with('\''))
        return {TypedKind::Text, text.substr(1)};
    constexpr std::size_t longest = 255; // nothing but a text is longer; the library recurses
    const std::string typed(util::Trim(text));
    if (typed.size() > longest)
        return {TypedKind::Text, text};
    return {KindOf(typed, RulesOf(language)), text};
}

} // namespace orrery::excel_server
