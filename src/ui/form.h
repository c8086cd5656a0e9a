#pragma once

#include "ui/controls.h"

#include <string>
#include <utility>

namespace orrery::ui {

/// The state of a window: its controls are members, and its handlers change them. A handler may
/// throw; the caller shows the error and continues.
class Form {
public:
    Form(std::string formName, std::string formCaption, std::string formHelpPage)
        : name(std::move(formName)), caption(std::move(formCaption)),
          helpPage(std::move(formHelpPage))
    {
    }
    virtual ~Form() = default;
    Form(const Form&) = delete; // controls refer to each other
    Form& operator=(const Form&) = delete;

    void Close() { isOpen = false; }
    /// Closes a dialog whose changes are taken.
    void Accept()
    {
        isAccepted = true;
        Close();
    }
    /// A key that no control handles: Escape closes the form.
    void Form_KeyPress(int characterCode)
    {
        constexpr int escape = 27;
        if (characterCode == escape)
            Close();
    }
    /// Requests the keyboard focus; the window sets it after the handler.
    void SetFocus(const Control& control) { focus = &control; }

    const std::string name;     ///< such as "frmMain"
    std::string caption;        ///< the window's title
    const std::string helpPage; ///< the page that F1 opens, such as "main"
    bool isOpen = true;
    bool isAccepted = false;        ///< a dialog that is cancelled leaves nothing behind
    const Control* focus = nullptr; ///< read and cleared by the window
};

} // namespace orrery::ui
