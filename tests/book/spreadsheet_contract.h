#pragma once

#include "book/contract_engine.h"
#include "book/spreadsheet.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/file_replace.h"
#include "util/scratch_folder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

/// What every engine behind book/spreadsheet.h must do. Include this header in one source file of
/// an engine's tests and instantiate the suite there:
///     INSTANTIATE_TEST_SUITE_P(BuiltIn, SpreadsheetContract, testing::Values(BuiltInContract()),
///                              orrery::contract::NameOf);
class SpreadsheetContract : public testing::TestWithParam<orrery::contract::Engine> {
protected:
    using Names = std::vector<std::string>;

    void SetUp() override
    {
        template_ = folder_ / ("Template" + GetParam().extension);
        target_ = folder_ / ("Target" + GetParam().extension);
        GetParam().makeTemplate(template_);
        templateBytes_ = orrery::util::ReadFile(template_).value();
        application_ = GetParam().start();
        application_->SetDisplayAlerts(false);
    }

    void TearDown() override
    {
        if (application_ != nullptr)
            application_->Quit();
        application_.reset();
    }

    orrery::book::Workbook& Open() { return application_->OpenWorkbook(template_, true); }

    std::vector<orrery::contract::SavedSheet> SaveAndRead(orrery::book::Workbook& workbook)
    {
        workbook.SaveAs(target_, orrery::book::AccessMode::NoChange);
        return GetParam().read(target_);
    }

    Names SavedNames(orrery::book::Workbook& workbook)
    {
        Names names;
        for (const auto& sheet : SaveAndRead(workbook))
            names.push_back(sheet.name);
        return names;
    }

    /// Runs the call, which must throw, and returns the description of its error.
    static std::string DescriptionOf(const std::function<void()>& call)
    {
        try {
            call();
        }
        catch (const orrery::Error& error) {
            return orrery::util::ErrorText(error);
        }
        ADD_FAILURE() << "nothing was thrown";
        return {};
    }

    Names FolderContent() const
    {
        Names names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            names.push_back(entry.path().filename().string());
        return names;
    }

    orrery::testing_support::ScratchFolder scratch_;
    const std::filesystem::path& folder_ = scratch_.Path();
    std::filesystem::path template_;
    std::filesystem::path target_;
    std::string templateBytes_;
    std::unique_ptr<orrery::book::Application> application_;
};

TEST_P(SpreadsheetContract, IsInvisibleAtFirst)
{
    EXPECT_FALSE(application_->Visible());
}

TEST_P(SpreadsheetContract, AcceptsEverySwitch)
{
    for (const bool on : {false, true}) {
        EXPECT_NO_THROW(application_->SetInteractive(on));
        EXPECT_NO_THROW(application_->SetScreenUpdating(on));
        EXPECT_NO_THROW(application_->SetDisplayAlerts(on));
    }
}

TEST_P(SpreadsheetContract, FindsASheetIgnoringCase)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("sHEET2");
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->Name(), "Sheet2");
    EXPECT_EQ(workbook.FindWorksheet("Sheet2"), sheet);
}

TEST_P(SpreadsheetContract, FindsNoMissingSheet)
{
    auto& workbook = Open();
    EXPECT_EQ(workbook.FindWorksheet("Sheet3"), nullptr);
    EXPECT_EQ(workbook.FindWorksheet("Sheet"), nullptr);
    EXPECT_EQ(workbook.FindWorksheet(""), nullptr);
    EXPECT_EQ(workbook.FindWorksheet("*"), nullptr);
}

TEST_P(SpreadsheetContract, RenamesASheet)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet2");
    sheet->SetName("M\xC3\xA4rz & <1>");
    EXPECT_EQ(sheet->Name(), "M\xC3\xA4rz & <1>");
    EXPECT_EQ(workbook.FindWorksheet("Sheet2"), nullptr);
    EXPECT_EQ(workbook.FindWorksheet("M\xC3\xA4rz & <1>"), sheet);
    EXPECT_EQ(SavedNames(workbook), (Names{"Sheet1", "M\xC3\xA4rz & <1>", "Third"}));
}

TEST_P(SpreadsheetContract, RenamesToItsOwnNameInAnotherCase)
{
    auto& workbook = Open();
    workbook.FindWorksheet("Sheet2")->SetName("SHEET2");
    EXPECT_EQ(SavedNames(workbook), (Names{"Sheet1", "SHEET2", "Third"}));
}

