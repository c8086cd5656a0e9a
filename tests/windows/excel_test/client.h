#pragma once

#include "automation/variant.h"

#include <string>
#include <utility>
#include <vector>

namespace orrery::excel_test {

/// Owns a COM apartment of this thread for one test.
class Apartment {
public:
    Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

/// The outcome of a call made by hand.
struct Answer {
    HRESULT result = S_OK;
    automation::Variant value;
    HRESULT code = S_OK; ///< of the exception
    std::string source;
    std::string description;
    UINT argument = 0;
};

using Values = std::vector<automation::Variant>;

/// Starts the registered class; an empty variant if that fails.
automation::Variant StartServer(HRESULT* result = nullptr);
/// DISPID_UNKNOWN for a name that the object does not know. Further names are those of parameters.
DISPID IdOf(const automation::Variant& object, const std::string& member);
std::vector<DISPID> IdsOf(const automation::Variant& object, const std::vector<std::string>& names);

/// Makes a call as late binding does; the arguments are in the order of the parameters, and named
/// ones with their ids may follow.
Answer Invoke(const automation::Variant& object, DISPID id, WORD flags, const Values& arguments,
              const std::vector<std::pair<DISPID, automation::Variant>>& named = {});
Answer Get(const automation::Variant& object, const std::string& member,
           const Values& arguments = {});
Answer Call(const automation::Variant& object, const std::string& member,
            const Values& arguments = {});
Answer Put(const automation::Variant& object, const std::string& member,
           const automation::Variant& value);

} // namespace orrery::excel_test
