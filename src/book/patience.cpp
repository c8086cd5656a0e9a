#include "book/patience.h"

namespace orrery::book {

bool Patience::GiveUp()
{
    const std::lock_guard lock(mutex_);
    if (applications_.empty())
        return false;
    isOver_ = true;
    for (Endable* const application : applications_)
        application->End();
    return true;
}

void Patience::Add(Endable& application)
{
    const std::lock_guard lock(mutex_);
    applications_.push_back(&application);
}

void Patience::Remove(Endable& application)
{
    const std::lock_guard lock(mutex_);
    std::erase(applications_, &application);
}

} // namespace orrery::book
