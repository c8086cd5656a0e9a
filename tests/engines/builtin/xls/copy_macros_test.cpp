#include "book/error.h"
#include "engines/builtin/vba/compression.h"
#include "engines/builtin/xls/workbook.h"
#include "util/error_text.h"
#include "util/paths.h"
#include "vba/built_project.h"
#include "xls/built_workbook.h"
#include "xls/compound_snapshot.h"
#include "xls/saved_book.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace orrery::xls {
namespace {

using namespace test;
using book::AccessMode;
using orrery::test::SavedBook;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vba::test::BuiltModule;

const std::string kEventCode = "Private Sub Worksheet_Activate()\r\n    Beep\r\nEnd Sub\r\n";

const std::vector<BuiltModule> kMacros = {
    {"ThisWorkbook"}, {"Sheet1", kEventCode}, {"Sheet2"}, {"Module1", "Sub A()\r\nEnd Sub", false}};

std::string CodeNameRecord(std::string_view name)
{
    std::string data;
    AppendUnicodeString(data, name);
    return RecordOf(RecordType::CodeName, data);
}

/// Properties with a digital signature, or with another property in its place.
std::string Properties(bool areSigned)
{
    using vba::test::U16;
    using vba::test::U32;
    const std::string value = U32(0x41) + U32(4) + "sign";
    const std::string set =
        U32(8 + 8 + 12) + U32(1) + U32(areSigned ? 0x18 : 0x0F) + U32(16) + value;
    return U16(0xFFFE) + U16(0) + U32(2) + std::string(16, '\0') + U32(1) +
           std::string("\x02\xD5\xCD\xD5\x9C\x2E\x1B\x10\x93\x97\x08\x00\x2B\x2C\xF9\xAE", 16) +
           U32(48) + set;
}

constexpr const char16_t* kPropertiesName = u"\5DocumentSummaryInformation";

/// A workbook of the sheets "Model" and "Other", whose code names are Sheet1 and Sheet2.
class XlsCopyMacrosTest : public testing::Test {
protected:
    void Make(std::vector<Node> beside)
    {
        const std::vector<BuiltSheet> sheets = {{"Model", SheetOf(CodeNameRecord("Sheet1"))},
                                                {"Other", SheetOf(CodeNameRecord("Sheet2"))}};
        WorkbookFile(template_, WorkbookStream(sheets), std::move(beside));
        workbook_.emplace(template_);
    }
    void MakeWithMacros(std::vector<Node> project, bool areSigned = false)
    {
        Make({Storage(u"_VBA_PROJECT_CUR", std::move(project)),
              Stream(kPropertiesName, Properties(areSigned))});
    }

    void Copy(const char* name)
    {
        auto& sheet = *workbook_->FindWorksheet(name);
        sheet.CopyAfter(sheet);
    }
    void Save() { workbook_->SaveAs(target_, AccessMode::NoChange); }

    /// The code names of the saved sheets, "" where there is none.
    std::vector<std::string> CodeNames() const
    {
        std::vector<std::string> names;
        const SavedBook saved(target_);
        for (const auto& sheet : saved.Sheets()) {
            const auto records = SavedBook::Records(sheet, 0x01BA);
            names.push_back(records.empty() ? "" : ReadUnicodeString(records.at(0), 0).text);
        }
        return names;
    }
    Snapshot SavedStreams() const
    {
        return SnapshotOf(CompoundFile(util::ReadFile(target_).value()));
    }
    std::string SourceOf(const std::u16string& module) const
    {
        const auto stream = SavedStreams().at(u"/_VBA_PROJECT_CUR/VBA/" + module);
        return vba::Decompress(stream.bytes, 10000);
    }
    /// Everything but the workbook is as it was.
    void ExpectTheRestUnchanged() const
    {
        auto before = SnapshotOf(CompoundFile(util::ReadFile(template_).value()));
        auto after = SavedStreams();
        before.erase(u"/Workbook");
        after.erase(u"/Workbook");
        ExpectSame(after, before);
    }

