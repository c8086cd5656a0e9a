#include "ui/wx/dialogs.h"
#include "ui/wx/native/column_list.h"
#include "ui/wx/native/native.h"
#include "ui/wx/native/tabbed_list.h"
#include "ui/wx/native/text.h"
#include "ui/wx/widgets.h"
#include "ui/wx/window_place.h"

#include <wx/clipbrd.h>
#include <wx/display.h>
#include <wx/dnd.h>
#include <wx/filedlg.h>
#include <wx/menu.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orrery::ui::wx {
namespace {

// Dialog units, which grow with the font.
constexpr int kFileWidth = 105;
constexpr int kListWidth = 220;
constexpr int kListHeight = 118;
constexpr int kChoiceWidth = 60;
constexpr int kRulesWidth = 170; // at least
constexpr int kRulesHeight = 70;
constexpr int kWholeRuleHeight = 28; // three lines
constexpr std::array<int, 4> kRuleColumns = {85, 105, 92, 40};
constexpr int kSpareRulesWidth = 234; // for all columns, where the screen has room

constexpr std::size_t kKindsInRow = 3;

/// The text on the clipboard; empty if there is none.
std::string ClipboardText()
{
    const wxClipboardLocker clipboard;
    wxTextDataObject text;
    if (!clipboard || !wxTheClipboard->GetData(text))
        return {};
    return FromWx(text.GetText());
}

/// Files that are dropped on the dialog, one after the other.
class ImportDrop : public wxFileDropTarget {
public:
    ImportDrop(wxWindow& window, std::function<void(const std::string&)> import)
        : window_(window), import_(std::move(import))
    {
    }

    bool OnDropFiles(wxCoord /*x*/, wxCoord /*y*/, const wxArrayString& names) override
    {
        std::vector<std::string> files;
        for (const wxString& name : names)
            files.push_back(FromWx(name));
        // Later, because a dialog during the drop would block the other program.
        window_.CallAfter([import = import_, files] {
            for (const std::string& file : files)
                import(file);
        });
        return true;
    }

private:
    wxWindow& window_;
    const std::function<void(const std::string&)> import_;
};

/// The dialog with its controls. Those that say the rules in words stand beside the others, and
/// behind them in the tab order.
class HolidayWindow {
public:
    HolidayWindow(const DialogContext& context, HolidayForm& form)
        : context_(context), form_(form), rules_(form.rules),
          dialog_(MakeDialog(context.parent, form,
                             wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX)),
          binder_(*dialog_, form, context.desktop)
    {
        auto* const lists = new wxFlexGridSizer(2);
        lists->AddGrowableRow(0);
        lists->AddGrowableCol(0, 1);
        lists->AddGrowableCol(1, 3);
        lists->Add(BuildHolidays(), wxSizerFlags().Expand());
        wxSizer* const buttons = BuildButtons();
        lists->Add(BuildRules(), wxSizerFlags().Expand());
        fileRow_->Add(
            AddButton(*dialog_, binder_, form.cmdCountry, [this] { form_.cmdCountry_Click(); }),
            wxSizerFlags().Border(wxLEFT));
        auto* const column = new wxBoxSizer(wxVERTICAL);
        column->Add(lists, wxSizerFlags(1).Expand());
        column->Add(buttons, wxSizerFlags().Expand().DoubleBorder(wxTOP | wxBOTTOM));
        binder_.BindDialogKeys();
        dialog_->SetDropTarget(new ImportDrop(*dialog_, [this](const std::string& file) {
            binder_.Run([this, file] { form_.additions.Import(file); });
        }));
        binder_.Show();
        dialog_->SetSizerAndFit(column);
        const int room = wxDisplay(context.parent).GetClientArea().width;
        const int spare = dialog_->ConvertDialogToPixels(wxSize(kSpareRulesWidth, 0)).x;
        dialog_->SetSize(
            std::min(dialog_->GetSize().x + spare, std::max(room, dialog_->GetSize().x)),
            wxDefaultCoord);
    }

    void Show()
    {
        dialog_->CentreOnParent();
        RestorePlacement(*dialog_, context_.settingsFile);
        dialog_->ShowModal();
        if (form_.isAccepted)
            SavePlacement(*dialog_, context_.settingsFile);
    }

private:
    static wxSizerFlags Line() { return wxSizerFlags().DoubleBorder(wxLEFT | wxRIGHT); }

