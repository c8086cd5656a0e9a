#include "engines/builtin/xlsx/formula/formula.h"

#include "engines/builtin/common/sheet_quotes.h"
#include "engines/builtin/xlsx/formula/formula_lexer.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orrery::xlsx {
namespace {

using builtin::InApostrophes;
using builtin::NeedsApostrophes;
using Kind = FormulaToken::Kind;

// Functions whose result may change although no cell that they refer to does.
constexpr std::array<std::string_view, 12> kVolatileFunctions = {
    "CELL", "GETPIVOTDATA", "INDIRECT",    "INFO",  "NOW",    "OFFSET",
    "RAND", "RANDARRAY",    "RANDBETWEEN", "SHEET", "SHEETS", "TODAY"};

bool IsVolatile(std::string_view function)
{
    constexpr std::string_view kFuture = "_XLFN.";
    std::string name = util::ToUpperAscii(function);
    if (name.starts_with(kFuture))
        name.erase(0, kFuture.size());
    return std::find(kVolatileFunctions.begin(), kVolatileFunctions.end(), name) !=
           kVolatileFunctions.end();
}

bool IsTruthValue(std::string_view upper)
{
    return upper == "TRUE" || upper == "FALSE";
}

/// A prefix as a formula writes it; one pair of apostrophes encloses everything.
std::string FormatPrefix(const SheetPrefix& prefix)
{
    std::string text = prefix.Book + prefix.First;
    bool quotes = NeedsApostrophes(prefix.First);
    if (!prefix.Last.empty()) {
        text += ':' + prefix.Last;
        quotes |= NeedsApostrophes(prefix.Last);
    }
    return (quotes ? InApostrophes(text) : text) + '!';
}

/// Renames `name`; false if it keeps the old name.
bool Rename(std::string& name, const SheetNames::Lookup& names)
{
    if (!names || name.empty())
        return false;
    auto renamed = names(name);
    if (!renamed || *renamed == name)
        return false;
    name = std::move(*renamed);
    return true;
}

std::optional<std::string> RenamePrefix(std::optional<SheetPrefix> prefix, const SheetNames& names)
{
    if (!prefix || !names)
        return std::nullopt;
    const SheetNames::Lookup& lookup = prefix->Last.empty() ? names.Single() : names.RangeEnds();
    const bool first = Rename(prefix->First, lookup);
    const bool last = Rename(prefix->Last, lookup);
    return first || last ? std::optional(FormatPrefix(*prefix)) : std::nullopt;
}

/// Renames in the tokens of a formula, in order.
class TokenRenamer {
public:
    TokenRenamer(const SheetNames& sheets, const TableNames& tables)
        : sheets_(sheets), tables_(tables), own_(tables.Own()), table_(own_)
    {
    }

    /// The replacement of the token; nothing if it stays.
    std::optional<std::string> Rename(Kind kind, std::string_view text)
    {
        const bool ofOtherBook = std::exchange(otherBook_, false);
        const TableChange* table = std::exchange(table_, own_);
        switch (kind) {
        case Kind::Prefix: {
            const auto prefix = ParseSheetPrefix(text);
            otherBook_ = !prefix;
            return RenamePrefix(prefix, sheets_);
        }
        case Kind::Name:
            table_ = ofOtherBook ? nullptr : tables_.Find(text);
            return table_ != nullptr ? tables_.NameOf(text) : std::nullopt;
        case Kind::Brackets:
            return RenameColumns(text, table);
        default:
            return std::nullopt;
        }
    }

private:
    static std::optional<std::string> RenameColumns(std::string_view brackets,
                                                    const TableChange* table)
    {
        if (table == nullptr || table->columns.empty())
            return std::nullopt;
        return RenameInBrackets(brackets,
                                [&](std::string_view name) { return table->FindColumn(name); });
    }

    const SheetNames& sheets_;
    const TableNames& tables_;
    const TableChange* own_;
    const TableChange* table_; // the table whose columns the next brackets name
    bool otherBook_ = false;   // the prefix before the token names another workbook
};

} // namespace

std::string QuoteSheetName(std::string_view name)
{
    return NeedsApostrophes(name) ? InApostrophes(name) : std::string(name);
}

bool IsChartData(std::string_view name)
{
    return name.starts_with("_xlchart.");
}

std::optional<std::string> RenameInFormula(std::string_view formula, const SheetNames& sheets,
                                           const TableNames& tables)
{
    std::string result;
    std::size_t done = 0; // everything before it is in the result
    FormulaLexer lexer(formula);
    TokenRenamer renamer(sheets, tables);
    while (const auto token = lexer.Next()) {
        if (const auto renamed = renamer.Rename(token->kind, lexer.TextOf(*token))) {
            result.append(formula, done, token->begin - done).append(*renamed);
            done = token->end;
        }
    }
    if (done == 0)
        return std::nullopt;
    return result.append(formula, done);
}

void CollectFacts(std::string_view formula, FormulaFacts& facts)
{
    constexpr std::string_view kLocalVariable = "_xlpm."; // of LET and LAMBDA
    bool otherBook = false;
    FormulaLexer lexer(formula);
    while (const auto token = lexer.Next()) {
        const std::string_view text = lexer.TextOf(*token);
        const bool ofOtherBook = otherBook;
        otherBook = false;
        switch (token->kind) {
        case Kind::Prefix:
            if (auto prefix = ParseSheetPrefix(text)) {
                facts.readsElsewhere |= !prefix->Last.empty();
                for (auto* sheet : {&prefix->First, &prefix->Last}) {
                    if (!sheet->empty())
                        facts.sheets.insert(std::move(*sheet));
                }
            }
            else {
                otherBook = true;
            }
            break;
        case Kind::Name:
            facts.readsElsewhere |= !ofOtherBook && !text.starts_with(kLocalVariable) &&
                                    !IsTruthValue(util::ToUpperAscii(text));
            break;
        case Kind::Brackets: // also those of a table in front of them
            facts.readsElsewhere = true;
            break;
        case Kind::Function:
            facts.readsElsewhere |= IsVolatile(text);
            break;
        default:
            break;
        }
    }
}

} // namespace orrery::xlsx
