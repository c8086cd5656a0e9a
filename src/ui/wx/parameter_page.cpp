#include "ui/wx/parameter_page.h"

#include "ui/pointing/tab_fields.h"
#include "ui/wx/native/text.h"
#include "ui/wx/pointing/mark_styles.h"
#include "ui/wx/widgets.h"

#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/gbsizer.h>
#include <wx/menu.h>
#include <wx/statline.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace orrery::ui::wx {
namespace {

// Dialog units, which grow with the font.
constexpr int kFieldWidth = 64;
constexpr int kNamesWidth = 84;
constexpr int kCellWidth = 38;
// Device-independent pixels.
constexpr int kIndent = 24; // aligned with the text of a check box
constexpr int kGroupGap = 4;
constexpr int kSwatch = 14; // before a label
constexpr int kSwatchGap = 5;

wxSize Gap(const wxWindow& page)
{
    return page.FromDIP(wxSize(8, 5));
}

/// The left side: labels with fields of equal size beside them.
class Fields {
public:
    Fields(wxWindow& page, Binder& binder)
        : page_(page), binder_(binder), grid_(new wxFlexGridSizer(2, Gap(page)))
    {
        grid_->AddGrowableCol(1);
        grid_->SetFlexibleDirection(wxHORIZONTAL); // all rows have the same height
    }

    wxFlexGridSizer* Grid() const { return grid_; }

    /// `field` contains the text box.
    void Add(Label& label, TextBox& text, const std::function<wxSizer*()>& makeField)
    {
        AddName(label);
        wxSizer* const field = makeField();
        field->SetMinSize(page_.ConvertDialogToPixels(wxSize(kFieldWidth, -1)));
        grid_->Add(field, wxSizerFlags().Expand());
        binder_.Relate(label, text);
    }

    void Add(Label& label, TextBox& text)
    {
        Add(label, text, [&]() -> wxSizer* {
            auto* const field = new wxBoxSizer(wxHORIZONTAL);
            field->Add(AddTextBox(page_, binder_, text), wxSizerFlags(1).Expand());
            return field;
        });
    }

    void Add(Label& label, ComboBox& choice, Handler onClick = {})
    {
        AddName(label);
        grid_->Add(AddChoice(page_, binder_, choice, kFieldWidth, std::move(onClick)),
                   wxSizerFlags().Expand());
        binder_.Relate(label, choice);
    }

    void Add(Label& label, TextBox& text, UpDown& upDown)
    {
        AddName(label);
        grid_->Add(AddSpinField(page_, binder_, label, text, upDown), wxSizerFlags().Expand());
        binder_.Relate(label, text);
    }

private:
    void AddName(Label& label)
    {
        grid_->Add(AddLabel(page_, binder_, label), wxSizerFlags().CentreVertical());
    }

    wxWindow& page_;
    Binder& binder_;
    wxFlexGridSizer* grid_;
};

/// The right side: groups indented below their check boxes, aligned in common columns.
class Groups {
public:
    Groups(wxWindow& page, Binder& binder)
        : page_(page), binder_(binder), grid_(new wxGridBagSizer(Gap(page).y, Gap(page).x))
    {
    }

    /// Called after all groups are added.
    wxSizer* Finish()
    {
        for (wxTextCtrl* const cell : cells_) // as high as the lists beside and below
            cell->SetMinSize(
                wxSize(page_.ConvertDialogToPixels(wxSize(kCellWidth, -1)).x, choiceHeight_));
        grid_->AddGrowableCol(kNameFieldColumn);
        return grid_;
    }

    void AddGroup(CheckBox& check, Handler onClick)
    {
        ++row_;
        const int gap = row_ == 0 ? 0 : page_.FromDIP(kGroupGap);
        auto* const box = AddCheckBox(page_, binder_, check, std::move(onClick));
        grid_->Add(box, wxGBPosition(row_, 0), wxGBSpan(1, kColumns), wxTOP, gap);
    }

    /// A line with the group's first cell.
    void AddFirstCell(Label& label, TextBox& text)
    {
        ++row_;
        AddName(label, 1);
        cells_.push_back(AddTextBox(page_, binder_, text));
        grid_->Add(cells_.back(), wxGBPosition(row_, kCellColumn));
        binder_.Relate(label, text);
    }

    /// The list of names, on the same line.
    void AddNames(Label& label, ComboBox& choice)
    {
        grid_->Add(AddLabel(page_, binder_, label), wxGBPosition(row_, kNameColumn), wxDefaultSpan,
                   wxALIGN_CENTRE_VERTICAL | wxLEFT, Gap(page_).x);
        AddNameField(label, choice);
    }

    /// A line with a long label and a list.
    void AddChoiceLine(Label& label, ComboBox& choice)
    {
        ++row_;
        AddName(label, kNameColumn + 1);
        AddNameField(label, choice);
    }

