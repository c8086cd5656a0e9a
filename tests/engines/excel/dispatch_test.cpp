#include "engines/excel/dispatch.h"

#include "fake_object.h"

#include <gtest/gtest.h>

namespace orrery::excel {
namespace {

using Texts = std::vector<std::string>;
using namespace std::string_view_literals;

class DispatchTest : public testing::Test {
protected:
    Object Make(ObjectKind& kind) { return {fake::MakeObject(world_, kind.CallName({})), kind}; }

    fake::World world_;
    fake::PausedClock clock_;
    ObjectModel model_{clock_};
};

TEST_F(DispatchTest, GetsAProperty)
{
    world_.answers["Worksheet.Name"] = fake::GiveText("Plan");
    EXPECT_EQ(Make(model_.worksheet).Get("Name").AsText(), "Plan");
    EXPECT_EQ(world_.calls, (Texts{"id Worksheet.Name", "Worksheet.Name get ()"}));
}

TEST_F(DispatchTest, PutsAProperty)
{
    Make(model_.worksheet).Put("Name", Variant("Plan"sv));
    EXPECT_EQ(world_.calls, (Texts{"id Worksheet.Name", "Worksheet.Name put (BSTR \"Plan\")"}));
}

TEST_F(DispatchTest, PassesArgumentsInTheirOrder)
{
    const Object sheet = Make(model_.worksheet);
    sheet.Call("Many", {Variant(std::int16_t{1}), Variant::Omitted(), Variant(std::int32_t{3}),
                        Variant("four"sv), Variant(false), Variant(sheet.Interface())});
    EXPECT_EQ(world_.calls.back(),
              "Worksheet.Many call (I2 1, omitted, I4 3, BSTR \"four\", BOOL false, object)");
}

TEST_F(DispatchTest, GetsWithIndexes)
{
    Make(model_.worksheet).Get("Cells", {Variant(std::int32_t{6}), Variant(std::int32_t{2})});
    EXPECT_EQ(world_.calls.back(), "Worksheet.Cells get+call (I4 6, I4 2)");
}

TEST_F(DispatchTest, ReachesTheDefaultMemberWithoutAskingForIt)
{
    const Object cell = Make(model_.range);
    cell.Put(kDefaultMember, Variant(std::int16_t{7}));
    Make(model_.worksheets).Get(kDefaultMember, {Variant("Plan"sv)});
    EXPECT_EQ(world_.calls, (Texts{"Range. put (I2 7)", "Worksheets. get+call (BSTR \"Plan\")"}));
}

TEST_F(DispatchTest, AsksForAnIdOncePerKindOfObject)
{
    for (int i = 0; i < 3; ++i) {
        const Object sheet = Make(model_.worksheet);
        sheet.Get("Name");
        sheet.Put("Name", Variant("x"sv));
        Make(model_.workbook).Get("Name");
    }
    EXPECT_EQ(world_.CallsWith("id "), (Texts{"id Worksheet.Name", "id Workbook.Name"}));
}

TEST_F(DispatchTest, AMissingMemberIsAFailure)
{
    world_.idResult = DISP_E_UNKNOWNNAME;
    try {
        Make(model_.worksheet).Get("Nothing");
        FAIL() << "nothing was thrown";
    }
    catch (const CallFailure& failure) {
        EXPECT_EQ(failure.Code(), DISP_E_UNKNOWNNAME);
        EXPECT_EQ(failure.Subject(), "Worksheet.Nothing");
    }
    world_.idResult = S_OK;
    EXPECT_NO_THROW(Make(model_.worksheet).Get("Nothing")) << "the failure is not remembered";
}

TEST_F(DispatchTest, RepeatsTheWholeCallToABusyApplication)
{
    world_.next = {fake::Refuse(RPC_E_CALL_REJECTED), fake::Refuse(RPC_E_CALL_REJECTED)};
    world_.answers["Application.Visible"] = fake::GiveBool(true);
    EXPECT_TRUE(Make(model_.application).Get("Visible").AsBool());
    EXPECT_EQ(world_.CallsWith("Visible get").size(), 3U);
}

TEST_F(DispatchTest, AResultThatIsNotAnObjectIsAFailure)
{
    world_.answers["Workbook.Worksheets"] = fake::GiveNoObject();
    EXPECT_THROW(ObjectFrom(Make(model_.workbook).Get("Worksheets"), model_.worksheets),
                 CallFailure);
    EXPECT_THROW(ObjectFrom(Variant(true), model_.worksheets), CallFailure);
}

TEST_F(DispatchTest, ReleasesEveryReference)
{
    {
        world_.answers["Workbook.Worksheets"] = fake::GiveObject(world_, "Worksheets");
        const Object sheets =
            ObjectFrom(Make(model_.workbook).Get("Worksheets"), model_.worksheets);
        sheets.Call("Take", {Variant(sheets.Interface())});
        world_.answers.clear();
        EXPECT_EQ(world_.objects, 1);
    }
    EXPECT_EQ(world_.objects, 0);
}

} // namespace
} // namespace orrery::excel