TEST_P(SpreadsheetContract, RenamesToItsOwnName)
{
    auto& workbook = Open();
    EXPECT_NO_THROW(workbook.FindWorksheet("Sheet2")->SetName("Sheet2"));
    EXPECT_EQ(SavedNames(workbook), (Names{"Sheet1", "Sheet2", "Third"}));
}

TEST_P(SpreadsheetContract, AcceptsAFreedName)
{
    auto& workbook = Open();
    workbook.FindWorksheet("Sheet1")->SetName("January");
    workbook.FindWorksheet("Third")->SetName("sheet1");
    EXPECT_EQ(SavedNames(workbook), (Names{"January", "Sheet2", "sheet1"}));
}

TEST_P(SpreadsheetContract, AcceptsEveryValidName)
{
    std::string pairs; // 15 characters of two UTF-16 units each, and one more unit
    for (int i = 0; i < 15; ++i)
        pairs += "\xF0\x9F\x93\x85";
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet2");
    for (const std::string& name :
         {std::string("1"), std::string(31, 'x'), std::string("it's"), std::string("2027"),
          std::string(" a "), std::string("=1"), std::string("A1"), std::string("Histor"),
          std::string("a\"b"), std::string("a!b"), pairs + "1"}) {
        EXPECT_NO_THROW(sheet->SetName(name)) << name;
        EXPECT_EQ(sheet->Name(), name);
        EXPECT_EQ(workbook.FindWorksheet(name), sheet) << name;
    }
}

TEST_P(SpreadsheetContract, RefusesInvalidNamesAndKeepsTheOldOne)
{
    std::string pairs; // 32 UTF-16 units
    for (int i = 0; i < 16; ++i)
        pairs += "\xF0\x9F\x93\x85";
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet2");
    for (const std::string& name :
         {std::string(), std::string(32, 'x'), pairs, std::string("a:b"), std::string("a\\b"),
          std::string("a/b"), std::string("a?b"), std::string("a*b"), std::string("a[b"),
          std::string("a]b"), std::string("'a"), std::string("a'"), std::string("'"),
          std::string("History"), std::string("hISTORY")}) {
        EXPECT_NE(DescriptionOf([&] { sheet->SetName(name); }), "") << name;
        EXPECT_EQ(sheet->Name(), "Sheet2") << name;
    }
    EXPECT_EQ(SavedNames(workbook), (Names{"Sheet1", "Sheet2", "Third"}));
}

TEST_P(SpreadsheetContract, RefusesTheNameOfAnotherSheetInAnyCase)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet2");
    EXPECT_NE(DescriptionOf([&] { sheet->SetName("Third"); }), "");
    EXPECT_NE(DescriptionOf([&] { sheet->SetName("tHIRD"); }), "");
    EXPECT_EQ(sheet->Name(), "Sheet2");
    EXPECT_EQ(SavedNames(workbook), (Names{"Sheet1", "Sheet2", "Third"}));
}

TEST_P(SpreadsheetContract, RefusesTheNameOfAnotherSheetInAnyCaseOfAnyScript)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet2");
    auto* const third = workbook.FindWorksheet("Third");
    for (const auto& [name, alike] :
         {std::pair{"März", "MÄRZ"}, {"Май", "мАЙ"}, {"Μάιος", "ΜΆΙΟΣ"}, {"Մայ", "ՄԱՅ"}}) {
        third->SetName(name);
        EXPECT_NE(DescriptionOf([&, alike = alike] { sheet->SetName(alike); }), "") << alike;
        EXPECT_EQ(sheet->Name(), "Sheet2");
        EXPECT_EQ(workbook.FindWorksheet(alike), third) << alike;
    }
}

TEST_P(SpreadsheetContract, WalksTheSheetsInOrder)
{
    auto& workbook = Open();
    auto* const first = workbook.FindWorksheet("Sheet1");
    ASSERT_NE(first->Next(), nullptr);
    EXPECT_EQ(first->Next()->Name(), "Sheet2");
    EXPECT_EQ(first->Next()->Next()->Name(), "Third");
    EXPECT_EQ(first->Next()->Next()->Next(), nullptr);
}

TEST_P(SpreadsheetContract, PlacesACopyDirectlyAfterASheet)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet1");
    sheet->CopyAfter(*sheet);
    ASSERT_NE(sheet->Next(), nullptr);
    EXPECT_EQ(sheet->Next()->Name(), "Sheet1 (2)");
    EXPECT_EQ(sheet->Next()->Next()->Name(), "Sheet2");
    EXPECT_EQ(SavedNames(workbook), (Names{"Sheet1", "Sheet1 (2)", "Sheet2", "Third"}));
}

