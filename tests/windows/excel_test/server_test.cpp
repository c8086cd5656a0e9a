// The server's own rules, tested by a client that does not use the program's engine.
#include "excel_test/client.h"
#include "excel_test/test_server.h"
#include "excel_test/workbooks.h"
#include "util/paths.h"
#include "util/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orrery;
using namespace orrery::excel_test;
using automation::Variant;
using testing::ElementsAre;

namespace {

constexpr auto kExcelError = static_cast<HRESULT>(0x800A03ECUL);

class ExcelServerTest : public testing::Test {
protected:
    void SetUp() override
    {
        application_ = StartServer();
        ASSERT_NE(application_.AsObject(), nullptr);
    }

    void TearDown() override { application_ = {}; }

    Variant Open()
    {
        const auto books = Get(application_, "Workbooks").value;
        const auto path = Variant::Text(util::FromPath(XlsxTemplate()));
        const auto answer = Call(books, "Open", {path, Variant::Missing(), Variant::Boolean(true)});
        EXPECT_EQ(answer.result, S_OK) << answer.description;
        return answer.value;
    }

    Variant Sheet(const std::string& name)
    {
        return Get(Get(Open(), "Worksheets").value, "Item", {Variant::Text(name)}).value;
    }

    TestServer server_;
    Apartment apartment_;
    Variant application_;
};

TEST_F(ExcelServerTest, KnowsMembersInAnyCaseAndNothingElse)
{
    EXPECT_EQ(IdOf(application_, "VISIBLE"), IdOf(application_, "Visible"));
    EXPECT_NE(IdOf(application_, "Visible"), DISPID_UNKNOWN);
    EXPECT_EQ(IdOf(application_, "Visibel"), DISPID_UNKNOWN);
    EXPECT_EQ(Invoke(application_, 4711, DISPATCH_METHOD, {}).result, DISP_E_MEMBERNOTFOUND);
}

TEST_F(ExcelServerTest, DistinguishesPutFromGetAndMethodFromProperty)
{
    EXPECT_EQ(Put(application_, "Visible", Variant::Boolean(true)).result, S_OK);
    const auto visible = Get(application_, "Visible").value;
    EXPECT_EQ(visible.Type(), VT_BOOL);
    EXPECT_EQ(V_BOOL(&visible.Get()), VARIANT_TRUE);
    EXPECT_EQ(Put(application_, "Name", Variant::Text("x")).result, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Get(application_, "Quit").result, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Call(application_, "Visible").result, DISP_E_MEMBERNOTFOUND);
    const auto unnamed = Invoke(application_, IdOf(application_, "Visible"), DISPATCH_PROPERTYPUT,
                                {Variant::Boolean(true)});
    EXPECT_EQ(unnamed.result, DISP_E_PARAMNOTOPTIONAL) << "the value of a put is a named argument";
}

TEST_F(ExcelServerTest, ConvertsTheValueOfASwitch)
{
    EXPECT_EQ(Put(application_, "Interactive", Variant::Long(0)).result, S_OK);
    const auto off = Get(application_, "Interactive").value;
    EXPECT_EQ(V_BOOL(&off.Get()), VARIANT_FALSE);
    EXPECT_EQ(Put(application_, "Interactive", Variant::Text("perhaps")).result,
              DISP_E_TYPEMISMATCH);
}

TEST_F(ExcelServerTest, RunsMacrosUnlessTheyAreForcedOff)
{
    const auto security = Get(application_, "AutomationSecurity").value;
    EXPECT_EQ(V_I4(&security.Get()), 1);
    EXPECT_EQ(Put(application_, "AutomationSecurity", Variant::Long(4)).code, kExcelError);
    EXPECT_EQ(Put(application_, "AutomationSecurity", Variant::Long(3)).result, S_OK);
    Open();
    EXPECT_EQ(server_.Count("Macros of contract.xlsx run"), 0);
    EXPECT_EQ(Put(application_, "AutomationSecurity", Variant::Long(2)).result, S_OK);
    Open();
    EXPECT_EQ(server_.Count("Macros of contract.xlsx run"), 1);
}

TEST_F(ExcelServerTest, CountsSheetsFromOneAndFindsThemByNameInAnyCase)
{
    const auto sheets = Get(Open(), "Worksheets").value;
    EXPECT_EQ(V_I4(&Get(sheets, "Count").value.Get()), 3);
    const auto nameOf = [&](const Variant& index) {
        return Get(Get(sheets, "Item", {index}).value, "Name").value.AsText();
    };
    EXPECT_EQ(nameOf(Variant::Long(1)), "Sheet1");
    EXPECT_EQ(nameOf(Variant::Short(2)), "Sheet2");
    EXPECT_EQ(nameOf(Variant::Double(3)), "Third");
    EXPECT_EQ(nameOf(Variant::Text("tHIRD")), "Third");
    for (const auto& index : {Variant::Long(0), Variant::Long(4), Variant::Long(-1),
                              Variant::Text("Fourth"), Variant::Text("")}) {
        const auto answer = Get(sheets, "Item", {index});
        EXPECT_EQ(answer.result, DISP_E_EXCEPTION);
        EXPECT_EQ(answer.code, DISP_E_BADINDEX);
    }
}

TEST_F(ExcelServerTest, HasDefaultMembers)
{
    const auto sheets = Get(Open(), "Worksheets").value;
    const WORD both = DISPATCH_PROPERTYGET | DISPATCH_METHOD;
    const auto sheet = Invoke(sheets, DISPID_VALUE, both, {Variant::Text("Sheet2")}).value;
    EXPECT_EQ(Get(sheet, "Name").value.AsText(), "Sheet2");
    const auto cell = Get(sheet, "Cells", {Variant::Long(2), Variant::Long(3)}).value;
    EXPECT_EQ(Invoke(cell, DISPID_VALUE, DISPATCH_PROPERTYPUT, {},
                     {{DISPID_PROPERTYPUT, Variant::Short(7)}})
                  .result,
              S_OK);
    const auto inner =
        Invoke(Get(sheet, "Cells").value, DISPID_VALUE, both, {Variant::Long(2), Variant::Long(3)})
            .value;
    EXPECT_EQ(V_I4(&Get(inner, "Column").value.Get()), 3);
}

/// What the server takes texts for when they are given to a cell.
class ExcelServerTypingTest : public ExcelServerTest {
protected:
    /// Starts anew in the language and gives the texts to a cell.
    void Type(const std::string& language, const std::vector<std::string>& texts)
    {
        application_ = {};
        ASSERT_TRUE(TestServer::WaitForProcesses(0));
        TestServer::SetLanguage(language);
        application_ = StartServer();
        const auto cell = Get(Sheet("Sheet2"), "Cells", {Variant::Long(2), Variant::Long(3)}).value;
        for (const auto& text : texts)
            EXPECT_EQ(Put(cell, "Value", Variant::Text(text)).result, S_OK) << text;
    }
    /// Such as "Range takes "01" for a number".
    std::vector<std::string> Taken() const
    {
        auto lines = server_.Lines();
        std::erase_if(lines, [](const auto& line) { return !line.starts_with("Range takes "); });
        return lines;
    }
};

TEST_F(ExcelServerTypingTest, TakesTextsAsTypedInEnglish)
{
    Type("en", {"01", "1,000.5", "$5", "12:30", "1-2", "May 1", "TRUE", "#N/A", "=x", "-x"});
    EXPECT_THAT(
        Taken(),
        ElementsAre("Range takes \"01\" for a number", "Range takes \"1,000.5\" for a number",
                    "Range takes \"$5\" for a number", "Range takes \"12:30\" for a number",
                    "Range takes \"1-2\" for a date", "Range takes \"May 1\" for a date",
                    "Range takes \"TRUE\" for a logical value",
                    "Range takes \"#N/A\" for an error value", "Range takes \"=x\" for a formula",
                    "Range takes \"-x\" for a formula"));
}

TEST_F(ExcelServerTypingTest, TakesTextsAsTypedInGerman)
{
    Type("de", {"1.000,5", "5 \xE2\x82\xAC", "1. Mai", "28.3.", "Wahr", "#NV"});
    EXPECT_THAT(Taken(),
                ElementsAre("Range takes \"1.000,5\" for a number",
                            "Range takes \"5 \xE2\x82\xAC\" for a number",
                            "Range takes \"1. Mai\" for a date", "Range takes \"28.3.\" for a date",
                            "Range takes \"Wahr\" for a logical value",
                            "Range takes \"#NV\" for an error value"));
}

TEST_F(ExcelServerTypingTest, KeepsTextsAndWhatFollowsAnApostrophe)
{
    Type("en", {"January", "1. Mai", "WAHR", "#NV", "'01", "'=x", "Day 1", ""});
    Type("de", {"Januar", "May 1", "TRUE", "#N/A", "'1. Mai", "'WAHR"});
    EXPECT_THAT(Taken(), testing::IsEmpty());
}

TEST_F(ExcelServerTypingTest, RefusesAFormulaWithoutAnEnd)
{
    const auto cell = Get(Sheet("Sheet2"), "Cells", {Variant::Long(2), Variant::Long(3)}).value;
    EXPECT_EQ(Put(cell, "Value", Variant::Text("=1+")).code, kExcelError);
}

TEST_F(ExcelServerTest, FollowsReferences)
{
    const auto sheets = Get(Open(), "Worksheets").value;
    BSTR name = SysAllocString(L"Sheet2");
    Variant text;
    V_VT(text.Fill()) = VT_BYREF | VT_BSTR;
    V_BSTRREF(text.Fill()) = &name;
    VARIANT referred = Variant::Text("Third").Detach();
    VARIANT byName = {};
    V_VT(&byName) = VT_BYREF | VT_BSTR;
    V_BSTRREF(&byName) = &name;
    VARIANT byVariant = {};
    V_VT(&byVariant) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&byVariant) = &referred;
    const auto nameFor = [&](VARIANT& index) {
        DISPPARAMS parameters = {&index, nullptr, 1, 0};
        Variant sheet;
        EXPECT_EQ(sheets.AsObject()->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT,
                                            DISPATCH_PROPERTYGET, &parameters, sheet.Fill(),
                                            nullptr, nullptr),
                  S_OK);
        return Get(sheet, "Name").value.AsText();
    };
    EXPECT_EQ(nameFor(byName), "Sheet2");
    EXPECT_EQ(nameFor(byVariant), "Third");
    EXPECT_EQ(server_.Count("(VT_BYREF|VT_BSTR \"Sheet2\")"), 1);
    EXPECT_EQ(server_.Count("(VT_BYREF|VT_VARIANT VT_BSTR \"Third\")"), 1);
    SysFreeString(name);
    VariantClear(&referred);
}

