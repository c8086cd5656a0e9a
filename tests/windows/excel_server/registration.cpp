#include "excel_server/registration.h"

#include "automation/registry.h"
#include "automation/wide_text.h"
#include "excel_server/class_factory.h"

namespace orrery::excel_server {
namespace {

const std::string kClasses = "Software\\Classes\\";
const std::string kProgram = kClasses + "Excel.Application";
const std::string kClassKey = kClasses + "CLSID\\" + kClassText;

std::string OwnPath()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return automation::Narrow(path);
}

} // namespace

void Register()
{
    using automation::WriteText;
    WriteText(HKEY_LOCAL_MACHINE, kProgram, "", "Orrery's test server");
    WriteText(HKEY_LOCAL_MACHINE, kProgram + "\\CLSID", "", kClassText);
    WriteText(HKEY_LOCAL_MACHINE, kClassKey, "", "Orrery's test server");
    WriteText(HKEY_LOCAL_MACHINE, kClassKey + "\\ProgID", "", "Excel.Application");
    WriteText(HKEY_LOCAL_MACHINE, kClassKey + "\\LocalServer32", "",
              '"' + OwnPath() + "\" /automation");
}

void Unregister()
{
    automation::DeleteKey(HKEY_LOCAL_MACHINE, kProgram);
    automation::DeleteKey(HKEY_LOCAL_MACHINE, kClassKey);
}

} // namespace orrery::excel_server
