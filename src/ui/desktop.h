#pragma once

#include "util/error_report.h"

#include <string>

namespace orrery::ui {

class AboutForm;
class CountryForm;
class HolidayForm;
class ImportForm;
class OwnDayForm;
class ParameterForm;
class TipForm;
struct Button;

inline constexpr const char* kProductName = "Orrery";

/// How urgently a state must be shown.
enum class Painting {
    WhenDue, ///< one of many short-lived states
    Now,     ///< a state that lasts
};

/// What forms need from the window system. `Report` shows the error report box.
class Desktop : public util::ErrorReporter {
public:
    /// A box with the exclamation icon and an OK button, titled with the product's name.
    virtual void ShowMessage(const std::string& text) = 0;
    /// A question box with Yes and No, titled with the product's name. True for Yes.
    virtual bool Ask(const std::string& question) = 0;
    virtual void SetHourglass(bool on) = 0;
    /// Paints changes while a command is running; the user cannot start another command.
    virtual void Repaint(Painting painting) = 0;
    /// The same in the middle of a call that goes on for long: the user can press that button, and
    /// nothing else.
    virtual void LetPress(const Button& button) = 0;
    /// Opens a document, a folder or a web address with the program that the system has for it.
    /// Reports a failure.
    virtual void Open(const std::string& fileOrAddress) = 0;
    /// Puts a text on the clipboard.
    virtual void Copy(const std::string& text) = 0;
    /// Opens a help page, such as "main". Reports a failure.
    virtual void ShowHelp(const std::string& page) = 0;

    // Each shows a dialog and returns when the dialog is closed.
    virtual void ShowModal(ParameterForm& form) = 0;
    virtual void ShowModal(HolidayForm& form) = 0;
    virtual void ShowModal(CountryForm& form) = 0;
    virtual void ShowModal(OwnDayForm& form) = 0;
    virtual void ShowModal(ImportForm& form) = 0;
    virtual void ShowModal(TipForm& form) = 0;
    virtual void ShowModal(AboutForm& form) = 0;
};

} // namespace orrery::ui
