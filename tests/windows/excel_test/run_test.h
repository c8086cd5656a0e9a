#pragma once

#include "engines/engine_choice.h"
#include "excel_test/test_server.h"
#include "excel_test/workbooks.h"
#include "generate/run.h"
#include "generate/run_support.h"
#include "util/paths.h"
#include "util/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orrery::excel_test {

/// Starts Excel as the program does.
inline std::unique_ptr<book::Application> StartExcel()
{
    return engines::CreateApplication(engines::EngineChoice::Excel, {});
}

/// Runs for the year 2024 on a template "Desk.xlsx" of three sheets; both calendars are on and
/// write only days.
class RunTest : public testing::Test {
protected:
    void SetUp() override
    {
        std::filesystem::copy_file(XlsxTemplate(), folder_ / "Desk.xlsx");
        sets_.Monthly = fake::DaysOnly();
        sets_.Yearly = fake::YearOfDays();
    }

    using Starter = std::function<std::unique_ptr<book::Application>()>;

    /// The saved path, as the Generate command returns it.
    std::optional<std::string> Run(const Starter& start)
    {
        return RunFor([&](const auto& /*job*/) { return start(); });
    }
    /// The same for a start that knows the files of the run.
    std::optional<std::string> RunFor(const generate::ApplicationFactory& start,
                                      generate::PdfMaker* pdfMaker = nullptr)
    {
        const std::string folder = util::WithTrailingSeparator(util::FromPath(folder_.Path()));
        const std::string output = folder + "out" + util::kSeparator;
        const auto saved = generate::RunGenerate({"2024", "Desk.xlsx", folder, output}, sets_,
                                                 start, context_, pdfMaker);
        return saved ? std::optional(saved->workbook) : std::nullopt;
    }

    std::filesystem::path Target() const { return folder_.Path() / "out" / "2024Desk.xlsx"; }

    TestServer server_;
    testing_support::ScratchFolder folder_;
    model::NameTables names_ = fake::TestNames();
    fake::ListObserver observer_;
    generate::Context context_{names_, observer_};
    model::ParameterSets sets_;
};

} // namespace orrery::excel_test