TEST_F(ExcelServerTest, TakesNamedArguments)
{
    const auto books = Get(application_, "Workbooks").value;
    const auto ids = IdsOf(books, {"Open", "ReadOnly", "Filename", "Nonsense"});
    EXPECT_EQ(ids[1], 2);
    EXPECT_EQ(ids[2], 0);
    EXPECT_EQ(ids[3], DISPID_UNKNOWN);
    const auto path = Variant::Text(util::FromPath(XlsxTemplate()));
    const auto book = Invoke(books, ids[0], DISPATCH_METHOD, {},
                             {{ids[1], Variant::Boolean(true)}, {ids[2], path}});
    ASSERT_EQ(book.result, S_OK) << book.description;
    EXPECT_EQ(V_BOOL(&Get(book.value, "ReadOnly").value.Get()), VARIANT_TRUE);
    const auto mixed =
        Invoke(books, ids[0], DISPATCH_METHOD, {path}, {{ids[1], Variant::Boolean(false)}});
    EXPECT_EQ(V_BOOL(&Get(mixed.value, "ReadOnly").value.Get()), VARIANT_FALSE);
    EXPECT_EQ(Invoke(books, ids[0], DISPATCH_METHOD, {path}, {{ids[2], path}}).result,
              DISP_E_PARAMNOTFOUND)
        << "given twice";
}

