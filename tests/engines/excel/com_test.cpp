#include "engines/excel/com.h"

#include "book/error.h"
#include "fake_object.h"
#include "util/error_text.h"

#include <gtest/gtest.h>

namespace orrery::excel {
namespace {

TEST(ApartmentTest, IsOneInEitherKindOfApartment)
{
    EXPECT_TRUE(HasEntered(S_OK));
    EXPECT_TRUE(HasEntered(S_FALSE)) << "entered again";
    EXPECT_FALSE(HasEntered(RPC_E_CHANGED_MODE)) << "the other kind";
    EXPECT_NO_THROW(Apartment());
}

TEST(ApartmentTest, AFailureIsAnErrorThatOffersTheBuiltInEngine)
{
    for (const HRESULT failure : {E_OUTOFMEMORY, E_UNEXPECTED, CO_E_INIT_TLS}) {
        try {
            HasEntered(failure);
            ADD_FAILURE() << "nothing was thrown";
        }
        catch (const Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::ApplicationFailure);
            const std::string text = util::ErrorText(error);
            EXPECT_TRUE(text.starts_with("Windows is not ready to reach Excel: ")) << text;
            EXPECT_NE(text.find("\"builtin\""), std::string::npos) << text;
        }
    }
}

TEST(PointerTest, CountsItsReferences)
{
    fake::World world;
    {
        auto first = fake::MakeObject(world, "Thing");
        EXPECT_EQ(world.objects, 1);
        auto second = Pointer<IDispatch>::Share(first.Get());
        first = Pointer<IDispatch>();
        EXPECT_EQ(world.objects, 1) << "the second still refers to it";
        const auto third = std::move(second);
        EXPECT_FALSE(second);
        EXPECT_TRUE(third);
    }
    EXPECT_EQ(world.objects, 0);
}

TEST(PointerTest, DistinguishesObjects)
{
    fake::World world;
    const auto first = fake::MakeObject(world, "Thing");
    const auto second = fake::MakeObject(world, "Thing");
    EXPECT_EQ(IdentityOf(*first.Get()).Get(), IdentityOf(*first.Get()).Get());
    EXPECT_NE(IdentityOf(*first.Get()).Get(), IdentityOf(*second.Get()).Get());
}

TEST(VariantTest, HasTheTypesThatTheApplicationExpects)
{
    EXPECT_EQ(Variant().Get().vt, VT_EMPTY);
    EXPECT_EQ(Variant(true).Get().vt, VT_BOOL);
    EXPECT_EQ(Variant(true).Get().boolVal, -1);
    EXPECT_EQ(Variant(false).Get().boolVal, 0);
    const Variant small(std::int16_t{-32768});
    EXPECT_EQ(small.Get().vt, VT_I2);
    EXPECT_EQ(small.Get().iVal, -32768);
    const Variant large(std::int32_t{1048576});
    EXPECT_EQ(large.Get().vt, VT_I4);
    EXPECT_EQ(large.Get().lVal, 1048576);
    EXPECT_EQ(Variant::Omitted().Get().vt, VT_ERROR);
    EXPECT_EQ(Variant::Omitted().Get().scode, DISP_E_PARAMNOTFOUND);
}

TEST(VariantTest, KeepsTextsWhole)
{
    using namespace std::string_view_literals;
    for (const std::string_view text :
         {""sv, "a \"quoted\" text"sv, "M\xC3\xA4rz \xE5\x85\x83\xE6\x97\xA5"sv,
          "\xF0\x9F\x8E\x84 tree"sv, "a\0b"sv}) {
        const Variant value(text);
        EXPECT_EQ(value.Get().vt, VT_BSTR);
        EXPECT_NE(value.Get().bstrVal, nullptr);
        EXPECT_EQ(value.AsText(), text);
    }
    EXPECT_EQ(SysStringLen(Variant("\xF0\x9F\x8E\x84"sv).Get().bstrVal), 2U);
    EXPECT_EQ(TextOf(nullptr), "");
}

TEST(VariantTest, GivesNothingOfAnotherKind)
{
    Variant number(std::int32_t{1});
    EXPECT_FALSE(number.AsBool());
    EXPECT_EQ(number.AsText(), "");
    EXPECT_FALSE(number.TakeObject());
}

TEST(VariantTest, OwnsItsObjectUntilItIsTaken)
{
    fake::World world;
    auto object = fake::MakeObject(world, "Thing");
    {
        Variant value(*object.Get());
        Variant moved(std::move(value));
        object = Pointer<IDispatch>();
        EXPECT_EQ(world.objects, 1);
        object = moved.TakeObject();
        EXPECT_FALSE(moved.TakeObject());
    }
    EXPECT_EQ(world.objects, 1);
    object = Pointer<IDispatch>();
    EXPECT_EQ(world.objects, 0);
}

TEST(VariantTest, ReceivesOneResultAfterAnother)
{
    fake::World world;
    Variant value(*fake::MakeObject(world, "Thing").Get());
    VARIANT* const received = value.Receive();
    EXPECT_EQ(world.objects, 0) << "the old value is given back";
    received->bstrVal = Bstr("text").Release();
    received->vt = VT_BSTR;
    EXPECT_EQ(value.AsText(), "text");
}

TEST(ExceptionInfoTest, CompletesWhatIsFilledInLater)
{
    ExceptionInfo info;
    info.Receive()->pfnDeferredFillIn = [](EXCEPINFO* late) -> HRESULT {
        late->bstrDescription = SysAllocString(L"late words");
        late->wCode = 1004;
        return S_OK;
    };
    info.Complete();
    EXPECT_EQ(info.Description(), "late words");
    EXPECT_EQ(info.Code(), static_cast<HRESULT>(0x800A03EC));
    info.Receive();
    EXPECT_EQ(info.Description(), "");
    EXPECT_EQ(info.Code(), S_OK);
}

TEST(ApartmentTest, SharesAnExistingApartment)
{
    const Apartment outer;
    {
        const Apartment inner;
    }
    APTTYPE type = APTTYPE_CURRENT;
    APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
    EXPECT_EQ(CoGetApartmentType(&type, &qualifier), S_OK) << "the outer one is still in force";
}

} // namespace
} // namespace orrery::excel
