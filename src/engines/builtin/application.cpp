#include "engines/builtin/application.h"

#include "engines/builtin/open_workbook.h"

#include <algorithm>
#include <vector>

namespace orrery::builtin {
namespace {

/// A workbook that remembers where it was saved for the application that becomes visible.
class OpenWorkbook : public generate::Workbook {
public:
    OpenWorkbook(const std::filesystem::path& path, std::filesystem::path& lastSaved)
        : path_(path), workbook_(builtin::OpenWorkbookFile(path)), lastSaved_(lastSaved)
    {
    }

    generate::Worksheet* FindWorksheet(std::string_view name) override
    {
        return workbook_->FindWorksheet(name);
    }

    void SaveAs(const std::filesystem::path& target, generate::AccessMode accessMode) override
    {
        // What is read late may turn out to be damaged now.
        NamingWorkbook(path_, [&] { workbook_->SaveAs(target, accessMode); });
        lastSaved_ = target;
    }

private:
    std::filesystem::path path_;
    std::unique_ptr<generate::Workbook> workbook_;
    std::filesystem::path& lastSaved_;
};

/// The switches that only matter to a program with a window are kept, so that a run finds them as
/// it left them.
class BuiltinApplication : public generate::Application {
public:
    explicit BuiltinApplication(generate::Opener opener) : opener_(std::move(opener)) {}

    void SetDisplayAlerts(bool /*on*/) override {}
    void SetInteractive(bool /*on*/) override {}
    void SetScreenUpdating(bool /*on*/) override {}

    void SetVisible(bool on) override
    {
        visible_ = on;
        if (on && opener_ && !lastSaved_.empty())
            opener_(lastSaved_);
    }

    bool Visible() const override { return visible_; }

    generate::Workbook& OpenWorkbook(const std::filesystem::path& path, bool /*readOnly*/) override
    {
        // A file is only ever replaced by SaveAs, so that every workbook is opened read-only.
        workbooks_.push_back(std::make_unique<builtin::OpenWorkbook>(path, lastSaved_));
        return *workbooks_.back();
    }

    void ReleaseWorkbook(generate::Workbook& workbook) override
    {
        std::erase_if(workbooks_, [&](const auto& open) { return open.get() == &workbook; });
    }

    void Quit() override { workbooks_.clear(); }

private:
    generate::Opener opener_;
    bool visible_ = false;
    std::filesystem::path lastSaved_;
    std::vector<std::unique_ptr<generate::Workbook>> workbooks_;
};

} // namespace

std::unique_ptr<generate::Application> CreateApplication(generate::Opener opener)
{
    return std::make_unique<BuiltinApplication>(std::move(opener));
}

} // namespace orrery::builtin
