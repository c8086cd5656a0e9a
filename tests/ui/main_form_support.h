#pragma once

#include "ui/main/main_form.h"

#include "book/fake_engines.h"
#include "ui/fake_desktop.h"
#include "util/file_replace.h"
#include "util/scratch_folder_test.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace orrery::ui {

/// The main window of an installation in the test's folder with two templates: Desk.xls with a
/// parameter file, Plain.xlsx without.
class MainFormTest : public testing_support::ScratchFolderTest {
protected:
    using Texts = std::vector<std::string>;

    MainFormTest()
    {
        Write("orrery.ini", "[Environment]\nShowTips=Y\n"
                            "[Monthly Calendar]\nSheetName=Sheet2\nOutMonth=Y\n"
                            "[Yearly Calendar]\nSheetName=Sheet1\nOutput=Y\n");
        Write("template/Desk.ini", "[Monthly Calendar]\nFirstCellOfDay=C6\n");
        WriteTemplate("template/Desk.xls");
        WriteTemplate("template/Plain.xlsx");
        system_.executable = At("");
    }

    std::string WriteTemplate(const std::string& name) const
    {
        std::filesystem::create_directories((folder_ / name).parent_path());
        fake::WriteWorkbookFile(folder_ / name, {{"Sheet1", {}}, {"Sheet2", {}}});
        return At(name);
    }
    MainForm& Open(app::YearAndMonth today = {2027, 6})
    {
        form_ = std::make_unique<MainForm>(system_, engines_, desktop_);
        form_->Form_Load(today);
        form_->RefreshTemplates();
        return *form_;
    }
    MainForm& OpenWith(const std::string& templateFile)
    {
        Open();
        Choose(templateFile);
        return *form_;
    }
    void Choose(const std::string& templateFile)
    {
        const auto& entries = form_->cboTemplateFile.entries;
        const auto found = std::find(entries.begin(), entries.end(), templateFile);
        ASSERT_NE(found, entries.end()) << templateFile;
        form_->cboTemplateFile.Select(static_cast<int>(found - entries.begin()));
        form_->cboTemplateFile_Click();
    }
    std::string Selected() const
    {
        const ComboBox& list = form_->cboTemplateFile;
        return list.HasSelection() ? list.entries.at(static_cast<std::size_t>(list.selected))
                                   : "none";
    }
    /// Changes the monthly sheet name as the parameter dialog would.
    void EditMonthlySheet(const std::string& name)
    {
        form_->working.sets.Monthly.SheetName = name;
        form_->working.monthlyChanged = true;
        form_->RefreshTemplates();
    }
    std::string ContentOf(const std::string& name) const
    {
        return util::ReadFile(folder_ / name).value_or("no file");
    }

    app::SystemFolders system_;
    fake::Engines engines_;
    FakeDesktop desktop_;
    std::unique_ptr<MainForm> form_;
};

} // namespace orrery::ui
