#include <windows.h>
#undef ReplaceFile // a macro of <windows.h>; here it is our own function

#include "replace_failure.h"
#include "scratch_folder.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/file_replace.h"
#include "util/paths.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::util {
namespace {

namespace fs = std::filesystem;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

/// Holds a file open as another program would; `share` says what others may still do with it.
class OpenFile {
public:
    OpenFile(const fs::path& path, DWORD share)
        : handle_(CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    ~OpenFile() { CloseHandle(handle_); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

private:
    HANDLE handle_;
};

TEST(ReplaceFile, KeepsAReadOnlyFile)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(KindThrownBy(file), ErrorKind::FileNotWritable);
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(scratch.Entries(), 1);
}

TEST(ReplaceFile, KeepsAFileThatAnotherProgramHoldsOpen)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    {
        const OpenFile open(file, FILE_SHARE_READ);
        EXPECT_EQ(KindThrownBy(file), ErrorKind::FileNotWritable);
    }
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(scratch.Entries(), 1) << "nothing left behind";
}

TEST(ReplaceFile, AcceptsNamesOutsideTheCodePage)
{
    const ScratchFolder scratch;
    const fs::path file = scratch / "\xE4\xB8\x80\xE6\x9C\x88 \xD0\xB6.ini"; // Japanese, Cyrillic
    ReplaceFile(file, "first");
    ReplaceFile(file, "second");
    EXPECT_EQ(ReadFile(file), "second");
    EXPECT_TRUE(FileExists(FromPath(file)));
    EXPECT_EQ(ListFiles(FromPath(scratch.Path())),
              std::vector<std::string>{"\xE4\xB8\x80\xE6\x9C\x88 \xD0\xB6.ini"});
}

TEST(ReplaceFile, AcceptsLongPaths)
{
    const ScratchFolder scratch;
    std::string folder = FromPath(scratch.Path());
    while (folder.size() < 300)
        folder += "\\a folder of a name that is long";
    EnsureFolder(folder);
    const std::string file = folder + "\\orrery.ini";
    EXPECT_FALSE(FileExists(file));
    ReplaceFile(ToPath(file), "first");
    ReplaceFile(ToPath(file), "second");
    EXPECT_EQ(ReadFile(ToPath(file)), "second");
    EXPECT_TRUE(FileExists(file));
    EXPECT_EQ(FirstFileOfFolder(folder), file);
    EXPECT_TRUE(fs::remove(ToPath(file))); // the scratch folder is removed by shorter paths
    while (folder.size() > FromPath(scratch.Path()).size()) {
        EXPECT_TRUE(fs::remove(ToPath(folder))) << folder;
        folder = ParentFolder(folder);
    }
}

} // namespace
} // namespace orrery::util
