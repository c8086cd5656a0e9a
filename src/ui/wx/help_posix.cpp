#include "ui/wx/help.h"

namespace orrery::ui::wx {

void OpenHelp(const std::string& folder, const std::string& page, Desktop& desktop)
{
    desktop.Open(folder + page + ".html");
}

} // namespace orrery::ui::wx
