#include "screenshot.h"

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <wx/imagpng.h>
#include <wx/wfstream.h>

namespace orrery::ui::wx {
namespace {

void Run(const std::string& command, const std::filesystem::path& file)
{
    std::filesystem::create_directories(file.parent_path());
    if (std::system((command + " '" + file.string() + "'").c_str()) != 0)
        throw std::runtime_error("No picture: " + command);
}

} // namespace

void CaptureFrontWindow(const std::filesystem::path& file)
{
    // The frame belongs to the window manager, so take the active window with its frame.
    Run("import -silent -frame -window \"$(xdotool getactivewindow)\"", file);
}

void CaptureScreen(const std::filesystem::path& file)
{
    Run("import -silent -window root", file);
}

std::size_t CountColours(const std::filesystem::path& file, std::size_t most, const wxRect& part)
{
    wxFFileInputStream bytes(file.string());
    wxImage image;
    if (!wxPNGHandler().LoadFile(&image, bytes))
        return 0;
    return (part.IsEmpty() ? image : image.GetSubImage(part)).CountColours(most);
}

} // namespace orrery::ui::wx
