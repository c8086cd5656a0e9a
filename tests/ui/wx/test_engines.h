#pragma once

#include "book/error.h"
#include "engines/engine_choice.h"
#include "util/error.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>
#include <wx/app.h>

namespace orrery::ui::wx {

/// Writes the names of the sheets, one per line, instead of a PDF.
class TestPrinter : public book::PdfPrinter {
public:
    void Print(const std::filesystem::path& /*workbook*/, const std::vector<std::string>& sheets,
               const std::filesystem::path& target) override
    {
        std::ofstream stream(target);
        for (const std::string& sheet : sheets)
            stream << sheet << '\n';
    }
};

/// Does not answer its first call until its user gives up.
class StuckApplication : public book::Application, private book::Endable {
public:
    explicit StuckApplication(book::Patience& patience) : patience_(patience)
    {
        patience_.Add(*this);
    }
    ~StuckApplication() override { patience_.Remove(*this); }
    StuckApplication(const StuckApplication&) = delete;
    StuckApplication& operator=(const StuckApplication&) = delete;

    void SetDisplayAlerts(bool /*on*/) override
    {
        using namespace std::chrono_literals;
        while (!isEnded_) {
            patience_.OnWaiting(61s);
            wxTheApp->ProcessPendingEvents(); // the test's questions
            std::this_thread::sleep_for(20ms);
        }
        throw Error(book::ErrorKind::ApplicationLost, "Stuck");
    }
    void SetVisible(bool /*on*/) override {}
    bool Visible() const override { return false; }
    void SetInteractive(bool /*on*/) override {}
    void SetScreenUpdating(bool /*on*/) override {}
    book::Workbook& OpenWorkbook(const std::filesystem::path& path, bool /*readOnly*/) override
    {
        throw Error(book::ErrorKind::NotAWorkbook, path.string());
    }
    void ReleaseWorkbook(book::Workbook& /*workbook*/) override {}
    void Quit() override {}

private:
    void End() override { isEnded_ = true; }

    book::Patience& patience_;
    bool isEnded_ = false;
};

/// The installed applications, with a PDF printer if the test wants one.
class TestEngines : public engines::InstalledEngines {
public:
    explicit TestEngines(bool printsPdf) : printsPdf_(printsPdf) {}
    std::unique_ptr<book::Application> Start(const std::string& name,
                                             book::StartRequest request) override
    {
        if (isStuck && request.patience != nullptr) // a run; others do not wait
            return std::make_unique<StuckApplication>(*request.patience);
        return InstalledEngines::Start(name, std::move(request));
    }
    bool CanPrintPdf(book::PdfBy /*by*/) const override { return printsPdf_; }
    std::unique_ptr<book::PdfPrinter> StartPdfPrinter(book::PdfBy /*by*/,
                                                      book::Patience* /*patience*/) override
    {
        return std::make_unique<TestPrinter>();
    }

    bool isStuck = false; ///< the application does not answer

private:
    const bool printsPdf_;
};

} // namespace orrery::ui::wx
