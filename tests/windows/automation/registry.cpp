#include "automation/registry.h"

#include "automation/wide_text.h"

#include <string_view>
#include <system_error>

namespace orrery::automation {
namespace {

void Check(LSTATUS status, const std::string& key)
{
    if (status != ERROR_SUCCESS)
        throw std::system_error(static_cast<int>(status), std::system_category(), key);
}

void Write(HKEY root, const std::string& key, const std::string& value, DWORD type,
           const std::wstring& data)
{
    const auto bytes = static_cast<DWORD>((data.size() + 1) * sizeof(wchar_t));
    Check(RegSetKeyValueW(root, Wide(key).c_str(), value.empty() ? nullptr : Wide(value).c_str(),
                          type, data.c_str(), bytes),
          key);
}

/// The characters of a value, its closing zeros included; empty if there is none.
std::wstring Read(HKEY root, const std::string& key, const std::string& value, DWORD flags)
{
    const std::wstring path = Wide(key);
    const std::wstring name = Wide(value);
    DWORD bytes = 0;
    if (RegGetValueW(root, path.c_str(), name.c_str(), flags, nullptr, nullptr, &bytes) !=
        ERROR_SUCCESS)
        return {};
    std::wstring data(bytes / sizeof(wchar_t) + 1, L'\0');
    bytes = static_cast<DWORD>(data.size() * sizeof(wchar_t));
    if (RegGetValueW(root, path.c_str(), name.c_str(), flags, nullptr, data.data(), &bytes) !=
        ERROR_SUCCESS)
        return {};
    return data;
}

} // namespace

void WriteText(HKEY root, const std::string& key, const std::string& value, const std::string& text)
{
    Write(root, key, value, REG_SZ, Wide(text));
}

void WriteLines(HKEY root, const std::string& key, const std::string& value,
                const std::vector<std::string>& lines)
{
    std::wstring data;
    for (const auto& line : lines)
        data += Wide(line) + L'\0';
    Write(root, key, value, REG_MULTI_SZ, data);
}

std::string ReadText(HKEY root, const std::string& key, const std::string& value)
{
    return Narrow(Read(root, key, value, RRF_RT_REG_SZ).c_str());
}

std::vector<std::string> ReadLines(HKEY root, const std::string& key, const std::string& value)
{
    const std::wstring data = Read(root, key, value, RRF_RT_REG_MULTI_SZ);
    std::vector<std::string> lines;
    for (const wchar_t* line = data.c_str(); *line != L'\0'; line += std::wstring(line).size() + 1)
        lines.push_back(Narrow(line));
    return lines;
}

void DeleteKey(HKEY root, const std::string& key)
{
    const LSTATUS status = RegDeleteTreeW(root, Wide(key).c_str());
    if (status != ERROR_FILE_NOT_FOUND)
        Check(status, key);
}

} // namespace orrery::automation
