#pragma once

namespace orrery::excel_server {

/// Shows a window of the class that Excel's main windows have.
void ShowMainWindow();

} // namespace orrery::excel_server
