#include "ui/about_form.h"

#include <utility>

namespace orrery::ui {

VersionInfo BuildVersion()
{
    return {ORRERY_VERSION_MAJOR, ORRERY_VERSION_MINOR, ORRERY_VERSION_REVISION,
            ORRERY_LEGAL_NOTICE,  ORRERY_EMAIL,         ORRERY_HOMEPAGE};
}

std::string VersionText(const VersionInfo& version)
{
    return std::to_string(version.major) + '.' + std::to_string(version.minor) + '.' +
           std::to_string(version.revision);
}

AboutForm::AboutForm(VersionInfo version, Desktop& desktop)
    : Form("frmAbout", std::string("About ") + kProductName, "about"), version_(std::move(version)),
      desktop_(desktop)
{
    lblSysName.ShowText(kProductName);
    lblSysVer.ShowText("Version " + VersionText(version_));
    lblCopyright.ShowText(version_.legalNotice);
    lblEmail.ShowText(version_.email);
    lblHomePage.ShowText(version_.homePage);
}

void AboutForm::lblEmail_Click()
{
    desktop_.Open("mailto:" + version_.email);
}

void AboutForm::lblHomePage_Click()
{
    desktop_.Open(version_.homePage);
}

} // namespace orrery::ui
