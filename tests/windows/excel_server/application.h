#pragma once

#include "excel_server/book.h"
#include "excel_server/dispatch_object.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace orrery::excel_server {

/// The state of the application while its process lives.
struct Session {
    explicit Session(Server& shared);
    Server& server;
    std::unique_ptr<book::Application> engine;
    std::vector<std::unique_ptr<Book>> books; ///< the open ones
    bool alerts = true;
    std::int32_t security = 1; ///< of macros, as an application begins that is driven
};

/// `Application`: switches, workbooks and quitting.
class Application : public DispatchObject {
public:
    static constexpr const char* kKind = "Application";
    Application(Server& server, const void* identity, Session& session);

private:
    const Members& Table() const override;
    template <bool Application::*flag> automation::Variant GetFlag(const Arguments& arguments);
    template <bool Application::*flag> automation::Variant PutFlag(const Arguments& arguments);
    automation::Variant GetAlerts(const Arguments& arguments);
    automation::Variant PutAlerts(const Arguments& arguments);
    automation::Variant PutVisible(const Arguments& arguments);
    automation::Variant GetSecurity(const Arguments& arguments);
    automation::Variant PutSecurity(const Arguments& arguments);
    automation::Variant GetName(const Arguments& arguments);
    automation::Variant GetWorkbooks(const Arguments& arguments);
    automation::Variant Quit(const Arguments& arguments);

    Session& session_;
    bool visible_ = false;
    bool interactive_ = true;
    bool screenUpdating_ = true;
};

} // namespace orrery::excel_server
