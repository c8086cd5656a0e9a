#pragma once

#include <libical/ical.h>

#include <memory>

namespace orrery::exchange {

/// Gives back what libical made.
struct IcalDeleter {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
    void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
    void operator()(icaltimezone* zone) const { icaltimezone_free(zone, 1); }
};
template <typename T> using IcalOwned = std::unique_ptr<T, IcalDeleter>;

/// Does something with each property of a kind.
template <typename Action>
void ForEachProperty(icalcomponent* component, icalproperty_kind kind, Action action)
{
    for (icalproperty* property = icalcomponent_get_first_property(component, kind);
         property != nullptr; property = icalcomponent_get_next_property(component, kind))
        action(property);
}

} // namespace orrery::exchange