    wxSizer* BuildHolidays()
    {
        auto* const column = new wxBoxSizer(wxVERTICAL);
        fileRow_ = BuildChoice(form_.lblHolidayFile, form_.cboHolidayFile, kFileWidth, [this] {
            binder_.RunWhenClosed([this] { form_.cboHolidayFile_Click(); });
        });
        column->Add(fileRow_, wxSizerFlags().Expand().DoubleBorder(wxALL & ~wxBOTTOM));
        column->Add(AddLabel(*dialog_, binder_, form_.lblHolidays),
                    Line().DoubleBorder(wxALL & ~wxBOTTOM));
        column->Add(AddLabel(*dialog_, binder_, form_.lblHolidayList), Line());
        holidays_ =
            std::make_unique<TabbedList>(*dialog_, form_.tabStops, form_.lblHolidayList.caption);
        wxWindow& list = holidays_->Window();
        binder_.Bind(form_.lstHoliday, *holidays_);
        BindPaste(list);
        binder_.Relate(form_.lblHolidays, form_.lstHoliday);
        list.SetMinSize(dialog_->ConvertDialogToPixels(wxSize(kListWidth, kListHeight)));
        column->Add(&list, Line().Proportion(1).Expand());
        column->Add(AddNote(*dialog_, binder_, form_.lblProblems), Line().Expand());
        return column;
    }

    wxSizer* BuildButtons()
    {
        auto* const ok = AddButton(
            *dialog_, binder_, form_.cmdOK, [this] { form_.cmdOK_Click(); }, wxID_OK);
        auto* const cancel = AddButton(
            *dialog_, binder_, form_.cmdCancel, [this] { form_.cmdCancel_Click(); }, wxID_CANCEL);
        return ButtonRow(*ok, *cancel);
    }

    wxSizer* BuildRules()
    {
        auto* const column = new wxBoxSizer(wxVERTICAL);
        const auto row = Line().Expand().DoubleBorder(wxRIGHT | wxTOP);
        column->Add(BuildFind(), row);
        auto* const choices = new wxBoxSizer(wxHORIZONTAL);
        choices->Add(BuildChoice(rules_.lblRegion, rules_.cboRegion, kChoiceWidth,
                                 [this] { rules_.cboRegion_Click(); }),
                     wxSizerFlags(1).DoubleBorder(wxRIGHT));
        choices->Add(BuildChoice(rules_.lblLanguage, rules_.cboLanguage, kChoiceWidth,
                                 [this] { rules_.cboLanguage_Click(); }),
                     wxSizerFlags(1));
        column->Add(choices, row);
        column->Add(BuildKinds(), row);
        column->Add(AddLabel(*dialog_, binder_, rules_.lblRules), row);
        column->Add(BuildRuleList(), Line().Proportion(1).Expand().DoubleBorder(wxRIGHT));
        column->Add(AddLabel(*dialog_, binder_, rules_.lblRule), row);
        column->Add(BuildWholeRule(), Line().Expand().DoubleBorder(wxRIGHT));
        column->Add(BuildAdditions(), row);
        return column;
    }

    wxSizer* BuildFind()
    {
        auto* const row = new wxBoxSizer(wxHORIZONTAL);
        row->Add(AddLabel(*dialog_, binder_, rules_.lblFind), wxSizerFlags().CentreVertical());
        row->Add(AddTextBox(*dialog_, binder_, rules_.txtFind, [this] { rules_.Find(); }),
                 wxSizerFlags(1).Border(wxLEFT));
        binder_.Relate(rules_.lblFind, rules_.txtFind);
        return row;
    }

    wxSizer* BuildChoice(Label& label, ComboBox& list, int width, Handler onClick)
    {
        auto* const row = new wxBoxSizer(wxHORIZONTAL);
        row->Add(AddLabel(*dialog_, binder_, label), wxSizerFlags().CentreVertical());
        row->Add(AddChoice(*dialog_, binder_, list, width, std::move(onClick)),
                 wxSizerFlags(1).Border(wxLEFT));
        binder_.Relate(label, list);
        return row;
    }

    wxSizer* BuildKinds()
    {
        auto* const boxes = new wxBoxSizer(wxVERTICAL);
        wxSizer* row = nullptr;
        for (std::size_t i = 0; i < rules_.chkKinds.size(); ++i) {
            if (i % kKindsInRow == 0)
                boxes->Add(row = new wxBoxSizer(wxHORIZONTAL));
            CheckBox& box = rules_.chkKinds.at(i);
            row->Add(
                AddCheckBox(*dialog_, binder_, box, [this, &box] { rules_.chkKind_Click(box); }),
                wxSizerFlags().Border(wxLEFT));
        }
        auto* const kinds = new wxBoxSizer(wxHORIZONTAL);
        kinds->Add(AddLabel(*dialog_, binder_, rules_.lblKinds), wxSizerFlags().CentreVertical());
        kinds->Add(boxes);
        return kinds;
    }

    wxWindow* BuildRuleList()
    {
        const auto pixels = [this](int width) {
            return dialog_->ConvertDialogToPixels(wxSize(width, kRulesHeight));
        };
        std::vector<ColumnTitle> titles;
        for (std::size_t i = 0; i < kRuleColumns.size(); ++i)
            titles.push_back({rules_.titles.at(i), pixels(kRuleColumns.at(i)).x});
        ruleList_ = std::make_unique<ColumnList>(*dialog_, titles, [this](int line) {
            binder_.Run([this, line] {
                rules_.lstRules.Select(line);
                rules_.lstRules_Click();
                form_.additions.ShowSelection();
            });
        });
        ruleList_->Window().SetMinSize(pixels(kRulesWidth));
        binder_.BindControl(rules_.lstRules, ruleList_->Window(), [this] {
            ruleList_->Show(rules_.lstRules.lines, rules_.lstRules.selected);
        });
        binder_.Relate(rules_.lblRules, rules_.lstRules);
        BindPaste(ruleList_->Window());
        return &ruleList_->Window();
    }

