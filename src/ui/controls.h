#pragma once

#include <string>
#include <utility>
#include <vector>

/// The state of a form's controls: what a window shows and what a test reads. A caption has "&"
/// before its mnemonic. `changed` is the mark that the user changed a value; only a form clears it.
namespace orrery::ui {

/// What every control has.
struct Control {
    explicit Control(std::string controlName, std::string controlCaption = {})
        : name(std::move(controlName)), caption(std::move(controlCaption))
    {
    }

    std::string name;    ///< such as "cmdGenerate"; its window has the same
    std::string caption; ///< what a label or button says; empty for fields
    bool enabled = true;
    bool visible = true;
    bool changed = false; ///< the user changed the value
};

struct Label : Control {
    using Control::Control;
    /// Shows a text as it stands: "&" is a character like others.
    void ShowText(std::string text)
    {
        caption = std::move(text);
        isLiteral = true;
    }

    bool isLiteral = false; ///< the caption has no mnemonic
};

struct Button : Control {
    using Control::Control;
};

struct CheckBox : Control {
    using Control::Control;
    /// What a click of the user does.
    void Toggle()
    {
        checked = !checked;
        changed = true;
    }

    bool checked = false;
};

struct TextBox : Control {
    using Control::Control;
    /// What typing of the user does.
    void Type(std::string typed)
    {
        text = std::move(typed);
        changed = true;
    }

    std::string text;
};

/// A drop-down list.
struct ComboBox : Control {
    using Control::Control;
    /// What the user's choice of an entry does.
    void Select(int index)
    {
        selected = index;
        changed = true;
    }
    bool HasSelection() const { return selected >= 0; }

    std::vector<std::string> entries;
    int selected = -1; ///< index of an entry; negative: none
};

struct ListBox : Control {
    using Control::Control;
    std::vector<std::string> lines; ///< columns are separated by a tab
};

/// The pair of arrows that steps the whole number in a text box.
struct UpDown : Control {
    UpDown(std::string controlName, TextBox& steppedText, int least, int most)
        : Control(std::move(controlName)), buddy(steppedText), minimum(least), maximum(most)
    {
    }
    /// What a press on an arrow does: the number plus `step`, kept in the range. A text that is no
    /// number becomes the least one.
    void Step(int step);

    TextBox& buddy;
    int minimum;
    int maximum;
};

struct ProgressBar : Control {
    using Control::Control;
    int done = 0;
    int total = 0;
};

} // namespace orrery::ui
