#pragma once

#include "automation/variant.h"
#include "excel_server/faults.h"
#include "excel_server/lifetime.h"
#include "excel_server/log.h"
#include "excel_server/typed_value.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orrery::excel_server {

class DispatchObject;

/// The state that all objects of the process share. Used by one thread only.
class Server {
public:
    Server(const std::filesystem::path& logFile, const std::vector<std::string>& faultLines,
           Language itsLanguage)
        : log(logFile), faults(faultLines), lifetime(log), language(itsLanguage)
    {
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Numbers an object among those of its kind, from 1. An object with the same identity as an
    /// earlier one has that one's number; nullptr is always new.
    int Add(DispatchObject& object, const std::string& kind, const void* identity);
    void Remove(DispatchObject& object);
    /// The living object for a pointer or an identity, or nullptr.
    DispatchObject* Find(IUnknown* object) const;
    DispatchObject* Find(const std::string& kind, const void* identity) const;
    /// "Worksheet#1"
    std::string NameOf(IUnknown* object) const;

    Log log;
    Faults faults;
    Lifetime lifetime;
    const Language language;
    /// Opens a workbook as if the user had double-clicked it.
    std::function<void(const std::string& path)> openForUser;

private:
    using Key = std::pair<std::string, const void*>;
    std::map<std::string, int> counts_;
    std::map<Key, int> numbers_;
    std::map<DispatchObject*, Key> living_;
};

} // namespace orrery::excel_server