    wxWindow* BuildWholeRule()
    {
        auto* const box = new wxTextCtrl(dialog_.get(), wxID_ANY, "", wxDefaultPosition,
                                         wxDefaultSize, wxTE_MULTILINE | wxTE_READONLY);
        PadText(*box);
        box->SetMinSize(dialog_->ConvertDialogToPixels(wxSize(kRulesWidth, kWholeRuleHeight)));
        binder_.Bind(rules_.txtRule, *box);
        binder_.Relate(rules_.lblRule, rules_.txtRule);
        return box;
    }

    wxSizer* BuildAdditions()
    {
        HolidayAdditions& additions = form_.additions;
        auto* const row = new wxBoxSizer(wxHORIZONTAL);
        files_ = AddButton(*dialog_, binder_, additions.cmdFiles, [this] { ShowFiles(); });
        row->Add(files_);
        const auto add = [&](Button& button, void (HolidayAdditions::*click)()) {
            row->Add(
                AddButton(*dialog_, binder_, button, [&additions, click] { (additions.*click)(); }),
                wxSizerFlags().Border(wxLEFT));
        };
        add(additions.cmdAddDay, &HolidayAdditions::cmdAddDay_Click);
        add(additions.cmdEditDay, &HolidayAdditions::cmdEditDay_Click);
        add(additions.cmdRemove, &HolidayAdditions::cmdRemove_Click);
        return row;
    }

    /// A menu with the files, those of the calendar checked: own ones, and the holiday folder's in
    /// a menu of their own.
    void ShowFiles()
    {
        HolidayAdditions& additions = form_.additions;
        const auto files = additions.Files();
        wxMenu menu;
        auto* const folder = new wxMenu;
        for (const HolidayAdditions::File& file : files) {
            wxMenu& place = file.file.isOwn ? menu : *folder;
            place.AppendCheckItem(wxID_ANY, wxControl::EscapeMnemonics(ToWx(file.file.name)))
                ->Check(file.isAdded);
            OnChoice(place, [&additions, &file] { additions.ToggleFile(file); });
        }
        menu.AppendSubMenu(folder, "Of the Holiday &Folder");
        menu.AppendSeparator();
        menu.Append(wxID_ANY, "&Import a File...");
        OnChoice(menu, [this] { ImportFile(); });
        menu.Append(wxID_ANY, "&Paste from the Clipboard");
        OnChoice(menu, [&additions] { additions.ImportText(ClipboardText()); });
        menu.AppendSeparator();
        menu.Append(wxID_ANY, "&Keep Own Days for Other Templates")->Enable(additions.HasOwnDays());
        OnChoice(menu, [&additions] { additions.CollectOwnDays(); });
        menu.Append(wxID_ANY, "&Open the Folder of Own Files");
        OnChoice(menu, [&additions] { additions.OpenOwnFolder(); });
        dialog_->PopupMenu(&menu, files_->GetPosition() + wxPoint(0, files_->GetSize().y));
    }

    void ImportFile()
    {
        wxFileDialog chooser(dialog_.get(), "Import a File", "", "",
                             "Calendars and tables|*.ics;*.csv;*.hol;*.tsv;*.txt|All files|*",
                             wxFD_OPEN | wxFD_FILE_MUST_EXIST);
        if (chooser.ShowModal() == wxID_OK)
            form_.additions.Import(FromWx(chooser.GetPath()));
    }

    /// In a list, Ctrl+V takes days from the clipboard.
    void BindPaste(wxWindow& list)
    {
        list.Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
            if (event.GetModifiers() == wxMOD_CONTROL && event.GetKeyCode() == 'V')
                binder_.Run([this] { form_.additions.ImportText(ClipboardText()); });
            else
                event.Skip();
        });
    }

    /// What the item that was appended last does.
    void OnChoice(wxMenu& menu, const Handler& action)
    {
        const int item = menu.GetMenuItems().GetLast()->GetData()->GetId();
        menu.Bind(
            wxEVT_MENU, [this, action](wxCommandEvent&) { binder_.Run(action); }, item);
    }

    const DialogContext& context_;
    HolidayForm& form_;
    HolidayRules& rules_;
    std::unique_ptr<wxDialog> dialog_;
    Binder binder_;
    wxSizer* fileRow_ = nullptr;
    std::unique_ptr<TabbedList> holidays_;
    std::unique_ptr<ColumnList> ruleList_;
    wxButton* files_ = nullptr;
};

} // namespace

void ShowHolidayDialog(const DialogContext& context, HolidayForm& form)
{
    HolidayWindow(context, form).Show();
}

} // namespace orrery::ui::wx
