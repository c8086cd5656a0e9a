#include "engines/builtin/vba/copied_macros.h"

#include "book/error.h"

#include <algorithm>
#include <map>

namespace orrery::vba {

bool MayNeedModules(const std::vector<SheetModule>& sheets)
{
    return std::any_of(sheets.begin(), sheets.end(), [](const SheetModule& sheet) {
        return sheet.isCopy && !sheet.codeName.empty();
    });
}

CopiedMacros::CopiedMacros(const xls::CompoundFile& file, xls::EntryId storage,
                           const std::vector<SheetModule>& sheets)
    : codeNames_(sheets.size())
{
    try {
        AddModules(project_.emplace(file, storage), sheets);
    }
    catch (const util::Error& error) {
        loss_ = MacrosNotCopied(error);
        codeNames_.assign(sheets.size(), {});
    }
    const auto isNamed = [](const std::string& name) { return !name.empty(); };
    if (std::none_of(codeNames_.begin(), codeNames_.end(), isNamed))
        project_.reset();
}

void CopiedMacros::AddModules(Project& project, const std::vector<SheetModule>& sheets)
{
    std::map<std::string, bool> haveCode; // by code name
    for (const SheetModule& sheet : sheets) {
        project.Reserve(sheet.codeName);
        if (sheet.isCopy && !haveCode.contains(sheet.codeName))
            haveCode.emplace(sheet.codeName, project.HasCode(sheet.codeName));
    }
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        if (sheets[i].isCopy && haveCode.at(sheets[i].codeName))
            codeNames_[i] = project.AddCopy(sheets[i].codeName);
    }
}

void CopiedMacros::WriteTo(xls::CompoundWriter& writer) const
{
    if (project_)
        project_->WriteTo(writer);
}

util::Error MacrosNotCopied(const util::Error& why)
{
    const bool isSaid = !why.Cause().empty();
    return util::Error(book::ErrorKind::MacrosNotCopied, {},
                       isSaid ? why.Cause() : "they cannot be read");
}

} // namespace orrery::vba
