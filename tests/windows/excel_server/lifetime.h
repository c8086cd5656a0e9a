#pragma once

#include "excel_server/log.h"

namespace orrery::excel_server {

/// When the process ends: Excel stays as long as somebody refers to it, and as long as its user
/// sees it; told to quit, it ends with the last reference.
class Lifetime {
public:
    explicit Lifetime(Log& log) : log_(log) {}

    void AddObject() { ++objects_; }
    void RemoveObject();
    void SetVisible(bool on) { visible_ = on; }
    void Quit() { quit_ = true; }
    bool HasQuit() const { return quit_; }
    /// Handles messages until the end: that of the rules above, the event that a test sets, or
    /// minutes without any message.
    void Run();

private:
    int objects_ = 0;
    bool visible_ = false;
    bool quit_ = false;
    Log& log_;
};

/// Ends every server whose user would have it open.
inline constexpr const wchar_t* kEndEvent = L"Local\\OrreryExcelServerEnd";

} // namespace orrery::excel_server
