#pragma once

#include "exchange/ics/content_lines.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orrery::exchange {

/// A component of a calendar: its lines from BEGIN to END, those that Orrery needs.
struct Component {
    enum class Kind { Event, Zone, Todo, Journal };
    Kind kind = Kind::Event;
    std::string text;
    std::size_t line = 0; ///< of its BEGIN, counted from 1
    std::string problem;  ///< why it cannot be read, a sentence; empty if it can
};

/// Reads the components of an iCalendar file one by one. Of events only the lines come that
/// Orrery needs, so that attached pictures do no harm; components within them are left out.
class ComponentReader {
public:
    explicit ComponentReader(util::InputFile& file) : lines_(file) {}
    /// The next component; false at the end.
    bool Next(Component& component);
    /// Whether the file has a calendar so far, or anything that belongs to one.
    bool IsCalendar() const { return isCalendar_; }

private:
    bool FindBegin(Component& component);
    void TakeLines(Component& component);

    ContentLines lines_;
    ContentLine line_;
    bool isPending_ = false; ///< `line_` is not used yet
    bool isCalendar_ = false;
};

} // namespace orrery::exchange
