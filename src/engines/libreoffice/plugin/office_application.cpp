#include "engines/libreoffice/plugin/office_application.h"

#include <algorithm>

namespace orrery::libreoffice {

OfficeApplication::OfficeApplication(const StartOptions& options)
    : hasDisplay_(options.hasDisplay), hasProtectedStructure_(options.hasProtectedStructure),
      office_(options)
{
}

OfficeApplication::~OfficeApplication()
{
    if (belongsToUser_ || IsSeen()) {
        workbooks_.clear();
        office_.Release();
    }
    else {
        Quit();
    }
}

void OfficeApplication::SetVisible(bool on)
{
    if (!hasDisplay_) { // there is no display to show it on
        switches_.visible = on;
        return;
    }
    Switch(&Switches::visible, on);
}

void OfficeApplication::SetInteractive(bool on)
{
    Switch(&Switches::interactive, on);
}

void OfficeApplication::SetScreenUpdating(bool on)
{
    Switch(&Switches::screenUpdating, on);
}

// Every workbook is a new document, independent of its file, so each is read-only.
book::Workbook& OfficeApplication::OpenWorkbook(const std::filesystem::path& path,
                                                bool /*readOnly*/)
{
    workbooks_.push_back(
        std::make_unique<Workbook>(office_, path, switches_, hasProtectedStructure_));
    return *workbooks_.back();
}

void OfficeApplication::ReleaseWorkbook(book::Workbook& workbook)
{
    auto& open = static_cast<Workbook&>(workbook);
    if (open.IsSeen())
        belongsToUser_ = true;
    else
        open.Discard();
    std::erase_if(workbooks_, [&](const auto& each) { return each.get() == &workbook; });
}

void OfficeApplication::Quit()
{
    for (const auto& workbook : workbooks_)
        workbook->Discard(); // otherwise the user might be asked whether to save changes
    workbooks_.clear();
    belongsToUser_ = false;
    office_.Quit();
}

void OfficeApplication::Switch(bool Switches::*which, bool on)
{
    auto wanted = switches_;
    wanted.*which = on;
    for (const auto& workbook : workbooks_)
        workbook->Show(wanted);
    switches_ = wanted;
}

bool OfficeApplication::IsSeen() const
{
    return std::any_of(workbooks_.begin(), workbooks_.end(),
                       [](const auto& workbook) { return workbook->IsSeen(); });
}

} // namespace orrery::libreoffice
