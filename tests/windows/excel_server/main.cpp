#include "automation/registry.h"
#include "excel_server/class_factory.h"
#include "excel_server/message_filter.h"
#include "excel_server/registration.h"
#include "util/paths.h"

#include <cstdio>
#include <exception>
#include <string>

using namespace orrery;
using namespace orrery::excel_server;

namespace {

/// Offers the class to one client and serves it until the end.
int Serve()
{
    const auto log =
        automation::ReadText(HKEY_CURRENT_USER, automation::kServerKey, automation::kLogValue);
    const auto language =
        automation::ReadText(HKEY_CURRENT_USER, automation::kServerKey, automation::kLanguageValue);
    Server server(
        util::ToPath(log),
        automation::ReadLines(HKEY_CURRENT_USER, automation::kServerKey, automation::kFaultsValue),
        language == "de" ? Language::German : Language::English);
    Session session(server);
    ClassFactory factory(session);
    MessageFilter filter(server);
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 1;
    CoRegisterMessageFilter(&filter, nullptr);
    DWORD registration = 0;
    if (FAILED(CoRegisterClassObject(kClass, &factory, CLSCTX_LOCAL_SERVER, REGCLS_SINGLEUSE,
                                     &registration)))
        return 1;
    server.lifetime.Run();
    CoRevokeClassObject(registration);
    CoRegisterMessageFilter(nullptr, nullptr);
    CoUninitialize();
    return 0;
}

} // namespace

/// excel_server /regserver | /unregserver; the system starts it with /automation -Embedding.
int main(int argc, char** argv)
{
    try {
        const std::string command = argc > 1 ? argv[1] : "";
        if (command == "/regserver")
            Register();
        else if (command == "/unregserver")
            Unregister();
        else if (command == "/automation")
            return Serve();
        else
            std::fputs("excel_server /regserver | /unregserver\n", stderr);
        return 0;
    }
    catch (const std::exception& error) {
        std::fprintf(stderr, "excel_server: %s\n", error.what());
        return 1;
    }
}
