#include "exchange/table/event_collector.h"

#include <utility>

namespace orrery::exchange {

void EventCollector::PassOver(std::size_t line, std::string reason)
{
    if (calendar_.passedOver.size() < kMostPassedOver)
        calendar_.passedOver.push_back({line, std::move(reason)});
    else if (untold_++ == 0)
        firstUntold_ = line;
}

void EventCollector::CountFurther(std::size_t line)
{
    if (further_++ == 0)
        firstFurther_ = line;
}

Calendar EventCollector::Take()
{
    if (untold_ > 0)
        calendar_.passedOver.push_back(
            {firstUntold_,
             "This line and " + std::to_string(untold_ - 1) + " further ones are no events."});
    if (further_ > 0)
        calendar_.passedOver.push_back(
            {firstFurther_, std::to_string(further_) +
                                " lines from here on are not read: 100,000 events are the most."});
    return std::move(calendar_);
}

} // namespace orrery::exchange
