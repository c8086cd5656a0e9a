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
    std::string email;    ///< for support
    std::string homePage; ///< with the product's name as its query
};

/// "1.2.5".
std::string VersionText(const VersionInfo& version);

/// The version of this build.
VersionInfo BuildVersion();

/// The About box (frmAbout).
class AboutForm : public Form {
public:
    /// Also does what `Form_Load` should.
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
