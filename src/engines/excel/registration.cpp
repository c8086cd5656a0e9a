#include "engines/excel/registration.h"

#include <algorithm>
#include <array>
#include <cwctype>

namespace orrery::excel {
namespace {

constexpr const wchar_t* kProgId = L"Excel.Application";
constexpr const wchar_t* kUsualImage = L"EXCEL.EXE";

/// The default value of a key below the classes; empty if there is none.
std::wstring ReadClassesKey(const std::wstring& key)
{
    std::array<wchar_t, 1024> value = {};
    DWORD bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    const LSTATUS status = RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ,
                                        nullptr, value.data(), &bytes);
    return status == ERROR_SUCCESS ? value.data() : std::wstring();
}

std::wstring TextOfClass(const CLSID& classId)
{
    std::array<wchar_t, 64> text = {}; // 38 characters
    StringFromGUID2(classId, text.data(), static_cast<int>(text.size()));
    return text.data();
}

/// The path of the program in a command line.
std::wstring ProgramOf(const std::wstring& command)
{
    if (command.starts_with(L'"'))
        return command.substr(1, command.find(L'"', 1) - 1);
    std::wstring lower = command;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](wchar_t c) { return static_cast<wchar_t>(std::towlower(c)); });
    const std::wstring extension = L".exe";
    const auto at = lower.find(extension + L' '); // a folder's name may contain blanks
    return at == std::wstring::npos ? command : command.substr(0, at + extension.size());
}

} // namespace

std::optional<CLSID> FindClass(const Apartment& /*apartment*/)
{
    CLSID classId = {};
    if (!HasFound(CLSIDFromProgID(kProgId, &classId)))
        return std::nullopt;
    return classId;
}

bool HasFound(HRESULT result)
{
    if (result == CO_E_CLASSSTRING || result == REGDB_E_CLASSNOTREG)
        return false;
    if (Failed(result))
        FailWith("Excel could not be looked up", result, kOtherEngineAdvice);
    return true;
}

std::wstring ServerImage(const CLSID& classId)
{
    const std::wstring key = L"CLSID\\" + TextOfClass(classId) + L"\\LocalServer32";
    std::wstring command = ReadClassesKey(key);
    if (command.empty())
        command = ReadClassesKey(L"WOW6432Node\\" + key); // a 32-bit application
    return command.empty() ? kUsualImage : ImageOfCommand(command);
}

std::wstring ImageOfCommand(const std::wstring& command)
{
    const std::wstring program = ProgramOf(command);
    return program.substr(program.find_last_of(L"\\/") + 1);
}

} // namespace orrery::excel
