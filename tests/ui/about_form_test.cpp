#include "ui/about_form.h"

#include "places/places.h"
#include "ui/fake_desktop.h"
#include "util/file_replace.h"

#include <gtest/gtest.h>

namespace orrery::ui {
namespace {

using Texts = std::vector<std::string>;

class AboutFormTest : public testing::Test {
protected:
    FakeDesktop desktop_;
    AboutForm form_{{1, 2, 5, "Copyright (c) R&D", "help@orrery.example",
                     "https://orrery.example/?product=Orrery&x=1"},
                    desktop_};
};

TEST_F(AboutFormTest, ShowsTheVersionInformation)
{
    EXPECT_EQ(form_.name, "frmAbout");
    EXPECT_EQ(form_.caption, "About Orrery");
    EXPECT_EQ(form_.helpPage, "about");
    EXPECT_EQ(form_.lblSysName.caption, "Orrery");
    EXPECT_EQ(form_.lblSysVer.caption, "Version 1.2.5");
    EXPECT_EQ(form_.lblCopyright.caption, "Copyright (c) R&D");
    EXPECT_EQ(form_.lblEmailTo.caption, "Email to:");
    EXPECT_EQ(form_.lblEmail.caption, "help@orrery.example");
    EXPECT_EQ(form_.lblWeb.caption, "Web:");
    EXPECT_EQ(form_.lblHomePage.caption, "https://orrery.example/?product=Orrery&x=1");
    EXPECT_EQ(form_.cmdOK.caption, "&Close");
    for (const Label* label : {&form_.lblSysName, &form_.lblSysVer, &form_.lblCopyright,
                               &form_.lblEmail, &form_.lblHomePage})
        EXPECT_TRUE(label->isLiteral) << label->name;
}

TEST_F(AboutFormTest, LinksAreOpened)
{
    form_.lblEmail_Click();
    form_.lblHomePage_Click();
    EXPECT_EQ(desktop_.TakeCalls(), (Texts{"Open: mailto:help@orrery.example",
                                           "Open: https://orrery.example/?product=Orrery&x=1"}));
    EXPECT_TRUE(form_.isOpen);
}

TEST_F(AboutFormTest, CloseCloses)
{
    form_.cmdOK_Click();
    EXPECT_FALSE(form_.isOpen);
}

TEST_F(AboutFormTest, EscapeCloses)
{
    form_.Form_KeyPress(27);
    EXPECT_FALSE(form_.isOpen);
}

TEST(BuildVersionTest, MatchesTheProjectAndItsLicence)
{
    const VersionInfo version = BuildVersion();
    const auto text = [](const std::string& name) {
        return util::ReadFile(places::SourceFolder() / name).value_or("");
    };
    const std::string number = std::to_string(version.major) + '.' + std::to_string(version.minor) +
                               '.' + std::to_string(version.revision);
    EXPECT_NE(text("CMakeLists.txt").find("project(Orrery VERSION " + number + ' '),
              std::string::npos);
    ASSERT_FALSE(version.legalNotice.empty());
    EXPECT_NE(text("LICENSE").find('\n' + version.legalNotice + '\n'), std::string::npos);
    EXPECT_NE(version.email.find('@'), std::string::npos);
    EXPECT_NE(version.homePage.find("=Orrery"), std::string::npos);
}

} // namespace
} // namespace orrery::ui
