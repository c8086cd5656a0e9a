#pragma once

namespace orrery::excel_server {

// Register this program as the class of "Excel.Application", and undo that.
// Throw std::system_error.
void Register();
void Unregister();

} // namespace orrery::excel_server
