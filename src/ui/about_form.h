#pragma once

#include "ui/desktop.h"
#include "ui/form.h"

#include <cstdint>
#include <string>

namespace orrery::ui {

/// The version information of the build.
struct VersionInfo {
    std::int16_t major = 0;
    std::int16_t minor = 0;
    std::int16_t revision = 0;
    std::string legalNotice;
    std::string email;    ///< the maker's address for support
    std::string homePage; ///< with a query that names the product
};

/// "1.2.5".
std::string VersionText(const VersionInfo& version);

/// That of this build.
VersionInfo BuildVersion();

/// The box about the program (frmAbout).
class AboutForm : public Form {
public:
    /// Does what `Form_Load` does.
    AboutForm(VersionInfo version, Desktop& desktop);

    void lblEmail_Click();
    void lblHomePage_Click();
    void cmdOK_Click() { Close(); }

    Label imgLogo{"imgLogo"};
    Label lblSysName{"lblSysName"};
    Label lblSysVer{"lblSysVer"};
    Label lblCopyright{"lblCopyright"};
    Label lblEmailTo{"lblEmailTo", "Email to:"};
    Label lblEmail{"lblEmail"};
    Label lblWeb{"lblWeb", "Web:"};
    Label lblHomePage{"lblHomePage"};
    Button cmdOK{"cmdOK", "&Close"};

private:
    const VersionInfo version_;
    Desktop& desktop_;
};

} // namespace orrery::ui