    testing_support::ScratchFolder folder_;
    std::filesystem::path template_ = folder_ / "template.xls";
    std::filesystem::path target_ = folder_ / "saved.xls";
    std::optional<Workbook> workbook_;
};

TEST_F(XlsCopyMacrosTest, ACopyHasAModuleOfItsOwn)
{
    MakeWithMacros(vba::test::ProjectNodes(kMacros));
    Copy("Model");
    Copy("Model");
    Save();
    EXPECT_THAT(CodeNames(), ElementsAre("Sheet1", "Sheet3", "Sheet4", "Sheet2"));
    for (const char* name : {"Sheet1", "Sheet3", "Sheet4"})
        EXPECT_EQ(SourceOf(util::ToUtf16(name)), (BuiltModule{name, kEventCode}.Source()));
    EXPECT_THAT(workbook_->Losses(), IsEmpty());
    const auto streams = SavedStreams();
    EXPECT_THAT(streams.at(u"/_VBA_PROJECT_CUR/PROJECT").bytes,
                HasSubstr("Document=Sheet1/&H00000000\r\nDocument=Sheet3/&H00000000\r\n"
                          "Document=Sheet4/&H00000000\r\nDocument=Sheet2/&H00000000\r\n"));
    EXPECT_EQ(streams.at(std::u16string(u"/") + kPropertiesName).bytes, Properties(false));
    EXPECT_FALSE(streams.contains(u"/_VBA_PROJECT_CUR/VBA/__SRP_0"));
}

TEST_F(XlsCopyMacrosTest, TheSameIsSavedAgain)
{
    MakeWithMacros(vba::test::ProjectNodes(kMacros), true);
    Copy("Model");
    Save();
    const auto first = util::ReadFile(target_);
    Save();
    EXPECT_EQ(util::ReadFile(target_), first);
    EXPECT_EQ(workbook_->Losses().size(), 1U);
}

TEST_F(XlsCopyMacrosTest, ACopyOfASheetWithoutCodeHasNone)
{
    MakeWithMacros(vba::test::ProjectNodes(kMacros), true);
    Copy("Other");
    Save();
    EXPECT_THAT(CodeNames(), ElementsAre("Sheet1", "Sheet2", ""));
    EXPECT_THAT(workbook_->Losses(), IsEmpty());
    ExpectTheRestUnchanged();
}

TEST_F(XlsCopyMacrosTest, EachSheetIsCopiedWithItsOwnCode)
{
    auto macros = kMacros;
    macros[2].code = "' of the other sheet\r\n";
    MakeWithMacros(vba::test::ProjectNodes(macros));
    Copy("Other");
    Copy("Model");
    Save();
    EXPECT_THAT(CodeNames(), ElementsAre("Sheet1", "Sheet3", "Sheet2", "Sheet4"));
    EXPECT_THAT(SourceOf(u"Sheet3"), HasSubstr(kEventCode));
    EXPECT_THAT(SourceOf(u"Sheet4"), HasSubstr("of the other sheet"));
}

TEST_F(XlsCopyMacrosTest, WithoutMacrosACopyHasNoCodeName)
{
    Make({});
    Copy("Model");
    Save();
    EXPECT_THAT(CodeNames(), ElementsAre("Sheet1", "", "Sheet2"));
    EXPECT_THAT(workbook_->Losses(), IsEmpty());
}

TEST_F(XlsCopyMacrosTest, TheSignatureFallsAway)
{
    MakeWithMacros(vba::test::ProjectNodes(kMacros), true);
    Copy("Model");
    Save();
    const auto properties = SavedStreams().at(std::u16string(u"/") + kPropertiesName).bytes;
    EXPECT_EQ(properties.size(), Properties(true).size());
    EXPECT_EQ(properties.find("sign"), properties.npos);
    ASSERT_EQ(workbook_->Losses().size(), 1U);
    EXPECT_EQ(workbook_->Losses()[0].Kind(), book::ErrorKind::SignatureNotKept);
    EXPECT_EQ(workbook_->Losses()[0].Subject(), util::FromPath(template_));
}

TEST_F(XlsCopyMacrosTest, MacrosThatCannotBeReadStayAsTheyAre)
{
    auto nodes = vba::test::ProjectNodes(kMacros);
    nodes[0].members[0].bytes = "no dir stream";
    MakeWithMacros(nodes, true);
    Copy("Model");
    Save();
    EXPECT_THAT(CodeNames(), ElementsAre("Sheet1", "", "Sheet2"));
    ExpectTheRestUnchanged();
    ASSERT_EQ(workbook_->Losses().size(), 1U);
    EXPECT_EQ(util::ErrorText(workbook_->Losses()[0]),
              '"' + util::FromPath(template_) +
                  "\" has macros that cannot be copied: their code cannot be decompressed. The "
                  "copied sheets have none. Save the template again in the spreadsheet program and "
                  "generate the calendar again.");
}

TEST_F(XlsCopyMacrosTest, NothingIsReadWithoutCopies)
{
    MakeWithMacros({Stream(u"VBA", "no storage")});
    workbook_->FindWorksheet("Model")->SetName("January");
    Save();
    EXPECT_THAT(CodeNames(), ElementsAre("Sheet1", "Sheet2"));
    EXPECT_THAT(workbook_->Losses(), IsEmpty());
    ExpectTheRestUnchanged();
}

TEST_F(XlsCopyMacrosTest, AStreamWithTheNameOfTheProjectIsNone)
{
    Make({Stream(u"_VBA_PROJECT_CUR", "no storage")});
    Copy("Model");
    Save();
    EXPECT_THAT(workbook_->Losses(), IsEmpty());
}

} // namespace
} // namespace orrery::xls
