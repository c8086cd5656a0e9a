#include "engines/builtin/xls/compound/compound_writer.h"
#include "util/error.h"
#include "util/scratch_folder.h"
#include "xls/built_compound.h"

#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/mount.h>

namespace orrery::xls {
namespace {

using test::BuildCompound;
using test::Noise;
using test::Stream;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

TEST(CompoundWriterSaveTest, LeavesTheOldFileOnAFullDisk)
{
    const ScratchFolder folder;
    if (::mount("tmpfs", folder.Path().c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no small disk can be mounted here: " << std::strerror(errno);
    const auto target = folder.Write("book.xls", "old");
    const CompoundFile file(BuildCompound({Stream(u"Workbook", Noise(1'000'000, 1))}));
    try {
        CompoundWriter(file).SaveTo(target);
        ADD_FAILURE() << "written";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), util::ErrorKind::DiskFull);
        EXPECT_EQ(error.Subject(), target.string());
    }
    EXPECT_EQ(BytesOf(target), "old");
    EXPECT_EQ(folder.Entries(), 1);
    ::umount(folder.Path().c_str());
}

} // namespace
} // namespace orrery::xls
