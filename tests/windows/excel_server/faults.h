#pragma once

#include <windows.h>

#include <objidl.h>

#include <string>
#include <vector>

namespace orrery::excel_server {

/// What goes wrong in a call.
enum class FaultKind {
    None,
    Answer, ///< the call does nothing and returns a code
    Fail,   ///< the call does nothing and raises an exception with a description
    Die,    ///< the process ends at once
    Hang,   ///< the call never returns
    Open,   ///< before the call the user opens a workbook in this process
    Show,   ///< before the call a main window appears
};

struct Fault {
    FaultKind kind = FaultKind::None;
    HRESULT result = S_OK;   ///< of Answer
    std::string description; ///< of Fail; of Open the path
};

/// The faults that a test has requested, one in each line. MEMBER is the kind of object and the
/// member, "Worksheet.Cells", or "Class.Create" for the start; FIRST counts its calls from 1 in the
/// whole process.
///     answer MEMBER FIRST COUNT RESULT    COUNT calls return the code, "0x800AC472"
///     fail MEMBER FIRST DESCRIPTION...
///     die MEMBER FIRST
///     hang MEMBER FIRST
///     open MEMBER FIRST PATH...           the user opens a workbook in this process
///     show MEMBER FIRST                   a main window appears
///     reject MEMBER FIRST COUNT           after that call the message filter rejects COUNT calls
///     retry MEMBER FIRST COUNT            the same, asking the client to try again later
class Faults {
public:
    /// Throws std::invalid_argument for a line that is none of these.
    explicit Faults(const std::vector<std::string>& lines);

    /// Counts a call of the member and returns the fault for it.
    Fault AtCall(const std::string& member);
    /// The message filter's answer to an incoming call.
    SERVERCALL AtFilter();

private:
    struct Order {
        std::string verb;
        std::string member;
        int first = 0;
        int count = 1;
        Fault fault;
        int calls = 0; ///< so far
    };
    static Order Parse(const std::string& line);

    std::vector<Order> orders_;
    int toReject_ = 0;
    SERVERCALL rejection_ = SERVERCALL_REJECTED;
};

} // namespace orrery::excel_server