TEST_P(SpreadsheetContract, PlacesACopyAfterAnotherSheet)
{
    auto& workbook = Open();
    workbook.FindWorksheet("Sheet1")->CopyAfter(*workbook.FindWorksheet("Third"));
    EXPECT_EQ(SavedNames(workbook), (Names{"Sheet1", "Sheet2", "Third", "Sheet1 (2)"}));
}

TEST_P(SpreadsheetContract, NumbersTheCopiesOfASheet)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet1");
    sheet->CopyAfter(*sheet);
    sheet->CopyAfter(*sheet);
    EXPECT_EQ(SavedNames(workbook),
              (Names{"Sheet1", "Sheet1 (3)", "Sheet1 (2)", "Sheet2", "Third"}));
}

TEST_P(SpreadsheetContract, ContinuesTheNumberingForACopyOfACopy)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet1");
    sheet->CopyAfter(*sheet);
    sheet->Next()->CopyAfter(*sheet->Next());
    EXPECT_EQ(SavedNames(workbook),
              (Names{"Sheet1", "Sheet1 (2)", "Sheet1 (3)", "Sheet2", "Third"}));
}

TEST_P(SpreadsheetContract, ShortensTheNameOfACopyToTheAllowedLength)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet1");
    sheet->SetName(std::string(31, 'x'));
    sheet->CopyAfter(*sheet);
    EXPECT_EQ(sheet->Next()->Name(), std::string(27, 'x') + " (2)");
}

TEST_P(SpreadsheetContract, CopiesTheCellsAndKeepsThemApart)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet1");
    sheet->CopyAfter(*sheet);
    auto* const copy = sheet->Next();
    copy->SetCell(1, 1, std::string("of the copy"), orrery::book::CellMember::Value);
    sheet->SetCell(3, 3, std::int16_t{7}, orrery::book::CellMember::Value);
    const auto saved = SaveAndRead(workbook);
    ASSERT_EQ(saved.size(), 4U);
    using Cells = decltype(saved.front().cells);
    EXPECT_EQ(saved[0].cells, (Cells{{{1, 1}, "first"}, {{2, 2}, 42.0}, {{3, 3}, 7.0}}));
    EXPECT_EQ(saved[1].cells, (Cells{{{1, 1}, "of the copy"}, {{2, 2}, 42.0}}));
}

TEST_P(SpreadsheetContract, MakesTwelveSheetsInAChain)
{
    auto& workbook = Open();
    auto* sheet = workbook.FindWorksheet("Sheet2");
    sheet->SetName("1");
    for (int month = 2; month <= 12; ++month) {
        sheet->CopyAfter(*sheet);
        sheet = sheet->Next();
        ASSERT_NE(sheet, nullptr);
        sheet->SetName(std::to_string(month));
    }
    EXPECT_EQ(SavedNames(workbook), (Names{"Sheet1", "1", "2", "3", "4", "5", "6", "7", "8", "9",
                                           "10", "11", "12", "Third"}));
    for (const auto& saved : GetParam().read(target_)) {
        if (saved.name == "Sheet1" || saved.name == "Third")
            continue;
        EXPECT_EQ(saved.cells.at({1, 1}), orrery::contract::Value("second")) << saved.name;
    }
}

TEST_P(SpreadsheetContract, KeepsPointersToSheetsWhileOthersAreCopied)
{
    auto& workbook = Open();
    auto* const third = workbook.FindWorksheet("Third");
    auto* const sheet = workbook.FindWorksheet("Sheet1");
    for (int i = 0; i < 30; ++i)
        sheet->CopyAfter(*sheet);
    EXPECT_EQ(third->Name(), "Third");
    EXPECT_EQ(workbook.FindWorksheet("Third"), third);
}

TEST_P(SpreadsheetContract, WritesNumbers)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet2");
    const std::vector<std::int16_t> numbers = {0, 1, 31, 2027, 32767, -1, -32768};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        sheet->SetCell(static_cast<std::int32_t>(i) + 2, 3, numbers[i],
                       orrery::book::CellMember::Value);
    const auto saved = SaveAndRead(workbook)[1];
    for (std::size_t i = 0; i < numbers.size(); ++i)
        EXPECT_EQ(saved.cells.at({static_cast<std::int32_t>(i) + 2, 3}),
                  orrery::contract::Value(static_cast<double>(numbers[i])));
}

