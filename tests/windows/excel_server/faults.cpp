#include "excel_server/faults.h"

#include <sstream>
#include <stdexcept>

namespace orrery::excel_server {

Faults::Faults(const std::vector<std::string>& lines)
{
    for (const auto& line : lines)
        orders_.push_back(Parse(line));
}

Faults::Order Faults::Parse(const std::string& line)
{
    std::istringstream words(line);
    Order order;
    words >> order.verb >> order.member >> order.first;
    if (order.verb == "answer") {
        std::string code;
        words >> order.count >> code;
        order.fault.kind = FaultKind::Answer;
        order.fault.result = static_cast<HRESULT>(std::stoul(code, nullptr, 16));
    }
    else if (order.verb == "fail" || order.verb == "open") {
        order.fault.kind = order.verb == "fail" ? FaultKind::Fail : FaultKind::Open;
        std::getline(words >> std::ws, order.fault.description);
    }
    else if (order.verb == "die") {
        order.fault.kind = FaultKind::Die;
    }
    else if (order.verb == "hang") {
        order.fault.kind = FaultKind::Hang;
    }
    else if (order.verb == "show") {
        order.fault.kind = FaultKind::Show;
    }
    else if (order.verb == "reject" || order.verb == "retry") {
        words >> order.count;
    }
    else {
        throw std::invalid_argument(line);
    }
    if (words.fail())
        throw std::invalid_argument(line);
    return order;
}

Fault Faults::AtCall(const std::string& member)
{
    Fault fault;
    for (auto& order : orders_) {
        if (order.member != member)
            continue;
        const int call = ++order.calls;
        if (order.fault.kind != FaultKind::None) {
            if (call >= order.first && call < order.first + order.count)
                fault = order.fault;
        }
        else if (call == order.first) {
            toReject_ = order.count;
            rejection_ = order.verb == "retry" ? SERVERCALL_RETRYLATER : SERVERCALL_REJECTED;
        }
    }
    return fault;
}

SERVERCALL Faults::AtFilter()
{
    if (toReject_ == 0)
        return SERVERCALL_ISHANDLED;
    --toReject_;
    return rejection_;
}

} // namespace orrery::excel_server
