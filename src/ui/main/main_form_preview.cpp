#include "look/display/now.h"
#include "ui/main/main_form.h"
#include "util/paths.h"

#include <ctime>
#include <filesystem>
#include <system_error>

namespace orrery::ui {
namespace {

PreviewChoice ChoiceOf(const std::string& folder, const std::string& templateFile,
                       const std::string& year)
{
    PreviewChoice choice;
    choice.templatePath = util::ToPath(folder + templateFile);
    std::error_code ignored; // a file that is gone is told when it is opened
    choice.changed = std::filesystem::last_write_time(choice.templatePath, ignored);
    choice.yearText = year;
    return choice;
}

double Now()
{
    return look::LocalSerial(std::time(nullptr));
}

} // namespace

void MainForm::RefreshPreview()
{
    RefreshProposal();
    if (cboTemplateFile.entries.empty())
        pvwPages.ShowSentence("There is no template to show.");
    else if (currentTemplate_.empty())
        ShowExample();
    else {
        PreviewChoice choice = ChoiceOf(settings_.TemplatePath, currentTemplate_, txtYear.text);
        choice.isExample = lblProposal.visible;
        choice.sets = choice.isExample ? found_->proposal->sets : working.sets;
        pvwPages.Show(choice, settings_.names, Now());
    }
    ShowNotes();
}

void MainForm::ShowExample()
{
    app::Settings settings = settings_; // which reading a parameter file may add name lists to
    const std::string& first = cboTemplateFile.entries.front();
    PreviewChoice choice = ChoiceOf(settings.TemplatePath, first, txtYear.text);
    choice.sets = app::LoadWorkingSets(settings, first).sets;
    choice.isExample = true;
    pvwPages.Show(choice, settings.names, Now());
}

void MainForm::ShowNotes()
{
    const auto notes = pvwPages.Notes();
    std::string text;
    if (!notes.empty())
        text = notes.front();
    if (notes.size() > 1)
        text += " (and " + std::to_string(notes.size() - 1) + " more)";
    if (pvwPages.IsExample())
        text = lblProposal.visible ? "These pages come with the parameters that were found."
                                   : "Choose a template.";
    lblNotes.ShowText(text);
}

} // namespace orrery::ui