TEST_P(SpreadsheetContract, KeepsTextsUnchanged)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet2");
    const Names texts = {"12",
                         "=1+1",
                         "'quoted",
                         " Christmas Day",
                         "  blanks  ",
                         "a\tb\nc",
                         "a & b < c > d \"e\" 'f'",
                         "\x01 and \x1F",
                         "_x0041_ and _x005F_",
                         "true",
                         "1e5",
                         "]]>",
                         "M\xC3\xA4rz \xE5\x85\x83\xE6\x97\xA5",
                         "\xF0\x9F\x8E\x84 tree",
                         std::string(32767, 'x')};
    for (std::size_t i = 0; i < texts.size(); ++i)
        sheet->SetCell(static_cast<std::int32_t>(i) + 2, 3, texts[i],
                       orrery::book::CellMember::Default);
    const auto saved = SaveAndRead(workbook)[1];
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(saved.cells.at({static_cast<std::int32_t>(i) + 2, 3}),
                  orrery::contract::Value(texts[i]));
}

TEST_P(SpreadsheetContract, KeepsTextsThatLookLikeSomethingElse)
{
    const Names texts = {
        "01",           "1.5",     "1,5",    "1.000", "1e5",   "50%",   "$5",   "5 \xE2\x82\xAC",
        "1-2",          "3/4",     "1. Mai", "May 1", "28.3.", "12:30", "TRUE", "False",
        "WAHR",         "=x",      "=1+1",   "=1+",   "+1",    "-5",    "- x",  "@x",
        "#N/A",         "#NV",     "'01",    "''",    "'",     "=",     " 7 ",  "(5)",
        "\xEF\xBC\x91", "\xC2\xBD"};
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet2");
    for (std::size_t i = 0; i < texts.size(); ++i) {
        for (const bool isSecond : {false, true}) {
            sheet->SetCell(static_cast<std::int32_t>(i) + 2, isSecond ? 4 : 3, texts[i],
                           isSecond ? orrery::book::CellMember::Value
                                    : orrery::book::CellMember::Default);
        }
    }
    const auto saved = SaveAndRead(workbook)[1];
    for (std::size_t i = 0; i < texts.size(); ++i) {
        for (const std::int32_t column : {3, 4})
            EXPECT_EQ(saved.cells.at({static_cast<std::int32_t>(i) + 2, column}),
                      orrery::contract::Value(texts[i]));
    }
}

TEST_P(SpreadsheetContract, WritesTheEmptyTextOverAValue)
{
    auto& workbook = Open();
    workbook.FindWorksheet("Sheet2")->SetCell(1, 1, std::string(), orrery::book::CellMember::Value);
    const auto saved = SaveAndRead(workbook)[1];
    const auto cell = saved.cells.find({1, 1});
    EXPECT_TRUE(cell == saved.cells.end() || cell->second == orrery::contract::Value(""));
}

TEST_P(SpreadsheetContract, ReplacesAValueWithAnotherType)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet1");
    sheet->SetCell(1, 1, std::int16_t{5}, orrery::book::CellMember::Value);
    sheet->SetCell(2, 2, std::string("text"), orrery::book::CellMember::Default);
    const auto saved = SaveAndRead(workbook)[0];
    EXPECT_EQ(saved.cells.at({1, 1}), orrery::contract::Value(5.0));
    EXPECT_EQ(saved.cells.at({2, 2}), orrery::contract::Value("text"));
}

TEST_P(SpreadsheetContract, KeepsTheLastValueOfACell)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet1");
    sheet->SetCell(9, 9, std::string("one"), orrery::book::CellMember::Value);
    sheet->SetCell(9, 9, std::int16_t{2}, orrery::book::CellMember::Value);
    sheet->SetCell(9, 9, std::string("three"), orrery::book::CellMember::Value);
    EXPECT_EQ(SaveAndRead(workbook)[0].cells.at({9, 9}), orrery::contract::Value("three"));
}

TEST_P(SpreadsheetContract, WritesCellsInAnyOrder)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Third");
    for (const auto& [row, column] : {std::pair{20, 5}, {3, 1}, {20, 2}, {3, 30}, {7, 7}, {1, 1}})
        sheet->SetCell(row, column, static_cast<std::int16_t>(row * 100 + column),
                       orrery::book::CellMember::Value);
    const auto saved = SaveAndRead(workbook)[2];
    using Cells = decltype(saved.cells);
    EXPECT_EQ(saved.cells, (Cells{{{1, 1}, 101.0},
                                  {{3, 1}, 301.0},
                                  {{3, 3}, "third"},
                                  {{3, 30}, 330.0},
                                  {{7, 7}, 707.0},
                                  {{20, 2}, 2002.0},
                                  {{20, 5}, 2005.0}}));
}

