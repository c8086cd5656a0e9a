#pragma once

#include "engines/excel/com.h"
#include "engines/excel/waiting.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// An application in this process that answers as a test tells it to and records every call.
namespace orrery::excel::fake {

/// Answers one call; fills in the result or the info.
using Answer = std::function<HRESULT(VARIANT*, EXCEPINFO*)>;

/// The state that the objects of a test share. It outlives them.
struct World {
    /// Such as
    ///     id Worksheet.Copy
    ///     Worksheet.Copy call (omitted, object)
    ///     Range.Value put (I2 7)
    ///     Worksheets. get+call (BSTR "Plan")       the default member
    std::vector<std::string> calls;
    std::deque<Answer> next;               ///< for the next calls, before all others
    std::map<std::string, Answer> answers; ///< by member, "Workbook.Worksheets"; else S_OK
    HRESULT idResult = S_OK;               ///< when an id is looked up
    int objects = 0;                       ///< number of objects with references
    std::map<std::string, DISPID, std::less<>> ids = {{"", DISPID_VALUE}};

    std::vector<std::string> CallsWith(std::string_view text) const;
};

/// An object of a kind such as "Worksheet".
Pointer<IDispatch> MakeObject(World& world, const std::string& kind);

/// Returns an object of that kind: always the same one.
Answer GiveObject(World& world, const std::string& kind);
Answer GiveNoObject();
Answer GiveBool(bool value);
Answer GiveNumber(std::int32_t value);
Answer GiveText(std::string utf8);
Answer Refuse(HRESULT result);
/// As an application that describes its failure.
Answer Explain(const wchar_t* description, SCODE code);

/// Time that passes only in pauses.
class PausedClock : public Clock {
public:
    std::chrono::milliseconds Now() const override { return now; }
    void Pause(std::chrono::milliseconds time) override
    {
        now += time;
        pauses.push_back(time);
    }
    std::chrono::milliseconds now{1000};
    std::vector<std::chrono::milliseconds> pauses;
};

} // namespace orrery::excel::fake
