#pragma once

#include "engines/builtin/zip/deflate.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace orrery::zip {

/// Compresses contents while the next ones are made: on a thread of its own, once there is enough
/// for two, and on the caller's while that would wait. The packed bytes do not depend on who made
/// them.
class CompressionQueue {
public:
    CompressionQueue() = default;
    /// What was not taken is not compressed any more.
    ~CompressionQueue();
    CompressionQueue(const CompressionQueue&) = delete;
    CompressionQueue& operator=(const CompressionQueue&) = delete;

    /// Throws std::bad_alloc.
    void Add(std::string content);
    /// Takes out the first content, compressed; there is one. Throws std::bad_alloc.
    Packed Take();

private:
    struct Job {
        std::string content;
        Packed packed;
        bool isDone = false;
    };

    void StartThread();
    void Run();
    void Do(Job& job, std::unique_lock<std::mutex>& lock, Deflater& deflater);
    bool HasWaiting() const { return started_ < jobs_.size(); }

    Deflater deflater_;        // of the caller's thread
    Deflater threadsDeflater_; // made here, so that the thread needs no memory
    std::mutex mutex_;         // of what follows
    std::condition_variable changed_;
    std::deque<Job> jobs_;
    std::size_t started_ = 0; // how many of them
    std::size_t waitingBytes_ = 0;
    bool isClosing_ = false;
    bool hasAsked_ = false; // for a thread
    std::thread thread_;
};

} // namespace orrery::zip
