#include "engines/builtin/application.h"

#include "engines/builtin/common/error_path.h"

#include "engines/builtin/open_workbook.h"

#include <algorithm>
#include <vector>

namespace orrery::builtin {
namespace {

/// A workbook that tells the application where it was last saved.
class OpenWorkbook : public book::Workbook {
public:
    OpenWorkbook(const std::filesystem::path& path, std::filesystem::path& lastSaved)
        : path_(path), workbook_(builtin::OpenWorkbookFile(path)), lastSaved_(lastSaved)
    {
    }

    book::Worksheet* FindWorksheet(std::string_view name) override
    {
        return workbook_->FindWorksheet(name);
    }

    void SaveAs(const std::filesystem::path& target, book::AccessMode accessMode) override
    {
        // Parts that are read only now may turn out to be damaged.
        WithErrorPath(path_, [&] { workbook_->SaveAs(target, accessMode); });
        lastSaved_ = target;
    }

    std::vector<util::Error> Losses() const override { return workbook_->Losses(); }

private:
    std::filesystem::path path_;
    std::unique_ptr<book::Workbook> workbook_;
    std::filesystem::path& lastSaved_;
};

/// Has no window, so of the switches it keeps only visibility, which a run reads again.
class BuiltinApplication : public book::Application {
public:
    explicit BuiltinApplication(book::Opener opener) : opener_(std::move(opener)) {}

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

    book::Workbook& OpenWorkbook(const std::filesystem::path& path, bool /*readOnly*/) override
    {
        // Only SaveAs writes a file, so every workbook is opened read-only.
        workbooks_.push_back(std::make_unique<builtin::OpenWorkbook>(path, lastSaved_));
        return *workbooks_.back();
    }

    void ReleaseWorkbook(book::Workbook& workbook) override
    {
        std::erase_if(workbooks_, [&](const auto& open) { return open.get() == &workbook; });
    }

    void Quit() override { workbooks_.clear(); }

private:
    book::Opener opener_;
    bool visible_ = false;
    std::filesystem::path lastSaved_;
    std::vector<std::unique_ptr<book::Workbook>> workbooks_;
};

} // namespace

std::unique_ptr<book::Application> CreateApplication(book::Opener opener)
{
    return std::make_unique<BuiltinApplication>(std::move(opener));
}

} // namespace orrery::builtin
