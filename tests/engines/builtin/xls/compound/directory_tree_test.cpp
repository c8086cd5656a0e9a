#include "book/error.h"
#include "engines/builtin/xls/compound/directory_tree.h"
#include "util/error.h"

#include "xls/tree_check.h"

#include <gtest/gtest.h>
#include <random>

namespace orrery::xls {
namespace {

struct NameCase {
    const char* name;
    std::u16string_view left;
    std::u16string_view right;
    std::weak_ordering expected;
};

class CompareNamesTest : public testing::TestWithParam<NameCase> {};

TEST_P(CompareNamesTest, OrdersByLengthThenByCapitals)
{
    const NameCase& names = GetParam();
    EXPECT_EQ(CompareNames(names.left, names.right), names.expected);
    EXPECT_EQ(CompareNames(names.right, names.left), 0 <=> names.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Names, CompareNamesTest,
    testing::Values(NameCase{"ShorterFirst", u"zz", u"aaa", std::weak_ordering::less},
                    NameCase{"OnlyCase", u"WORKBOOK", u"Workbook", std::weak_ordering::equivalent},
                    NameCase{"UnderlineAfterCapitals", u"_a", u"za", std::weak_ordering::greater},
                    NameCase{"ControlFirst", u"\5Sum", u"aSum", std::weak_ordering::less},
                    NameCase{"Umlaut", u"\u00E4", u"\u00C4", std::weak_ordering::equivalent},
                    NameCase{"SharpS", u"\u00DF", u"\u1E9E", std::weak_ordering::less},
                    NameCase{"Greek", u"\u03C9", u"\u03A9", std::weak_ordering::equivalent},
                    NameCase{"Cyrillic", u"\u0451", u"\u0401", std::weak_ordering::equivalent},
                    NameCase{"Latin", u"\u017E", u"\u017D", std::weak_ordering::equivalent},
                    NameCase{"Kana", u"\u3041", u"\u3042", std::weak_ordering::less}),
    [](const auto& test) { return std::string(test.param.name); });

/// A root with unlinked streams of random names.
Directory Streams(std::size_t count, unsigned seed)
{
    std::mt19937 random(seed);
    Directory directory(1);
    directory[kRootEntry].type = EntryType::Root;
    for (std::size_t i = 0; i < count; ++i) {
        DirectoryEntry entry;
        entry.type = EntryType::Stream;
        entry.name = std::u16string(1 + random() % 3, u'z');
        for (std::size_t left = i; left > 0; left /= 20)
            entry.name += static_cast<char16_t>(u'A' + left % 20);
        directory.push_back(entry);
    }
    return directory;
}

std::vector<EntryId> Ids(const Directory& directory)
{
    std::vector<EntryId> ids;
    for (EntryId id = 1; id < directory.size(); ++id)
        ids.push_back(id);
    return ids;
}

/// Links all entries as one chain to the right, all black, in the given order.
void Chain(Directory& directory, const std::vector<EntryId>& ids)
{
    directory[kRootEntry].child = ids.front();
    for (std::size_t i = 0; i + 1 < ids.size(); ++i)
        directory[ids[i]].right = ids[i + 1];
}

std::string LinksOf(const Directory& directory)
{
    std::string bytes;
    for (const DirectoryEntry& entry : directory)
        AppendEntry(bytes, entry);
    return bytes;
}

TEST(BuildTreeTest, MakesAValidTreeOfAnyNumber)
{
    for (std::size_t count = 0; count < 300; ++count) {
        Directory directory = Streams(count, static_cast<unsigned>(count));
        BuildTree(directory, kRootEntry, Ids(directory));
        EXPECT_EQ(test::FindTreeFault(directory, kRootEntry), "") << count;
        EXPECT_EQ(MembersOf(directory, kRootEntry).size(), count);
    }
}

TEST(RepairTreeTest, LeavesAValidTree)
{
    Directory directory = Streams(4, 1);
    auto members = Ids(directory);
    BuildTree(directory, kRootEntry, members);
    // A valid tree other than the one that would be built: its deepest entry is on the other side.
    members = MembersOf(directory, kRootEntry);
    directory[kRootEntry].child = members[1];
    directory[members[0]] = {.name = directory[members[0]].name, .type = EntryType::Stream};
    directory[members[1]].colour = EntryColour::Black;
    directory[members[1]].left = members[0];
    directory[members[1]].right = members[2];
    directory[members[2]] = {.name = directory[members[2]].name, .type = EntryType::Stream};
    directory[members[2]].right = members[3];
    directory[members[3]] = {
        .name = directory[members[3]].name, .type = EntryType::Stream, .colour = EntryColour::Red};
    ASSERT_EQ(test::FindTreeFault(directory, kRootEntry), "");
    const std::string before = LinksOf(directory);
    RepairTree(directory, kRootEntry);
    EXPECT_EQ(LinksOf(directory), before);
}

TEST(RepairTreeTest, RebuildsATreeThatIsOutOfBalance)
{
    Directory directory = Streams(7, 1);
    BuildTree(directory, kRootEntry, Ids(directory));
    auto members = MembersOf(directory, kRootEntry);
    for (const EntryId id : members)
        directory[id].left = directory[id].right = kNoEntry;
    Chain(directory, members);
    ASSERT_NE(test::FindTreeFault(directory, kRootEntry), "");
    RepairTree(directory, kRootEntry);
    EXPECT_EQ(test::FindTreeFault(directory, kRootEntry), "");
    EXPECT_EQ(MembersOf(directory, kRootEntry), members);
}

TEST(RepairTreeTest, RebuildsATreeThatIsOutOfOrderOrHasTwoRedsInARow)
{
    Directory directory = Streams(3, 1);
    directory[1].name = u"b";
    directory[2].name = u"a";
    directory[3].name = u"c";
    directory[kRootEntry].child = 1;
    directory[1].left = 3;
    directory[1].right = 2;
    RepairTree(directory, kRootEntry);
    EXPECT_EQ(MembersOf(directory, kRootEntry), (std::vector<EntryId>{2, 1, 3}));

    directory[1].colour = EntryColour::Red;
    RepairTree(directory, kRootEntry);
    EXPECT_EQ(directory[1].colour, EntryColour::Black);
    EXPECT_EQ(test::FindTreeFault(directory, kRootEntry), "");
}

TEST(LinkParentsTest, DropsEntriesThatNoStorageLeadsTo)
{
    Directory directory = Streams(3, 1);
    directory[kRootEntry].child = 2;
    LinkParents(directory);
    EXPECT_EQ(directory[2].parent, kRootEntry);
    EXPECT_EQ(directory[1].type, EntryType::Unallocated);
    EXPECT_EQ(directory[3].name, u"");
}

TEST(LinkParentsTest, GoesDownAnyDepth)
{
    constexpr std::size_t kDepth = 50000;
    Directory inStorages(kDepth);
    Directory inOneTree(kDepth);
    for (EntryId id = 0; id < kDepth; ++id) {
        for (Directory* directory : {&inStorages, &inOneTree}) {
            (*directory)[id].type = id == 0 ? EntryType::Root : EntryType::Storage;
            for (std::size_t left = id; left > 0; left /= 20)
                (*directory)[id].name += static_cast<char16_t>(u'A' + left % 20);
        }
        const EntryId next = id + 1 < kDepth ? id + 1 : kNoEntry;
        inStorages[id].child = next;
        (id == 0 ? inOneTree[id].child : inOneTree[id].left) = next;
    }
    LinkParents(inStorages);
    EXPECT_EQ(inStorages.back().parent, kDepth - 2);
    LinkParents(inOneTree);
    RepairTree(inOneTree, kRootEntry);
    EXPECT_EQ(test::FindTreeFault(inOneTree, kRootEntry), "");
}

void ExpectDamage(Directory directory, const std::string& cause)
{
    try {
        LinkParents(directory);
        ADD_FAILURE() << "not refused";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        EXPECT_EQ(error.Cause(), cause);
    }
}

TEST(LinkParentsTest, RefusesCyclesInvalidLinksAndDuplicates)
{
    Directory directory = Streams(3, 1);
    Chain(directory, {1, 2, 3});
    const std::string circle = "its directory runs in a circle";
    directory[3].left = 1;
    ExpectDamage(directory, circle);
    directory[3].left = kRootEntry;
    ExpectDamage(directory, "its directory names an entry that is not there");
    directory[3].left = 4;
    ExpectDamage(directory, "its directory names an entry that is not there");
    directory[3].left = kNoEntry;
    directory[2].type = EntryType::Unallocated;
    ExpectDamage(directory, "its directory names an entry that is not there");
    directory[2].type = EntryType::Storage;
    directory[2].child = 2;
    ExpectDamage(directory, circle);
    directory[2].child = kNoEntry;
    directory[2].name = u"Same";
    directory[3].name = u"SAME";
    ExpectDamage(directory, "two of its streams have the same name");
}

} // namespace
} // namespace orrery::xls
