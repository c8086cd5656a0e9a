#include "excel_server/server.h"

#include "excel_server/dispatch_object.h"

namespace orrery::excel_server {

int Server::Add(DispatchObject& object, const std::string& kind, const void* identity)
{
    const Key key{kind, identity};
    living_[&object] = key;
    lifetime.AddObject();
    const auto known = identity != nullptr ? numbers_.find(key) : numbers_.end();
    if (known != numbers_.end())
        return known->second;
    const int number = ++counts_[kind];
    if (identity != nullptr)
        numbers_[key] = number;
    return number;
}

void Server::Remove(DispatchObject& object)
{
    living_.erase(&object);
    lifetime.RemoveObject();
}

DispatchObject* Server::Find(IUnknown* object) const
{
    for (const auto& [living, key] : living_) {
        if (static_cast<IUnknown*>(living) == object)
            return living;
    }
    return nullptr;
}

DispatchObject* Server::Find(const std::string& kind, const void* identity) const
{
    for (const auto& [living, key] : living_) {
        if (identity != nullptr && key == Key{kind, identity})
            return living;
    }
    return nullptr;
}

std::string Server::NameOf(IUnknown* object) const
{
    if (object == nullptr)
        return "nothing";
    const DispatchObject* const own = Find(object);
    return own != nullptr ? own->Name() : "foreign object";
}

} // namespace orrery::excel_server
