#include "engines/builtin/xml/encoding.h"

#include "book/error.h"
#include "util/error.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xml {
namespace {

using namespace std::string_literals;

std::string Utf16(std::u16string_view text, bool little, bool marked)
{
    std::string bytes;
    const auto add = [&](char16_t unit) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += little ? low : high;
        bytes += little ? high : low;
    };
    if (marked)
        add(0xFEFF);
    for (const char16_t unit : text)
        add(unit);
    return bytes;
}

struct EncodingCase {
    const char* name;
    std::string bytes;
    std::string text;
};

const std::u16string kText16 =
    u"<?xml version='1.0' encoding='UTF-16'?><a>\u00e4\u20ac\U0001F600</a>";
const std::string kText8 =
    "<?xml version='1.0' encoding='UTF-8'?><a>\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80</a>";

class DecodeXmlPartTest : public testing::TestWithParam<EncodingCase> {};
TEST_P(DecodeXmlPartTest, GivesUtf8)
{
    EXPECT_EQ(DecodePart(GetParam().bytes, "/a.xml"), GetParam().text);
}
INSTANTIATE_TEST_SUITE_P(
    Encodings, DecodeXmlPartTest,
    testing::Values(
        EncodingCase{"Utf8", kText8, kText8},
        EncodingCase{"Utf8Mark", "\xEF\xBB\xBF" + kText8, kText8},
        EncodingCase{"Undeclared", "<a>\xC3\xA4</a>", "<a>\xC3\xA4</a>"},
        EncodingCase{"Utf16Little", Utf16(kText16, true, true), kText8},
        EncodingCase{"Utf16Big", Utf16(kText16, false, true), kText8},
        EncodingCase{"Utf16LittleUnmarked", Utf16(kText16, true, false), kText8},
        EncodingCase{"Utf16BigUnmarked", Utf16(kText16, false, false), kText8},
        EncodingCase{"Utf16WithoutDeclaration", Utf16(u"<a>\u00e4</a>", true, true),
                     "<a>\xC3\xA4</a>"},
        EncodingCase{"Utf16DeclaredOverUtf8",
                     "<?xml version='1.0' encoding='utf-16'?><a>\xC3\xA4</a>",
                     "<?xml version='1.0' encoding='UTF-8'?><a>\xC3\xA4</a>"},
        EncodingCase{
            "Latin1",
            "<?xml version=\"1.0\" encoding=\"iso-8859-1\" standalone=\"yes\"?><a>\xE4</a>",
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?><a>\xC3\xA4</a>"},
        EncodingCase{"Windows1252",
                     "<?xml version=\"1.0\" encoding=\"windows-1252\"?><a>\x80\xE4</a>",
                     "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>\xE2\x82\xAC\xC3\xA4</a>"},
        EncodingCase{"Ascii", "<?xml version='1.0' encoding='us-ascii'?><a/>",
                     "<?xml version='1.0' encoding='us-ascii'?><a/>"},
        EncodingCase{"EncodingOfAnotherElement", "<a encoding='x'/>", "<a encoding='x'/>"},
        EncodingCase{"Empty", "", ""}),
    [](const auto& row) { return std::string(row.param.name); });

struct BadEncodingCase {
    const char* name;
    std::string bytes;
};

class RefuseEncodingTest : public testing::TestWithParam<BadEncodingCase> {};
TEST_P(RefuseEncodingTest, IsDamaged)
{
    try {
        DecodePart(GetParam().bytes, "/a.xml");
        FAIL() << "not refused";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        EXPECT_EQ(error.Cause().substr(0, 7), "/a.xml:");
    }
}
INSTANTIATE_TEST_SUITE_P(
    Encodings, RefuseEncodingTest,
    testing::Values(
        BadEncodingCase{"UnknownEncoding", "<?xml version='1.0' encoding='EBCDIC'?><a/>"},
        BadEncodingCase{"NotUtf8", "<a>\xE4</a>"}, BadEncodingCase{"CutUtf8", "<a>\xC3"},
        BadEncodingCase{"HalfUnit", "\xFF\xFE<\0a"s},
        BadEncodingCase{"LoneSurrogate", Utf16(u"<a>", true, true) + "\x00\xD8"s},
        BadEncodingCase{"ReversedSurrogates", Utf16(u"<a>", true, true) + "\x00\xDC\x00\xD8"s},
        BadEncodingCase{"NoSuchByte", "<?xml version='1.0' encoding='windows-1252'?><a>\x81</a>"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(DecodePart, RefusesWhatXmlCannotHold)
{
    EXPECT_THROW(DecodePart("<a b='\xEF\xBF\xBF'/>", "/a.xml"), util::Error);
    EXPECT_THROW(DecodePart(Utf16(u"<a>\uFFFE</a>", true, true), "/a.xml"), util::Error);
    EXPECT_NO_THROW(DecodePart("<a>\xEF\xBF\xBD\xEF\xBC\xBF</a>", "/a.xml"));
}

} // namespace
} // namespace orrery::xml
