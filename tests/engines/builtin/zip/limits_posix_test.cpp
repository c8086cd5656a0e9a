#include "book/error.h"
#include "engines/builtin/zip/compression_queue.h"
#include "engines/builtin/zip/writer.h"
#include "util/scratch_folder.h"
#include "zip/built_zip.h"
#include "zip/thrown_kind.h"

#include <csignal>
#include <gtest/gtest.h>
#include <pthread.h>
#include <string>
#include <sys/resource.h>
#include <system_error>
#include <thread>

namespace orrery::zip {
namespace {

using book::ErrorKind;
using test::BuildZip;
using test::KindThrownBy;
using test::kMiB;
using testing_support::ScratchFolder;

TEST(Reader, AllocatesNoMemoryForDeclaredSizes)
{
    const ScratchFolder folder;
    const std::string bytes = BuildZip({{.name = "a",
                                         .content = std::string(2 * kMiB, 'x'),
                                         .stored = true,
                                         .declaredSize = 1000 * kMiB}});
    const Reader zip(folder.Write("a.zip", bytes));
    rusage before = {};
    getrusage(RUSAGE_SELF, &before);
    EXPECT_EQ(KindThrownBy([&] { zip.Read(0); }), ErrorKind::DamagedWorkbook);
    rusage after = {};
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 100 * 1024) << "in KiB";
}

TEST(CompressionQueue, NeedsNoThread)
{
    pthread_attr_t before;
    pthread_attr_t huge;
    pthread_getattr_default_np(&before);
    pthread_getattr_default_np(&huge);
    pthread_attr_setstacksize(&huge, std::size_t{1} << 62U); // more than the system gives
    ASSERT_EQ(pthread_setattr_default_np(&huge), 0);
    EXPECT_THROW(std::thread([] {}).join(), std::system_error);
    const std::string content(100'000, 'x');
    CompressionQueue queue;
    queue.Add(content);
    queue.Add(content);
    const Packed first = queue.Take();
    EXPECT_EQ(first.size, content.size());
    EXPECT_EQ(queue.Take().bytes, first.bytes);
    pthread_setattr_default_np(&before);
}

/// Limits the size of the files that this process can write, until the scope ends.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit = {bytes, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        signal_ = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, signal_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit old_ = {};
    void (*signal_)(int) = nullptr;
};

TEST(Writer, LeavesNoFileIfWritingFails)
{
    const ScratchFolder folder;
    {
        const FileSizeLimit limit(64 * 1024);
        Writer writer;
        writer.AddEntry("a", [](EntrySink& sink) {
            std::string noise;
            for (unsigned value = 1; noise.size() < kMiB; value = value * 1664525 + 1013904223)
                noise += static_cast<char>(value >> 24);
            sink.Add(noise);
        });
        EXPECT_EQ(KindThrownBy([&] { writer.Write(folder / "a.zip"); }),
                  util::ErrorKind::FileSizeLimit);
    }
    EXPECT_EQ(folder.Entries(), 0);
}

} // namespace
} // namespace orrery::zip