TEST_F(ExcelServerTest, KnowsWhichArgumentsAreOptional)
{
    const auto books = Get(application_, "Workbooks").value;
    EXPECT_EQ(Call(books, "Open").result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Call(books, "Open", {Variant::Missing()}).result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Call(books, "Open", Values(16, Variant::Missing())).result, DISP_E_BADPARAMCOUNT);
    Values all(15, Variant::Missing());
    all[0] = Variant::Text(util::FromPath(XlsxTemplate()));
    const auto book = Call(books, "Open", all);
    EXPECT_EQ(book.result, S_OK);
    EXPECT_EQ(V_BOOL(&Get(book.value, "ReadOnly").value.Get()), VARIANT_FALSE);
}

TEST_F(ExcelServerTest, DescribesFailuresAsExcelDoes)
{
    const auto books = Get(application_, "Workbooks").value;
    const auto missing = Call(books, "Open", {Variant::Text("C:\\no such file.xlsx")});
    EXPECT_EQ(missing.result, DISP_E_EXCEPTION);
    EXPECT_EQ(missing.code, kExcelError);
    EXPECT_EQ(missing.source, "Microsoft Excel");
    EXPECT_NE(missing.description, "");
    const auto cell = Get(Sheet("Sheet2"), "Cells", {Variant::Long(0), Variant::Long(1)});
    EXPECT_EQ(cell.result, DISP_E_EXCEPTION);
    EXPECT_EQ(cell.code, kExcelError);
    EXPECT_EQ(cell.description, "") << "Excel has no words for a cell outside the sheet";
}

