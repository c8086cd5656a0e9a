// Writes how it was asked to show itself, a number such as 0 for "hidden", into the file "shown"
// beside it.
#include <windows.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*line*/, int /*show*/)
{
    std::array<wchar_t, MAX_PATH> program{};
    ::GetModuleFileNameW(nullptr, program.data(), MAX_PATH);
    const auto folder = std::filesystem::path(program.data()).parent_path();
    STARTUPINFOW start{};
    ::GetStartupInfoW(&start);
    const bool wasAsked = (start.dwFlags & STARTF_USESHOWWINDOW) != 0;
    std::ofstream(folder / "part") << (wasAsked ? std::to_string(start.wShowWindow) : "not asked");
    std::filesystem::rename(folder / "part", folder / "shown"); // it is there when it is complete
    return 0;
}
