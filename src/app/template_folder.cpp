#include "app/template_folder.h"

#include "util/error.h"
#include "util/file_read.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/text.h"

#include <utility>

namespace orrery::app {

using util::ErrorKind;

bool IsTemplateName(const std::string& file)
{
    const std::string upper = util::ToUpperAscii(file);
    return (upper.ends_with(".XLS") || upper.ends_with(".XLSX")) && !upper.starts_with("~$");
}

std::vector<std::string> ListTemplates(const std::string& folder)
{
    std::vector<std::string> templates;
    for (std::string& file : util::ListFiles(folder)) {
        if (IsTemplateName(file))
            templates.push_back(std::move(file));
    }
    return templates;
}

void CopyFileInto(const std::string& folder, const std::string& file)
{
    if (const auto error = util::FindReadError(util::ToPath(file)))
        throw Error(*error);
    const auto bytes = util::ReadFile(util::ToPath(file));
    if (!bytes)
        throw Error(ErrorKind::FileNotReadable, file);
    util::EnsureFolder(folder);
    const std::string target = util::WithTrailingSeparator(folder) + util::FileName(file);
    util::ReplaceFile(util::ToPath(target), *bytes);
}

std::string ShippedTemplateFolder(const std::string& installed)
{
    const std::string folder =
        installed.empty() ? installed : installed + "template" + util::kSeparator;
    return ListTemplates(folder).empty() ? std::string() : folder;
}

std::string ShippedHolidayFile(const std::string& installed, const std::string& file)
{
    return installed + "holiday" + util::kSeparator + file;
}

void CopyShippedTemplates(const std::string& installed, const std::string& folder)
{
    const std::string shipped = ShippedTemplateFolder(installed);
    if (shipped.empty())
        throw Error(ErrorKind::FileNotFound, installed + "template");
    for (const std::string& file : util::ListFiles(shipped)) {
        if (util::IsMissing(util::ToPath(folder + file)))
            CopyFileInto(folder, shipped + file);
    }
}

} // namespace orrery::app
