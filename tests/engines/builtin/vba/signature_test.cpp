#include "engines/builtin/vba/signature.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "vba/built_project.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace orrery::vba {
namespace {

using test::U16;
using test::U32;

using Values = std::vector<std::pair<std::uint32_t, std::string>>; // by the property's id

constexpr std::uint32_t kSignature = 0x18;

std::string SetOf(const Values& values)
{
    std::string list;
    std::string content;
    for (const auto& [id, value] : values) {
        list += U32(id) + U32(static_cast<std::uint32_t>(8 + 8 * values.size() + content.size()));
        content += value;
    }
    return U32(static_cast<std::uint32_t>(8 + list.size() + content.size())) +
           U32(static_cast<std::uint32_t>(values.size())) + list + content;
}

const std::string kSummaryId("\x02\xD5\xCD\xD5\x9C\x2E\x1B\x10\x93\x97\x08\x00\x2B\x2C\xF9\xAE",
                             16);
const std::string kUserDefinedId("\x05\xD5\xCD\xD5\x9C\x2E\x1B\x10\x93\x97\x08\x00\x2B\x2C\xF9\xAE",
                                 16);

/// A stream with the sets one after another.
std::string StreamOf(const std::vector<std::pair<std::string, std::string>>& sets)
{
    std::string stream = U16(0xFFFE) + U16(0) + U32(0x20005) + std::string(16, '\0') +
                         U32(static_cast<std::uint32_t>(sets.size()));
    std::string content;
    for (const auto& [id, set] : sets) {
        stream += id + U32(static_cast<std::uint32_t>(28 + 20 * sets.size() + content.size()));
        content += set;
    }
    return stream + content;
}

const std::string kCompany = U32(0x1E) + U32(4) + std::string("Own\0", 4);
const std::string kBlob = U32(0x41) + U32(10) + "signature!" + std::string(2, '\0');
const std::string kCodePage = U32(2) + U32(1252);

std::string Padded(std::string bytes, std::size_t size)
{
    bytes.resize(size);
    return bytes;
}

TEST(WithoutSignatureTest, TheOthersStay)
{
    const std::string user = SetOf({{1, kCodePage}, {2, kCompany}});
    for (const Values& values : {Values{{1, kCodePage}, {kSignature, kBlob}, {15, kCompany}},
                                 Values{{kSignature, kBlob}, {1, kCodePage}, {15, kCompany}},
                                 Values{{1, kCodePage}, {15, kCompany}, {kSignature, kBlob}}}) {
        const auto before = StreamOf({{kSummaryId, SetOf(values)}, {kUserDefinedId, user}});
        const auto expected = StreamOf(
            {{kSummaryId, SetOf({{1, kCodePage}, {15, kCompany}})}, {kUserDefinedId, user}});
        EXPECT_EQ(WithoutSignature(before), Padded(expected, before.size()));
    }
}

TEST(WithoutSignatureTest, TheSetMayBeTheSecond)
{
    const std::string user = SetOf({{2, kCompany}});
    const auto before =
        StreamOf({{kUserDefinedId, user}, {kSummaryId, SetOf({{kSignature, kBlob}})}});
    const auto expected = StreamOf({{kUserDefinedId, user}, {kSummaryId, SetOf({})}});
    EXPECT_EQ(WithoutSignature(before), Padded(expected, before.size()));
}

TEST(WithoutSignatureTest, NothingIsDoneWithoutOne)
{
    EXPECT_EQ(WithoutSignature(StreamOf({{kSummaryId, SetOf({{1, kCodePage}})}})), std::nullopt);
    EXPECT_EQ(WithoutSignature(StreamOf({{kUserDefinedId, SetOf({{kSignature, kBlob}})}})),
              std::nullopt)
        << "a property of the user's";
    EXPECT_EQ(WithoutSignature(""), std::nullopt);
}

TEST(WithoutSignatureTest, PropertiesThatCannotBeReadHaveNone)
{
    const auto whole = StreamOf({{kSummaryId, SetOf({{1, kCodePage}, {kSignature, kBlob}})}});
    ASSERT_NE(WithoutSignature(whole), std::nullopt);
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(WithoutSignature(whole.substr(0, size)), std::nullopt) << size;
}

TEST(WithoutSignatureTest, StandsAnyBytes)
{
    const auto whole = StreamOf({{kSummaryId, SetOf({{1, kCodePage}, {kSignature, kBlob}})},
                                 {kUserDefinedId, SetOf({{2, kCompany}})}});
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        const std::string where = xls::test::Noise(8, seed);
        std::string damaged = whole;
        damaged[xls::ReadU32(where, 0) % whole.size()] = where[4];
        damaged[xls::ReadU32(where, 1) % whole.size()] = where[5];
        if (const auto changed = WithoutSignature(damaged)) {
            EXPECT_EQ(changed->size(), whole.size()) << seed;
        }
    }
}

} // namespace
} // namespace orrery::vba
