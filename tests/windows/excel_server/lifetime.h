#pragma once

#include "excel_server/log.h"

namespace orrery::excel_server {

/// Decides when the process ends: Excel stays as long as it has references or its user sees it;
/// told to quit, it ends with the last reference.
class Lifetime {
public:
    explicit Lifetime(Log& log) : log_(log) {}

    void AddObject() { ++objects_; }
    void RemoveObject();
    void SetVisible(bool on) { visible_ = on; }
    void Quit() { quit_ = true; }
    bool HasQuit() const { return quit_; }
    /// Handles messages until the process is to end: by the rules above, by the event that a test
    /// sets, or after minutes without a message.
    void Run();

private:
    int objects_ = 0;
    bool visible_ = false;
    bool quit_ = false;
    Log& log_;
};

/// Ends every server, as if its user closed it.
inline constexpr const wchar_t* kEndEvent = L"Local\\OrreryExcelServerEnd";

} // namespace orrery::excel_server
