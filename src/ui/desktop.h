#pragma once

#include "util/error_report.h"

#include <string>

namespace orrery::ui {

class AboutForm;
class HolidayForm;
class ParameterForm;
class TipForm;

inline constexpr const char* kProductName = "Orrery";

/// How much it matters that the user sees a state.
enum class Painting {
    WhenDue, ///< one of many that follow each other
    Now,     ///< one that lasts
};

/// What forms ask of whoever shows them. `Report` is the error report box.
class Desktop : public util::ErrorReporter {
public:
    /// A box with the exclamation icon and an OK button, titled with the product's name.
    virtual void ShowMessage(const std::string& text) = 0;
    /// A question box with Yes and No, titled with the product's name. True for Yes.
    virtual bool Ask(const std::string& question) = 0;
    virtual void SetHourglass(bool on) = 0;
    /// Paints what has changed while a command goes on; the user cannot start another one.
    virtual void Repaint(Painting painting) = 0;
    /// Opens a document, a folder or an address with the system's own program; a failure is
    /// reported.
    virtual void Open(const std::string& fileOrAddress) = 0;
    /// Opens a page of the help, such as "main"; a failure is reported.
    virtual void ShowHelp(const std::string& page) = 0;

    // Each shows a dialog and returns when it is closed.
    virtual void ShowModal(ParameterForm& form) = 0;
    virtual void ShowModal(HolidayForm& form) = 0;
    virtual void ShowModal(TipForm& form) = 0;
    virtual void ShowModal(AboutForm& form) = 0;
};

} // namespace orrery::ui
