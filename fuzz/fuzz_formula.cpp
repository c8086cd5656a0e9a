// A formula ends: with a value, or as one that cannot be computed, whatever it says.

#include "require.h"

#include "book/look/workbook_view.h"
#include "look/evaluate/evaluator.h"
#include "look/evaluate/formula/parser.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace {

using namespace orrery;

/// A sheet with a few cells of each kind; the formula is in C3, D4 reads it, and a name is it.
class SmallWorkbook : public book::WorkbookView {
public:
    explicit SmallWorkbook(std::string_view formula)
    {
        workbook_.sheets = {{"Sheet1"}, {"Jan"}};
        workbook_.names = {{"Name", std::nullopt, std::string(formula)}};
        sheet_.styles.emplace_back();
        sheet_.formulas = {{std::string(formula), std::nullopt}, {"SUM(A1:C9)&Name", std::nullopt}};
        book::Table table;
        table.name = "Table1";
        table.range = {{1, 1}, {3, 2}};
        table.columns = {"A", "B"};
        sheet_.tables = {table};
        Add({1, 1}, 1.0);
        Add({1, 2}, std::string("text"));
        Add({2, 1}, 46349.5);
        Add({2, 2}, book::CellError::NotAvailable);
        Add({3, 1}, true);
        Add({3, 3}, 0.0, 0);
        Add({4, 4}, std::monostate(), 1);
    }
    const book::WorkbookLook& Workbook() const override { return workbook_; }
    const book::SheetLook& Sheet(std::size_t) override { return sheet_; }

private:
    void Add(book::CellAddress address, book::CellContent content, std::int32_t formula = -1)
    {
        book::Cell cell;
        cell.address = address;
        cell.content = std::move(content);
        cell.formula = formula;
        sheet_.cells.push_back(std::move(cell));
    }
    book::WorkbookLook workbook_;
    book::SheetLook sheet_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    SmallWorkbook workbook(text);
    look::EvaluationLimits limits;
    limits.stepsOfFormula = 100'000;
    limits.steps = 1'000'000;
    look::Evaluator evaluator(workbook, 46349.5, limits);
    const auto cell = evaluator.ValueOf(0, {3, 3});
    evaluator.ValueOf(1, {4, 4});
    evaluator.Compute(text, 0, {7, 7}, {1, 1});
    // Only what parses is computed.
    if (cell.source == look::EvaluatedCell::Source::Computed)
        fuzz::Require(formula::ParseFormula(text).has_value());
    evaluator.MarkWritten(0, {1, 1});
    evaluator.ValueOf(0, {4, 4});
    return 0;
}
