#include "engines/builtin/vba/project.h"

#include "book/error.h"
#include "engines/builtin/vba/compression.h"
#include "util/error.h"
#include "util/scratch_folder.h"
#include "vba/built_project.h"
#include "xls/compound_snapshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orrery::vba {
namespace {

using namespace test;
using xls::CompoundFile;
using xls::test::BuildCompound;
using xls::test::Node;
using xls::test::Storage;
using xls::test::Stream;

const std::string kCode = "Private Sub Worksheet_Change(ByVal Target As Range)\r\n"
                          "    Sheet1.Range(\"A1\") = Target.Address\r\nEnd Sub\r\n";

const std::vector<BuiltModule> kProject = {{"ThisWorkbook"},
                                           {"Sheet1", kCode},
                                           {"Sheet2"},
                                           {"Module1", "Sub Run()\r\nEnd Sub\r\n", false}};

constexpr std::size_t kMost = std::size_t{1} << 20U;

/// A workbook with a project and what it may keep beside it.
std::string FileOf(const std::vector<Node>& project)
{
    return BuildCompound({Stream(u"Workbook", "records"), Storage(u"_VBA_PROJECT_CUR", project)});
}

std::string FileOf(const std::vector<BuiltModule>& modules)
{
    return FileOf(ProjectNodes(modules));
}

/// The file that is saved when the project has been changed.
std::string Saved(const std::string& bytes, const std::function<void(Project&)>& change)
{
    const CompoundFile file(bytes);
    Project project(file, *file.Find("_VBA_PROJECT_CUR"));
    change(project);
    xls::CompoundWriter writer(file);
    project.WriteTo(writer);
    const testing_support::ScratchFolder folder;
    writer.SaveTo(folder / "out.xls");
    return testing_support::BytesOf(folder / "out.xls");
}

/// The streams of the project, by path: as they are in the file, the dir stream and the modules
/// decompressed.
std::map<std::string, std::string> StreamsOf(const std::string& bytes)
{
    const CompoundFile file(bytes);
    std::map<std::string, std::string> streams;
    for (const auto& [path, content] : xls::test::SnapshotOf(file)) {
        const std::string prefix = "/_VBA_PROJECT_CUR/";
        const std::string name = util::FromUtf16(path);
        if (content.type != xls::EntryType::Stream || !name.starts_with(prefix))
            continue;
        const bool isPlain = name.find("PROJECT", prefix.size()) != name.npos;
        streams[name.substr(prefix.size())] =
            isPlain ? content.bytes : Decompress(content.bytes, kMost);
    }
    return streams;
}

/// What `StreamsOf` gives for a project of these modules that was changed.
std::map<std::string, std::string> ExpectedStreams(std::vector<BuiltModule> modules)
{
    for (auto& each : modules)
        each.cache = 0;
    std::map<std::string, std::string> streams = {
        {"PROJECT", TextOf(modules)},
        {"VBA/dir", DirOf(modules)},
        {"VBA/_VBA_PROJECT", std::string("\xCC\x61\xFF\xFF\0\0\0", 7)}};
    for (const auto& each : modules)
        streams["VBA/" + each.name] = each.Source();
    return streams;
}

TEST(ProjectTest, KnowsWhichModulesHaveCode)
{
    const CompoundFile file(FileOf(kProject));
    const Project project(file, *file.Find("_VBA_PROJECT_CUR"));
    EXPECT_TRUE(project.HasCode("Sheet1"));
    EXPECT_TRUE(project.HasCode("SHEET1"));
    EXPECT_FALSE(project.HasCode("Sheet2")) << "attributes alone";
    EXPECT_FALSE(project.HasCode("Sheet3")) << "no such module";
    EXPECT_FALSE(project.HasCode("Module1")) << "not that of a sheet";
}

TEST(ProjectTest, ACopyIsAModuleLikeItsModel)
{
    std::vector<std::string> names;
    const auto streams = StreamsOf(Saved(FileOf(kProject), [&](Project& project) {
        for (int copy = 0; copy < 11; ++copy)
            names.push_back(project.AddCopy("Sheet1"));
        EXPECT_GT(project.AddedBytes(), 11 * kCode.size() / 2);
    }));
    auto modules = kProject;
    std::vector<std::string> expectedNames;
    for (int number = 3; number <= 13; ++number) {
        expectedNames.push_back("Sheet" + std::to_string(number));
        modules.insert(modules.begin() + number - 1, {expectedNames.back(), kCode});
    }
    EXPECT_EQ(names, expectedNames);
    auto expected = ExpectedStreams(modules);
    // The names in Unicode are in the order in which they were added.
    modules = kProject;
    for (const auto& name : names)
        modules.push_back({name, kCode});
    expected["PROJECTwm"] = NamesOf(modules);
    EXPECT_EQ(streams, expected);
}

TEST(ProjectTest, TheStreamOfNamesIsNotNeeded)
{
    auto nodes = ProjectNodes(kProject);
    std::erase_if(nodes, [](const Node& node) { return node.name == u"PROJECTwm"; });
    const auto streams =
        StreamsOf(Saved(FileOf(nodes), [](Project& project) { project.AddCopy("Sheet1"); }));
    auto modules = kProject;
    modules.insert(modules.begin() + 2, {"Sheet3", kCode});
    EXPECT_EQ(streams, ExpectedStreams(modules));
}

TEST(ProjectTest, StreamsOfFormsStay)
{
    auto nodes = ProjectNodes(kProject);
    nodes.push_back(
        Storage(u"Form1", {Stream(u"f", "form"), Stream(u"o", std::string(5000, 'o'))}));
    const std::string before = FileOf(nodes);
    const CompoundFile saved(Saved(before, [](Project& project) { project.AddCopy("Sheet1"); }));
    const CompoundFile original(before);
    const auto snapshot = xls::test::SnapshotOf(saved);
    for (const auto& [path, content] : xls::test::SnapshotOf(original)) {
        if (path.find(u"Form1") != path.npos || path == u"/Workbook") {
            EXPECT_EQ(snapshot.at(path).bytes, content.bytes);
        }
    }
}

struct NameCase {
    const char* name;
    const char* model;
    std::vector<BuiltModule> others;
    const char* expected;
};

class FreeNameTest : public testing::TestWithParam<NameCase> {};

TEST_P(FreeNameTest, IsTheFirstWithTheModelsLetters)
{
    auto modules = GetParam().others;
    modules.push_back({GetParam().model, kCode});
    const CompoundFile file(FileOf(modules));
    Project project(file, *file.Find("_VBA_PROJECT_CUR"));
    EXPECT_EQ(project.AddCopy(GetParam().model), GetParam().expected);
}

const std::string kLongest = "A2345678901234567890123456789ab"; // 31 characters

INSTANTIATE_TEST_SUITE_P(
    Names, FreeNameTest,
    testing::Values(NameCase{"Next", "Sheet1", {{"Sheet2"}, {"Sheet3"}}, "Sheet4"},
                    NameCase{"Gap", "Sheet7", {{"Sheet1"}, {"Sheet3"}}, "Sheet2"},
                    NameCase{"WithoutNumber", "Plan", {}, "Plan1"},
                    NameCase{"OtherCase", "Sheet1", {{"SHEET2"}}, "Sheet3"},
                    NameCase{"ModuleOfAnotherKind", "Sheet1", {{"Sheet2", "", false}}, "Sheet3"},
                    NameCase{"LikeAReference", "Lib1", {}, "Lib3"},
                    NameCase{"Longest", kLongest.c_str(), {}, "A2345678901234567890123456789a1"},
                    NameCase{"InTwoBytes",
                             "\xD0\x9B\xD0\xB8\xD1\x81\xD1\x82"
                             "1",
                             {}, // "Лист1"
                             "\xD0\x9B\xD0\xB8\xD1\x81\xD1\x82"
                             "2"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ProjectTest, ReservedNamesAndThoseOfOtherStreamsAreNotFree)
{
    auto nodes = ProjectNodes({{"Sheet1", kCode}});
    nodes[0].members.push_back(Stream(u"sheet3", "not listed"));
    const CompoundFile file(FileOf(nodes));
    Project project(file, *file.Find("_VBA_PROJECT_CUR"));
    project.Reserve("SHEET2");
    EXPECT_EQ(project.AddCopy("Sheet1"), "Sheet4");
    EXPECT_EQ(project.AddCopy("Sheet1"), "Sheet5");
}

TEST(ProjectTest, ANameInACodePageIsNumberedInIt)
{
    const BuiltModule model{"\xD0\x9B\xD0\xB8\xD1\x81\xD1\x82"
                            "1",
                            kCode, true,
                            "\xCB\xE8\xF1\xF2"
                            "1"};
    BuiltModule copy = model;
    copy.name.back() = copy.bytes.back() = '2';
    const auto streams = StreamsOf(Saved(FileOf(std::vector{model}), [&](Project& project) {
        EXPECT_EQ(project.AddCopy(model.name), copy.name);
    }));
    auto expected = ExpectedStreams({model, copy});
    expected["PROJECTwm"] = NamesOf({model, copy});
    EXPECT_EQ(streams, expected);
}

/// Why the project cannot be read or copied.
std::optional<std::string> Refusal(const std::vector<Node>& nodes)
{
    try {
        const CompoundFile file(FileOf(nodes));
        Project project(file, *file.Find("_VBA_PROJECT_CUR"));
        if (project.HasCode("Sheet1"))
            project.AddCopy("Sheet1");
        return std::nullopt;
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        return error.Cause();
    }
}

/// The project with other bytes for a stream of its own or of its modules.
std::vector<Node> WithStream(std::u16string_view name, const std::string& bytes)
{
    auto nodes = ProjectNodes(kProject);
    for (auto* members : {&nodes, &nodes[0].members}) {
        for (Node& node : *members) {
            if (node.name == name)
                node.bytes = bytes;
        }
    }
    return nodes;
}

std::vector<Node> WithoutStream(std::u16string_view name)
{
    auto nodes = ProjectNodes(kProject);
    const auto isIt = [name](const Node& node) { return node.name == name; };
    std::erase_if(nodes[0].members, isIt);
    std::erase_if(nodes, isIt);
    return nodes;
}

TEST(ProjectTest, ReadsItsOwnInput)
{
    EXPECT_EQ(Refusal(ProjectNodes(kProject)), std::nullopt);
}

TEST(ProjectTest, RefusesWhatIsMissing)
{
    EXPECT_EQ(Refusal(WithoutStream(u"VBA")), "\"VBA\" is missing");
    EXPECT_EQ(Refusal(WithoutStream(u"dir")), "\"dir\" is missing");
    EXPECT_EQ(Refusal(WithoutStream(u"_VBA_PROJECT")), "\"_VBA_PROJECT\" is missing");
    EXPECT_EQ(Refusal(WithoutStream(u"PROJECT")), "\"PROJECT\" is missing");
    EXPECT_EQ(Refusal(WithoutStream(u"Module1")), "\"Module1\" is missing");
    auto nodes = ProjectNodes(kProject);
    nodes[1] = Storage(u"PROJECT", {});
    EXPECT_EQ(Refusal(nodes), "\"PROJECT\" is no stream");
}

TEST(ProjectTest, RefusesDamagedCode)
{
    const std::string cannot = "their code cannot be decompressed";
    EXPECT_EQ(Refusal(WithStream(u"dir", "\x01\xFF")), cannot);
    EXPECT_EQ(Refusal(WithStream(u"Module1", std::string(50, 'c') + "code")), cannot)
        << "in any module";
    EXPECT_EQ(Refusal(WithStream(u"Module1", std::string(49, 'c'))),
              "the code of a module is missing");
    EXPECT_EQ(Refusal(WithStream(u"Sheet1", BuiltModule{"Other", kCode}.Stream())),
              "the code of a sheet does not give the name of its module");
}

TEST(ProjectTest, RefusesLists)
{
    auto other = kProject;
    other[1].name = "Sheet9";
    EXPECT_EQ(Refusal(WithStream(u"PROJECT", TextOf(other))),
              "\"PROJECT\" does not list the module of the sheet");
    EXPECT_EQ(Refusal(WithStream(u"PROJECTwm", NamesOf(kProject) + "x")),
              "\"PROJECTwm\" cannot be read");
    auto twice = kProject;
    twice.push_back({"MODULE1", "", false});
    EXPECT_EQ(Refusal(WithStream(u"dir", Packed(DirOf(twice)))), "two modules are one");
}

TEST(ProjectTest, RefusesNamesThatMeanSomethingElse)
{
    for (const std::string name : {"She\"et", "A=B", "A/B", "A\r\nB", "123"}) {
        const CompoundFile file(FileOf(std::vector<BuiltModule>{{name, kCode}}));
        Project project(file, *file.Find("_VBA_PROJECT_CUR"));
        EXPECT_THROW(project.AddCopy(name), util::Error) << name;
    }
}

TEST(ProjectTest, RefusesCodeBeyondTheLimits)
{
    // 6 bytes become 4 KiB: a chunk is one byte and its repetition.
    std::string container = "\x01";
    for (int chunk = 0; chunk < 1025; ++chunk)
        container += std::string("\x03\xB0\x02\x61\xFC\x0F", 6);
    EXPECT_EQ(Refusal(WithStream(u"Module1", std::string(50, 'c') + container)),
              "their code is too large");
}

TEST(ProjectTest, StandsAnyBytes)
{
    const auto nodes = ProjectNodes(kProject);
    for (unsigned seed = 1; seed <= 500; ++seed) {
        const std::string where = xls::test::Noise(8, seed);
        auto damaged = nodes;
        auto& streams = damaged[0].members;
        auto& bytes =
            seed % 4 == 0 ? damaged[1 + seed / 4 % 2].bytes : streams[seed % streams.size()].bytes;
        bytes[xls::ReadU32(where, 0) % bytes.size()] = where[5];
        Refusal(damaged);
    }
}

} // namespace
} // namespace orrery::vba
