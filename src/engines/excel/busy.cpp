#include "engines/excel/busy.h"

#include <algorithm>

namespace orrery::excel {
namespace {

using std::chrono::milliseconds;

// Excel's answer while its user edits a cell or a dialog is open.
constexpr HRESULT kIgnored = static_cast<HRESULT>(0x800AC472);

} // namespace

bool IsBusy(HRESULT result)
{
    switch (result) {
    case RPC_E_CALL_REJECTED:
    case RPC_E_SERVERCALL_RETRYLATER:
    case RPC_E_SERVERCALL_REJECTED:
    case RPC_E_RETRY:
    case kIgnored:
        return true;
    default:
        return false;
    }
}

std::optional<milliseconds> PauseAfter(milliseconds waited)
{
    if (waited >= kBusyLimit)
        return std::nullopt;
    const milliseconds pause = std::clamp(waited / 4, milliseconds(100), milliseconds(1000));
    return std::max(std::min(pause, kBusyLimit - waited), milliseconds(1));
}

} // namespace orrery::excel