TEST_P(SpreadsheetContract, WritesTheLastCellOfTheSheet)
{
    auto& workbook = Open();
    workbook.FindWorksheet("Sheet2")->SetCell(GetParam().rows, GetParam().columns, std::int16_t{1},
                                              orrery::book::CellMember::Value);
    EXPECT_EQ(SaveAndRead(workbook)[1].cells.at({GetParam().rows, GetParam().columns}),
              orrery::contract::Value(1.0));
}

TEST_P(SpreadsheetContract, RefusesCellsOutsideTheSheet)
{
    auto& workbook = Open();
    auto* const sheet = workbook.FindWorksheet("Sheet2");
    const std::int32_t largest = 2147483647;
    for (const auto& [row, column] : {std::pair{0, 1},
                                      {1, 0},
                                      {-1, 1},
                                      {1, -1},
                                      {GetParam().rows + 1, 1},
                                      {1, GetParam().columns + 1},
                                      {largest, largest},
                                      {-largest - 1, -largest - 1}}) {
        EXPECT_NE(DescriptionOf([&, r = row, c = column] {
                      sheet->SetCell(r, c, std::int16_t{1}, orrery::book::CellMember::Value);
                  }),
                  "")
            << row << ',' << column;
    }
    EXPECT_EQ(SaveAndRead(workbook)[1].cells.size(), 1U);
}

TEST_P(SpreadsheetContract, SavesAFileAndKeepsTheTemplate)
{
    auto& workbook = Open();
    workbook.FindWorksheet("Sheet1")->SetCell(1, 1, std::string("changed"),
                                              orrery::book::CellMember::Value);
    EXPECT_EQ(SaveAndRead(workbook)[0].cells.at({1, 1}), orrery::contract::Value("changed"));
    EXPECT_EQ(orrery::util::ReadFile(template_), templateBytes_);
    EXPECT_EQ(FolderContent().size(), 2U);
}

TEST_P(SpreadsheetContract, SavesAnUnchangedWorkbook)
{
    const auto before = GetParam().read(template_);
    const auto after = SaveAndRead(Open());
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(after[i].name, before[i].name);
        EXPECT_EQ(after[i].cells, before[i].cells);
    }
}

TEST_P(SpreadsheetContract, SavesOverAnExistingFile)
{
    std::ofstream(target_) << "something else";
    EXPECT_EQ(SaveAndRead(Open()).size(), 3U);
}

TEST_P(SpreadsheetContract, CannotSaveIntoAMissingFolder)
{
    auto& workbook = Open();
    const auto target = folder_ / "missing" / target_.filename();
    EXPECT_NE(DescriptionOf([&] { workbook.SaveAs(target, orrery::book::AccessMode::NoChange); }),
              "");
    EXPECT_EQ(FolderContent(), (Names{template_.filename().string()}));
    EXPECT_EQ(SavedNames(workbook), (Names{"Sheet1", "Sheet2", "Third"}));
}

TEST_P(SpreadsheetContract, CannotOpenAMissingFile)
{
    EXPECT_NE(DescriptionOf([&] { application_->OpenWorkbook(target_, true); }), "");
    EXPECT_EQ(FolderContent(), (Names{template_.filename().string()}));
}

TEST_P(SpreadsheetContract, CannotOpenAnythingButWorkbooks)
{
    std::ofstream(target_) << "plain text";
    EXPECT_NE(DescriptionOf([&] { application_->OpenWorkbook(target_, true); }), "");
    std::ofstream(target_, std::ios::trunc).close();
    EXPECT_NE(DescriptionOf([&] { application_->OpenWorkbook(target_, true); }), "");
}

TEST_P(SpreadsheetContract, LeavesNothingBehindWhenItQuits)
{
    auto& workbook = Open();
    workbook.FindWorksheet("Sheet1")->SetCell(1, 1, std::string("lost"),
                                              orrery::book::CellMember::Value);
    application_->Quit();
    application_.reset();
    EXPECT_EQ(FolderContent(), (Names{template_.filename().string()}));
    EXPECT_EQ(orrery::util::ReadFile(template_), templateBytes_);
}

TEST_P(SpreadsheetContract, OpensTheSameTemplateAgain)
{
    auto& first = Open();
    first.FindWorksheet("Sheet1")->SetName("January");
    EXPECT_NE(Open().FindWorksheet("Sheet1"), nullptr);
    EXPECT_NE(first.FindWorksheet("January"), nullptr);
}
