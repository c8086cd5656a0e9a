#include <windows.h>

#include "places/places.h"
#include "ui/about_form.h"
#include "util/wide.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace orrery::ui {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// What the system reads from a program without running it.
class ResourcesTest : public testing::TestWithParam<std::filesystem::path> {
protected:
    ResourcesTest()
        : file_(GetParam().wstring()),
          program_(::LoadLibraryExW(file_.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE))
    {
        EXPECT_NE(program_, nullptr) << util::FromWide(file_);
    }
    ~ResourcesTest() override { ::FreeLibrary(program_); }

    std::string Resource(const wchar_t* name, const wchar_t* type) const
    {
        HRSRC const found = ::FindResourceW(program_, name, type);
        if (found == nullptr)
            return {};
        const auto* const bytes =
            static_cast<const char*>(::LockResource(::LoadResource(program_, found)));
        return {bytes, ::SizeofResource(program_, found)};
    }

    std::vector<char> Version() const
    {
        DWORD ignored = 0;
        std::vector<char> version(::GetFileVersionInfoSizeW(file_.c_str(), &ignored));
        ::GetFileVersionInfoW(file_.c_str(), 0, static_cast<DWORD>(version.size()), version.data());
        return version;
    }
    std::string VersionString(const std::wstring& name) const
    {
        const std::vector<char> version = Version();
        void* text = nullptr;
        UINT length = 0;
        if (::VerQueryValueW(version.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(),
                             &text, &length) == 0)
            return "(missing)";
        return util::FromWide(static_cast<const wchar_t*>(text));
    }

    const std::wstring file_;
    HMODULE const program_;
};

TEST_P(ResourcesTest, TheVersionIsWhatTheAboutBoxShows)
{
    const VersionInfo build = BuildVersion();
    EXPECT_EQ(VersionString(L"ProductName"), kProductName);
    EXPECT_EQ(VersionString(L"ProductVersion"), VersionText(build));
    EXPECT_EQ(VersionString(L"FileVersion"), VersionText(build));
    EXPECT_EQ(VersionString(L"LegalCopyright"), build.legalNotice);
    EXPECT_EQ(VersionString(L"OriginalFilename"), GetParam().filename().string());

    const std::vector<char> version = Version();
    void* fixed = nullptr;
    UINT length = 0;
    ASSERT_NE(::VerQueryValueW(version.data(), L"\\", &fixed, &length), 0);
    const auto& numbers = *static_cast<const VS_FIXEDFILEINFO*>(fixed);
    EXPECT_THAT(
        (std::vector<int>{HIWORD(numbers.dwFileVersionMS), LOWORD(numbers.dwFileVersionMS),
                          HIWORD(numbers.dwFileVersionLS), LOWORD(numbers.dwFileVersionLS)}),
        ElementsAre(build.major, build.minor, build.revision, 0));
}

TEST_P(ResourcesTest, TheIconHasAllSizes)
{
    const std::string group = Resource(L"ORRERY", reinterpret_cast<const wchar_t*>(RT_GROUP_ICON));
    constexpr std::size_t headSize = 6; // three words; the last is the count
    constexpr std::size_t entrySize = 14;
    std::uint16_t count = 0;
    ASSERT_GE(group.size(), headSize);
    std::memcpy(&count, group.data() + 4, sizeof count);
    ASSERT_EQ(group.size(), headSize + count * entrySize);
    std::vector<int> widths;
    for (std::size_t i = 0; i < count; ++i) {
        const auto width = static_cast<unsigned char>(group[headSize + i * entrySize]);
        widths.push_back(width == 0 ? 256 : width);
    }
    std::sort(widths.begin(), widths.end());
    EXPECT_THAT(widths, ElementsAre(16, 24, 32, 48, 64, 128, 256));
}

TEST_P(ResourcesTest, TheManifestEnablesCurrentFeatures)
{
    const std::string manifest =
        Resource(reinterpret_cast<const wchar_t*>(CREATEPROCESS_MANIFEST_RESOURCE_ID),
                 reinterpret_cast<const wchar_t*>(RT_MANIFEST));
    EXPECT_THAT(manifest,
                HasSubstr("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
    EXPECT_THAT(manifest, HasSubstr(">PerMonitorV2, PerMonitor<"));
    EXPECT_THAT(manifest, HasSubstr(">true</longPathAware>"));
    EXPECT_THAT(manifest, HasSubstr("level=\"asInvoker\""));
    EXPECT_THAT(manifest, testing::Not(HasSubstr("activeCodePage")));
}

INSTANTIATE_TEST_SUITE_P(Programs, ResourcesTest,
                         testing::Values(places::WindowProgram(), places::ConsoleProgram()),
                         [](const auto& program) {
                             return program.param.stem() == "orrery" ? "Window" : "CommandLine";
                         });

} // namespace
} // namespace orrery::ui
