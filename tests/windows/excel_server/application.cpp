#include "excel_server/application.h"

#include "engines/builtin/application.h"
#include "excel_server/workbooks.h"
#include "util/paths.h"

#include <algorithm>

namespace orrery::excel_server {

using automation::Variant;

Session::Session(Server& shared) : server(shared), engine(builtin::CreateApplication({}))
{
    server.openForUser = [this](const std::string& path) {
        books.push_back(std::make_unique<Book>(*engine, util::ToPath(path)));
        server.log.Write("The user opens " + path);
    };
}

Application::Application(Server& server, const void* identity, Session& session)
    : DispatchObject(server, kKind, identity), session_(session)
{
}

const Members& Application::Table() const
{
    static const Members members = {
        {"_Default", DISPID_VALUE, {}, Handle<&Application::GetName>},
        {"Name", 110, {}, Handle<&Application::GetName>},
        {"DisplayAlerts",
         343,
         {},
         Handle<&Application::GetAlerts>,
         Handle<&Application::PutAlerts>},
        {"AutomationSecurity",
         2823,
         {},
         Handle<&Application::GetSecurity>,
         Handle<&Application::PutSecurity>},
        {"Visible",
         558,
         {},
         Handle<&Application::GetFlag<&Application::visible_>>,
         Handle<&Application::PutVisible>},
        {"Interactive",
         361,
         {},
         Handle<&Application::GetFlag<&Application::interactive_>>,
         Handle<&Application::PutFlag<&Application::interactive_>>},
        {"ScreenUpdating",
         382,
         {},
         Handle<&Application::GetFlag<&Application::screenUpdating_>>,
         Handle<&Application::PutFlag<&Application::screenUpdating_>>},
        {"Workbooks", 572, {{"Index"}}, Handle<&Application::GetWorkbooks>},
        {"Quit", 302, {}, nullptr, nullptr, Handle<&Application::Quit>},
    };
    return members;
}

template <bool Application::*flag> Variant Application::GetFlag(const Arguments& /*arguments*/)
{
    return Variant::Boolean(this->*flag);
}

template <bool Application::*flag> Variant Application::PutFlag(const Arguments& arguments)
{
    this->*flag = arguments.BooleanValue();
    return {};
}

Variant Application::GetAlerts(const Arguments& /*arguments*/)
{
    return Variant::Boolean(session_.alerts);
}

Variant Application::PutAlerts(const Arguments& arguments)
{
    session_.alerts = arguments.BooleanValue();
    return {};
}

Variant Application::GetSecurity(const Arguments& /*arguments*/)
{
    return Variant::Long(session_.security);
}

Variant Application::PutSecurity(const Arguments& arguments)
{
    const std::int32_t security = arguments.IntegerValue();
    if (security < 1 || security > 3) // low, as the user's settings say, forced off
        throw ExcelFailure(kExcelError);
    session_.security = security;
    return {};
}

Variant Application::PutVisible(const Arguments& arguments)
{
    visible_ = arguments.BooleanValue();
    server_.lifetime.SetVisible(visible_);
    return {};
}

Variant Application::GetName(const Arguments& /*arguments*/)
{
    return Variant::Text("Microsoft Excel");
}

Variant Application::GetWorkbooks(const Arguments& arguments)
{
    if (arguments.Has(0))
        return Workbooks::Item(session_, arguments);
    return ObjectFor<Workbooks>(server_, &session_.books, session_);
}

Variant Application::Quit(const Arguments& /*arguments*/)
{
    const bool changed = std::any_of(session_.books.begin(), session_.books.end(),
                                     [](const auto& book) { return book->changed; });
    if (session_.alerts && changed)
        server_.log.Write("Application asks whether to save");
    else
        server_.lifetime.Quit();
    return {};
}

} // namespace orrery::excel_server
