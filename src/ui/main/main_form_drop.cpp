#include "app/template_folder.h"
#include "model/parameter_file.h"
#include "ui/main/main_form.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/file_read.h"
#include "util/paths.h"
#include "util/text.h"

#include <exception>

namespace orrery::ui {
namespace {

bool IsInFolder(const std::string& folder, const std::string& file)
{
    return util::IsSameFolder(util::ParentFolder(file), folder);
}

std::string Quoted(const std::string& file)
{
    return '"' + util::FileName(file) + '"';
}

std::string NoTemplatesText(const std::vector<std::string>& files)
{
    return util::Join(files, ", ") + (files.size() == 1 ? " is no template" : " are no templates") +
           ". Drop Excel workbooks (.xls or .xlsx).";
}

} // namespace

void MainForm::cmdCopyTemplates_Click()
{
    try {
        app::CopyShippedTemplates(system_.installed, settings_.TemplatePath);
    }
    catch (const std::exception& error) {
        desktop_.Report(util::ErrorText(error));
    }
    FillTemplateList();        // some may have been copied
    SetFocus(cboTemplateFile); // the button is gone
}

void MainForm::DropFiles(const std::vector<std::string>& files)
{
    std::vector<std::string> noTemplates;
    std::string last;
    for (const std::string& given : files) {
        const std::string file = util::AbsolutePath(given); // a command line may have a mere name
        if (!app::IsTemplateName(util::FileName(file)))
            noTemplates.push_back(Quoted(file));
        else if (AddTemplateFile(file))
            last = util::FileName(file);
    }
    FillTemplateList();
    if (!last.empty()) {
        SelectEntry(last);
        cboTemplateFile_Click();
    }
    if (!noTemplates.empty())
        desktop_.Report(NoTemplatesText(noTemplates));
}

/// True if the template is now in the folder.
bool MainForm::AddTemplateFile(const std::string& file)
{
    try {
        if (IsInFolder(settings_.TemplatePath, file)) {
            const auto error = util::FindReadError(util::ToPath(file));
            if (error && error->Kind() != util::ErrorKind::FileNotFound)
                throw Error(*error);
            return !error;
        }
        if (!CopyIfConfirmed(file))
            return false;
        AddParameterFile(model::ParameterFilePath(util::ParentFolder(file), util::FileName(file)));
        return true;
    }
    catch (const std::exception& error) {
        desktop_.Report(util::ErrorText(error));
        return false;
    }
}

void MainForm::AddParameterFile(const std::string& file)
{
    if (util::IsMissing(util::ToPath(file)) || !CopyIfConfirmed(file))
        return;
    if (util::BaseName(file) != util::BaseName(currentTemplate_))
        return;
    // The chosen template keeps its current sets, which differ from the new file.
    working.parameterFileExists = true;
    working.monthlyChanged = working.yearlyChanged = true;
    app::FindLineProblems(settings_, currentTemplate_, working);
}

bool MainForm::CopyIfConfirmed(const std::string& file)
{
    const std::string target = settings_.TemplatePath + util::FileName(file);
    if (!util::IsMissing(util::ToPath(target)) &&
        !desktop_.Ask(Quoted(file) + " is already in the template folder.\r\n"
                                     "Do you want to replace it?"))
        return false;
    app::CopyFileInto(settings_.TemplatePath, file);
    return true;
}

} // namespace orrery::ui