    /// A line with a text and a button.
    void AddTextLine(Label& label, Label& shown, Button& button, Handler onClick)
    {
        ++row_;
        AddName(label, 1);
        // The button first: screen readers would take a label created before it as its name.
        auto* const press = AddButton(page_, binder_, button, std::move(onClick));
        auto* const line = new wxBoxSizer(wxHORIZONTAL);
        line->Add(AddLabel(page_, binder_, shown, wxST_ELLIPSIZE_END | wxST_NO_AUTORESIZE),
                  wxSizerFlags(1).CentreVertical());
        line->Add(press, wxSizerFlags().Border(wxLEFT, Gap(page_).x));
        grid_->Add(line, wxGBPosition(row_, kCellColumn), wxGBSpan(1, kColumns - 1), wxEXPAND);
    }

    /// A line of text across all columns.
    void AddNoteLine(Label& note)
    {
        ++row_;
        grid_->Add(AddNote(page_, binder_, note), wxGBPosition(row_, 0), wxGBSpan(1, kColumns),
                   wxEXPAND | wxLEFT, page_.FromDIP(kIndent));
    }

private:
    static constexpr int kCellColumn = 1;
    static constexpr int kNameColumn = 2;
    static constexpr int kNameFieldColumn = 3;
    static constexpr int kColumns = 4;

    void AddName(Label& label, int columns)
    {
        grid_->Add(AddLabel(page_, binder_, label), wxGBPosition(row_, 0), wxGBSpan(1, columns),
                   wxALIGN_CENTRE_VERTICAL | wxLEFT, page_.FromDIP(kIndent));
    }

    void AddNameField(Label& label, ComboBox& choice)
    {
        auto* const list = AddChoice(page_, binder_, choice, kNamesWidth);
        grid_->Add(list, wxGBPosition(row_, kNameFieldColumn), wxDefaultSpan, wxEXPAND);
        choiceHeight_ = list->GetMinSize().y;
        binder_.Relate(label, choice);
    }

    wxWindow& page_;
    Binder& binder_;
    wxGridBagSizer* grid_;
    int row_ = -1;
    std::vector<wxTextCtrl*> cells_;
    int choiceHeight_ = 0;
};

/// A small button beside a text box, whose keys do the same: Tab goes on to the next field.
class SideButton : public wxButton {
public:
    SideButton(wxWindow& parent, const wxString& caption)
        : wxButton(&parent, wxID_ANY, caption, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT)
    {
        wxButton::SetCanFocus(false);
    }
    bool AcceptsFocusFromKeyboard() const override { return false; }
};

} // namespace

ParameterPage::ParameterPage(wxWindow& parent, const std::string& name, Binder& binder,
                             ParameterTab& tab, YearlyTab* monthGrid, PageActions actions)
    : wxScrolledWindow(&parent), binder_(binder), tab_(tab), actions_(std::move(actions))
{
    SetName(ToWx(name));
    auto* const sides = new wxBoxSizer(wxHORIZONTAL);
    sides->Add(BuildCalendar(monthGrid), wxSizerFlags().DoubleBorder());
    sides->Add(new wxStaticLine(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLI_VERTICAL),
               wxSizerFlags().Expand().DoubleBorder(wxTOP | wxBOTTOM));
    sides->Add(BuildOutputs(), wxSizerFlags(1).DoubleBorder());
    SetSizer(sides);
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { PaintSwatches(); });
}

void ParameterPage::AlignWith(ParameterPage& other)
{
    int width = 0;
    for (const ParameterPage* const page : {this, &other}) {
        page->fields_->CalcMin();
        width = std::max(width, page->fields_->GetColWidths().front());
    }
    for (const ParameterPage* const page : {this, &other})
        page->fields_->GetItem(size_t(0))->SetMinSize(width, -1);
}

void ParameterPage::AllowScrolling()
{
    const int step = FromDIP(10);
    SetScrollRate(step, step);
}

wxSizer* ParameterPage::BuildCalendar(YearlyTab* monthGrid)
{
    ParameterTab& tab = tab_;
    auto* const output =
        AddCheckBox(*this, binder_, tab.chkOutCalendar, [&tab] { tab.chkOutCalendar_Click(); });
    Fields fields(*this, binder_);
    fields.Add(tab.lblSheetName, tab.txtSheetName, [this] { return BuildSheetField(); });
    fields.Add(tab.lblFirstDayofWeek, tab.cboFirstDayofWeek);
    fields.Add(tab.lblFirstCellofDay, tab.txtFirstCellofDay);
    fields.Add(tab.lblColInterval, tab.txtColInterval, tab.updColInterval);
    fields.Add(tab.lblRowInterval, tab.txtRowInterval, tab.updRowInterval);
    if (monthGrid != nullptr) {
        YearlyTab& grid = *monthGrid;
        fields.Add(grid.lblLayoutofMonths, grid.cboLayoutofMonths,
                   [&grid] { grid.cboLayoutofMonths_Click(); });
        fields.Add(grid.lblColIntervalofMonth, grid.txtColIntervalofMonth,
                   grid.updColIntervalofMonth);
        fields.Add(grid.lblRowIntervalofMonth, grid.txtRowIntervalofMonth,
                   grid.updRowIntervalofMonth);
    }
    fields_ = fields.Grid();
    auto* const group = new wxBoxSizer(wxVERTICAL);
    group->Add(output, wxSizerFlags().Border(wxBOTTOM, Gap(*this).y));
    group->Add(fields_, wxSizerFlags().Expand().Border(wxLEFT, FromDIP(kIndent)));
    return group;
}

