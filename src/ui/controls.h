#pragma once

#include <string>
#include <utility>
#include <vector>

/// The state of a form's controls, which windows show and tests read. In a caption "&" stands
/// before the mnemonic. `changed` is set when the user changes a value; only the form clears it.
namespace orrery::ui {

/// What every control has.
struct Control {
    explicit Control(std::string controlName, std::string controlCaption = {})
        : name(std::move(controlName)), caption(std::move(controlCaption))
    {
    }

    std::string name;    ///< such as "cmdGenerate"; also the name of its window
    std::string caption; ///< the text of a label or button; empty for fields
    bool enabled = true;
    bool visible = true;
    bool changed = false; ///< the user changed the value
};

struct Label : Control {
    using Control::Control;
    /// Shows a text unchanged: "&" is an ordinary character.
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
    /// The user clicks.
    void Toggle()
    {
        checked = !checked;
        changed = true;
    }

    bool checked = false;
};

struct TextBox : Control {
    using Control::Control;
    /// The user types.
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
    /// The user selects an entry.
    void Select(int index)
    {
        selected = index;
        changed = true;
    }
    bool HasSelection() const { return selected >= 0; }

    std::vector<std::string> entries;
    int selected = -1; ///< index of an entry; negative means none
};

struct ListBox : Control {
    using Control::Control;
    /// The user selects a line.
    void Select(int index)
    {
        selected = index;
        changed = true;
    }
    bool HasSelection() const { return selected >= 0; }

    std::vector<std::string> lines; ///< columns are separated by a tab
    int selected = -1;              ///< index of a line; negative means none
};

/// A pair of arrows that step the whole number in a text box.
struct UpDown : Control {
    UpDown(std::string controlName, TextBox& steppedText, int low, int high)
        : Control(std::move(controlName)), buddy(steppedText), minimum(low), maximum(high)
    {
    }
    /// The user presses an arrow: adds `step` to the number and limits it to the range. A text that
    /// is not a number becomes the minimum.
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
