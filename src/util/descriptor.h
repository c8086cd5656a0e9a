#pragma once

#include <unistd.h>
#include <utility>

namespace orrery::util {

/// Owns a POSIX file descriptor and closes it; -1 means none.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return number_; }
    bool IsOpen() const { return number_ >= 0; }
    /// Gives up ownership without closing.
    int Release() { return std::exchange(number_, -1); }
    void Close()
    {
        if (IsOpen())
            ::close(std::exchange(number_, -1));
    }

private:
    int number_;
};

} // namespace orrery::util
