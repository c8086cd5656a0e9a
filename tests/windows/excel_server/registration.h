#pragma once

namespace orrery::excel_server {

// Write this program into the registry as the class of "Excel.Application", and take it out again.
// Throw std::system_error.
void Register();
void Unregister();

} // namespace orrery::excel_server