/// The keyboard opens the list from the text box, so that the order of the fields stays.
wxSizer* ParameterPage::BuildSheetField()
{
    auto* const field = new wxBoxSizer(wxHORIZONTAL);
    sheetName_ = AddTextBox(*this, binder_, tab_.txtSheetName);
    field->Add(sheetName_, wxSizerFlags(1).Expand());
    auto* const sheets = new SideButton(*this, ToWx(tab_.cmdSheets.caption));
    sheets->SetToolTip("The sheets of the template (Alt+Down)");
    binder_.Bind(tab_.cmdSheets, *sheets, [this] { ListSheets(); });
    binder_.Describe(tab_.cmdSheets, "Sheet Name, list");
    field->Add(sheets, wxSizerFlags().Expand());
    sheetName_->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_DOWN && event.GetModifiers() == wxMOD_ALT)
            binder_.Run([this] { ListSheets(); });
        else
            event.Skip();
    });
    return field;
}

void ParameterPage::ListSheets()
{
    const auto names = actions_.listSheets();
    wxMenu menu;
    for (const std::string& name : names) {
        const wxMenuItem* const item =
            menu.Append(wxID_ANY, wxControl::EscapeMnemonics(ToWx(name)));
        menu.Bind(
            wxEVT_MENU,
            [this, name](wxCommandEvent&) {
                binder_.Run([this, name] { actions_.chooseSheet(name); });
            },
            item->GetId());
    }
    if (names.empty())
        menu.Append(wxID_ANY, "No sheets can be read")->Enable(false);
    PopupMenu(&menu, sheetName_->GetPosition() + wxPoint(0, sheetName_->GetSize().y));
}

void ParameterPage::CompleteSheetNames(const std::vector<std::string>& names)
{
    wxArrayString choices;
    for (const std::string& name : names)
        choices.push_back(ToWx(name));
    sheetName_->AutoComplete(choices);
}

void ParameterPage::ShowSwatches(bool isShown)
{
    hasSwatches_ = isShown;
    Refresh();
}

/// They stand in the indent before the labels, where nothing else is.
void ParameterPage::PaintSwatches()
{
    wxPaintDC dc(this);
    if (!hasSwatches_)
        return;
    const wxSize size = FromDIP(wxSize(kSwatch, kSwatch));
    for (const Field field : kCellFields) {
        const Label& label = tab_.*PartsOf(field).label;
        const wxWindow* const text = FindWindowByName(ToWx(label.name), this);
        if (text == nullptr || !label.enabled)
            continue;
        const wxRect place = text->GetRect();
        DrawSwatch(dc,
                   wxRect(wxPoint(place.x - size.x - FromDIP(kSwatchGap),
                                  place.y + (place.height - size.y) / 2),
                          size),
                   field, FromDIP(2));
    }
}

wxSizer* ParameterPage::BuildOutputs()
{
    ParameterTab& tab = tab_;
    Groups groups(*this, binder_);
    groups.AddGroup(tab.chkOutWeekday, [&tab] { tab.chkOutWeekday_Click(); });
    groups.AddFirstCell(tab.lblFirstCellofWeekday, tab.txtFirstCellofWeekday);
    groups.AddNames(tab.lblWeekdayName, tab.cboWeekdayName);

    groups.AddGroup(tab.chkOutMonth, [&tab] { tab.chkOutMonth_Click(); });
    groups.AddFirstCell(tab.lblFirstCellofMonth, tab.txtFirstCellofMonth);
    groups.AddNames(tab.lblMonthName, tab.cboMonthName);

    groups.AddGroup(tab.chkOutYear, [&tab] { tab.chkOutYear_Click(); });
    groups.AddFirstCell(tab.lblFirstCellofYear, tab.txtFirstCellofYear);

    groups.AddGroup(tab.chkOutHoliday, [&tab] { tab.chkOutHoliday_Click(); });
    groups.AddFirstCell(tab.lblFirstCellofHoliday, tab.txtFirstCellofHoliday);
    groups.AddChoiceLine(tab.lblMultiHolidays, tab.cboMultiHolidays);
    groups.AddTextLine(tab.lblHolidaySLabel, tab.lblHolidaySample, tab.cmdChangeHoliday,
                       actions_.changeHoliday);
    groups.AddNoteLine(tab.lblHolidayProblems);
    return groups.Finish();
}

} // namespace orrery::ui::wx
