#include "book/fake_spreadsheet.h"
#include "book/spreadsheet_contract.h"

using namespace orrery;

namespace {

std::vector<contract::SavedSheet> Read(const std::filesystem::path& path)
{
    std::vector<contract::SavedSheet> sheets;
    for (const fake::SheetContent& sheet : fake::ReadWorkbookFile(path)) {
        contract::SavedSheet saved{sheet.name, {}};
        for (const auto& [place, value] : sheet.cells) {
            if (const auto* number = std::get_if<std::int16_t>(&value))
                saved.cells[place] = static_cast<double>(*number);
            else
                saved.cells[place] = std::get<std::string>(value);
        }
        sheets.push_back(std::move(saved));
    }
    return sheets;
}

contract::Engine FakeContract()
{
    static fake::CallLog log;
    contract::Engine engine;
    engine.name = "Fake";
    engine.extension = ".fake";
    engine.rows = fake::Worksheet::kRows;
    engine.columns = fake::Worksheet::kColumns;
    engine.start = [] { return std::make_unique<fake::Application>(log); };
    engine.makeTemplate = [](const std::filesystem::path& path) {
        fake::WriteWorkbookFile(path, {{"Sheet1", {{{1, 1}, "first"}, {{2, 2}, std::int16_t{42}}}},
                                       {"Sheet2", {{{1, 1}, "second"}}},
                                       {"Third", {{{3, 3}, "third"}}}});
    };
    engine.read = Read;
    return engine;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, SpreadsheetContract, testing::Values(FakeContract()),
                         contract::NameOf);