TEST_F(ExcelServerTest, GivesTheSameObjectForTheSameSheet)
{
    const auto book = Open();
    const auto first = Get(book, "Worksheets", {Variant::Long(1)}).value;
    const auto again = Get(book, "Worksheets", {Variant::Text("sheet1")}).value;
    EXPECT_EQ(server_.Count("-> VT_DISPATCH Worksheet#1"), 2);
    const auto last = Get(book, "Worksheets", {Variant::Long(3)}).value;
    const auto behind = Get(last, "Next").value;
    EXPECT_EQ(behind.Type(), VT_DISPATCH);
    EXPECT_EQ(behind.AsObject(), nullptr) << "nothing follows the last sheet";
}

TEST_F(ExcelServerTest, PlacesCopiesByNamedAndByPositionalArguments)
{
    const auto book = Open();
    const auto sheets = Get(book, "Worksheets").value;
    const auto first = Get(sheets, "Item", {Variant::Long(1)}).value;
    EXPECT_EQ(Call(first, "Copy", {Variant::Missing(), first}).result, S_OK);
    const auto ids = IdsOf(first, {"Copy", "After"});
    EXPECT_EQ(Invoke(first, ids[0], DISPATCH_METHOD, {},
                     {{ids[1], Get(sheets, "Item", {Variant::Text("Third")}).value}})
                  .result,
              S_OK);
    EXPECT_EQ(V_I4(&Get(sheets, "Count").value.Get()), 5);
    EXPECT_EQ(Get(Get(first, "Next").value, "Name").value.AsText(), "Sheet1 (2)");
    EXPECT_EQ(Get(Get(sheets, "Item", {Variant::Long(5)}).value, "Name").value.AsText(),
              "Sheet1 (3)");
    EXPECT_EQ(server_.Count("Copy call (omitted, VT_DISPATCH Worksheet#1)"), 1);
    EXPECT_EQ(server_.Count("Copy call (After:=VT_DISPATCH Worksheet#"), 1);
}

TEST_F(ExcelServerTest, AsksBeforeItReplacesAFileOrForgetsWork)
{
    const testing_support::ScratchFolder folder;
    const auto target = Variant::Text(util::FromPath(folder.Write("there.xlsx", "old")));
    const auto book = Open();
    Put(Get(book, "Worksheets", {Variant::Long(1)}).value, "Name", Variant::Text("New"));
    EXPECT_EQ(Call(book, "SaveAs", {target}).result, DISP_E_EXCEPTION);
    EXPECT_EQ(Call(application_, "Quit").result, S_OK);
    EXPECT_TRUE(server_.Has("Application asks whether to save"));
    EXPECT_EQ(Put(application_, "DisplayAlerts", Variant::Boolean(false)).result, S_OK);
    EXPECT_EQ(Call(book, "SaveAs", {target}).result, S_OK);
    EXPECT_EQ(Call(application_, "Quit").result, S_OK);
}

