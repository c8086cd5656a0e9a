#include "engines/builtin/zip/compression_queue.h"

#include <cassert>
#include <system_error>
#include <utility>

namespace orrery::zip {
namespace {

/// To start a thread takes as long as to compress some kilobytes.
constexpr std::size_t kWorthAThread = std::size_t{1} << 15U;

} // namespace

CompressionQueue::~CompressionQueue()
{
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        isClosing_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void CompressionQueue::Add(std::string content)
{
    Packed room;
    room.bytes.resize(Deflater::MostPacked(content.size()));
    {
        const std::lock_guard lock(mutex_);
        const std::size_t size = content.size();
        jobs_.push_back({std::move(content), std::move(room)});
        waitingBytes_ += size;
    }
    if (thread_.joinable())
        changed_.notify_all();
    else if (waitingBytes_ >= kWorthAThread && !std::exchange(hasAsked_, true))
        StartThread();
}

void CompressionQueue::StartThread()
{
    if (std::thread::hardware_concurrency() == 1)
        return;
    try {
        thread_ = std::thread([this] { Run(); });
    }
    catch (const std::system_error&) { // the system has no more: the caller's thread does it all
    }
}

void CompressionQueue::Run()
{
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return isClosing_ || HasWaiting(); });
        if (isClosing_)
            return;
        Do(jobs_[started_], lock, threadsDeflater_);
        changed_.notify_all();
    }
}

void CompressionQueue::Do(Job& job, std::unique_lock<std::mutex>& lock, Deflater& deflater)
{
    ++started_;
    waitingBytes_ -= job.content.size();
    lock.unlock();
    deflater.Compress(job.content, job.packed);
    lock.lock();
    job.isDone = true;
}

Packed CompressionQueue::Take()
{
    std::unique_lock lock(mutex_);
    assert(!jobs_.empty());
    while (!jobs_.front().isDone) {
        if (HasWaiting())
            Do(jobs_[started_], lock, deflater_);
        else
            changed_.wait(lock);
    }
    Packed packed = std::move(jobs_.front().packed);
    jobs_.pop_front();
    --started_;
    return packed;
}

} // namespace orrery::zip