TEST_F(ExcelServerTest, EndsWithTheLastReferenceIfItIsNotVisible)
{
    {
        const auto book = Open();
        application_ = {};
        EXPECT_FALSE(TestServer::WaitForProcesses(0, std::chrono::milliseconds(300)));
    }
    EXPECT_TRUE(TestServer::WaitForProcesses(0));
    EXPECT_EQ(server_.Lines().back(), "Application ends: nobody refers to it");
}

TEST_F(ExcelServerTest, StaysForItsUserIfItIsVisible)
{
    Put(application_, "Visible", Variant::Boolean(true));
    application_ = {};
    EXPECT_FALSE(TestServer::WaitForProcesses(0, std::chrono::milliseconds(500)));
    TestServer::CloseAll();
    EXPECT_EQ(server_.Lines().back(), "Application ends: its user closed it");
}

TEST_F(ExcelServerTest, QuitsWithTheLastReference)
{
    EXPECT_EQ(Call(application_, "Quit").result, S_OK);
    EXPECT_EQ(Get(application_, "Visible").result, CO_E_OBJNOTCONNECTED);
    application_ = {};
    EXPECT_TRUE(TestServer::WaitForProcesses(0));
    EXPECT_EQ(server_.Lines().back(), "Application ends: it was told to");
}

TEST_F(ExcelServerTest, EveryClientGetsAnInstanceOfItsOwn)
{
    const auto second = StartServer();
    ASSERT_NE(second.AsObject(), nullptr);
    EXPECT_EQ(TestServer::Processes().size(), 2U);
}

TEST_F(ExcelServerTest, AnswersFailsAndDiesAsRequested)
{
    application_ = {};
    ASSERT_TRUE(TestServer::WaitForProcesses(0));
    TestServer::SetFaults({"answer Application.Visible 2 1 0x800AC472",
                           "fail Application.Workbooks 1 Not today.", "die Application.Name 2"});
    application_ = StartServer();
    EXPECT_EQ(Get(application_, "Visible").result, S_OK);
    EXPECT_EQ(Get(application_, "Visible").result, static_cast<HRESULT>(0x800AC472UL));
    EXPECT_EQ(Get(application_, "Visible").result, S_OK);
    EXPECT_EQ(Get(application_, "Workbooks").description, "Not today.");
    EXPECT_EQ(Get(application_, "Workbooks").result, S_OK);
    EXPECT_EQ(Get(application_, "Name").result, S_OK);
    EXPECT_TRUE(FAILED(Get(application_, "Name").result));
    EXPECT_TRUE(TestServer::WaitForProcesses(0));
    EXPECT_EQ(server_.Lines().back(), "Application#1.Name get () -> dies");
}

TEST_F(ExcelServerTest, RejectsCallsByItsMessageFilter)
{
    application_ = {};
    ASSERT_TRUE(TestServer::WaitForProcesses(0));
    TestServer::SetFaults({"reject Application.Visible 1 2", "retry Application.Visible 2 1"});
    application_ = StartServer();
    const DISPID visible = IdOf(application_, "Visible");
    const auto get = [&] { return Invoke(application_, visible, DISPATCH_PROPERTYGET, {}).result; };
    EXPECT_EQ(get(), S_OK);
    EXPECT_EQ(get(), RPC_E_CALL_REJECTED);
    EXPECT_EQ(get(), RPC_E_CALL_REJECTED);
    EXPECT_EQ(get(), S_OK);
    get(); // the system may have repeated it by itself
    EXPECT_EQ(get(), S_OK);
    EXPECT_EQ(server_.Count("Filter rejects a call"), 2);
    EXPECT_EQ(server_.Count("Filter asks to retry later"), 1);
}

TEST(ExcelServerRegistrationTest, DoesNotStartIfItIsNotRegistered)
{
    TestServer server;
    TestServer::Unregister();
    const Apartment apartment;
    HRESULT result = S_OK;
    EXPECT_EQ(StartServer(&result).AsObject(), nullptr);
    EXPECT_TRUE(FAILED(result));
}

} // namespace
