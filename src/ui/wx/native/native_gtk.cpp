#include "ui/wx/native/native.h"

#include <gtk/gtk.h>

#include <wx/eventfilter.h>
#include <wx/evtloop.h>
#include <wx/msgdlg.h> // before the generic one

#include <wx/generic/msgdlgg.h>

namespace orrery::ui::wx {
namespace {

/// The widget inside a control that takes the focus: an entry or a combo box is inside others.
GtkWidget* FocusWidget(GtkWidget* widget)
{
    const bool takesFocus = gtk_widget_get_can_focus(widget) && !GTK_IS_SCROLLED_WINDOW(widget);
    if (takesFocus || !GTK_IS_CONTAINER(widget))
        return widget;
    GList* const children = gtk_container_get_children(GTK_CONTAINER(widget));
    GtkWidget* found = widget;
    for (const GList* child = children; child != nullptr && found == widget; child = child->next) {
        GtkWidget* const inner = FocusWidget(GTK_WIDGET(child->data));
        if (gtk_widget_get_can_focus(inner))
            found = inner;
    }
    g_list_free(children);
    return found;
}

/// The toolkit gives a label the control after it when that is shown: of a list the outer widget,
/// which takes no focus.
void KeepField(GtkLabel* label, GParamSpec* /*property*/, gpointer field)
{
    GtkWidget* const now = gtk_label_get_mnemonic_widget(label);
    if (now == nullptr) // the field is gone
        g_signal_handlers_disconnect_by_data(label, field);
    else if (now != field)
        gtk_label_set_mnemonic_widget(label, GTK_WIDGET(field));
}

GtkLabel* LabelInside(GtkWidget* widget)
{
    if (GTK_IS_LABEL(widget) || !GTK_IS_CONTAINER(widget))
        return GTK_IS_LABEL(widget) ? GTK_LABEL(widget) : nullptr;
    GList* const children = gtk_container_get_children(GTK_CONTAINER(widget));
    GtkLabel* found = nullptr;
    for (const GList* child = children; child != nullptr && found == nullptr; child = child->next)
        found = LabelInside(GTK_WIDGET(child->data));
    g_list_free(children);
    return found;
}

/// Moves a window when it becomes visible for the first time.
gboolean MoveOnce(GtkWidget* window, GdkEvent* /*event*/, gpointer position)
{
    const wxPoint wanted = *static_cast<wxPoint*>(position);
    g_signal_handlers_disconnect_by_data(window, position);
    gtk_window_move(GTK_WINDOW(window), wanted.x, wanted.y);
    return FALSE; // other handlers run too
}

void DeletePosition(gpointer position, GClosure* /*closure*/)
{
    delete static_cast<wxPoint*>(position);
}

/// In the second frame after a change, when the first has cleared what hinders the second.
gboolean LayOutAgain(GtkWidget* widget, GdkFrameClock* clock, gpointer firstFrame)
{
    if (gdk_frame_clock_get_frame_counter(clock) <= *static_cast<gint64*>(firstFrame))
        return G_SOURCE_CONTINUE;
    gtk_widget_queue_resize(widget);
    return G_SOURCE_REMOVE;
}

/// In its lifetime the user's input reaches one window alone, and no window is closed.
class InputFor : private wxEventFilter {
public:
    explicit InputFor(const wxWindow& window) : window_(window) { wxEvtHandler::AddFilter(this); }
    ~InputFor() override { wxEvtHandler::RemoveFilter(this); }
    InputFor(const InputFor&) = delete;
    InputFor& operator=(const InputFor&) = delete;

private:
    int FilterEvent(wxEvent& event) override
    {
        if (event.GetEventType() == wxEVT_CLOSE_WINDOW) {
            auto& closing = static_cast<wxCloseEvent&>(event);
            closing.Veto(closing.CanVeto());
            return closing.CanVeto() ? Event_Processed : Event_Skip;
        }
        const bool isInput = (event.GetEventCategory() & wxEVT_CATEGORY_USER_INPUT) != 0;
        return isInput && event.GetEventObject() != &window_ ? Event_Processed : Event_Skip;
    }

    const wxWindow& window_;
};

} // namespace

void AssociateLabel(wxStaticText& label, wxWindow& field)
{
    GtkWidget* const widget = FocusWidget(field.GetHandle());
    gtk_label_set_mnemonic_widget(GTK_LABEL(label.GetHandle()), widget);
    g_signal_connect(label.GetHandle(), "notify::mnemonic-widget", G_CALLBACK(KeepField), widget);
}

void MoveWhenShown(wxTopLevelWindow& window, const wxPoint& position)
{
    g_signal_connect_data(window.GetHandle(), "map-event", G_CALLBACK(MoveOnce),
                          new wxPoint(position), DeletePosition, {});
}

void SetAccessibleName(wxWindow& control, const wxString& name)
{
    for (GtkWidget* const widget : {control.GetHandle(), FocusWidget(control.GetHandle())})
        atk_object_set_name(gtk_widget_get_accessible(widget), name.utf8_str());
}

void SetDialogRole(wxWindow& dialog)
{
    atk_object_set_role(gtk_widget_get_accessible(dialog.GetHandle()), ATK_ROLE_DIALOG);
}

wxChoice* NewDropDownList(wxWindow& parent)
{
    auto* const list = new wxChoice(&parent, wxID_ANY);
    GList* const cells = gtk_cell_layout_get_cells(GTK_CELL_LAYOUT(list->GetHandle()));
    for (const GList* cell = cells; cell != nullptr; cell = cell->next)
        g_object_set(cell->data, "ellipsize", PANGO_ELLIPSIZE_END, nullptr);
    g_list_free(cells);
    // Also saves measuring every entry, which takes long for hundreds of them.
    GtkWidget* const shown = gtk_bin_get_child(GTK_BIN(list->GetHandle()));
    if (GTK_IS_CELL_VIEW(shown))
        gtk_cell_view_set_fit_model(GTK_CELL_VIEW(shown), FALSE);
    return list;
}

wxFont GraphicsFontOf(const wxWindow& window)
{
    return window.GetFont();
}

void FitHeight(wxTextCtrl& box)
{
    int height = 0;
    gtk_widget_get_preferred_height(box.GetHandle(), &height, nullptr);
    box.SetMinSize(wxSize(box.GetMinWidth(), height));
}

void PadText(wxTextCtrl& box)
{
    constexpr int pixels = 4;
    GtkTextView* const text = GTK_TEXT_VIEW(gtk_bin_get_child(GTK_BIN(box.GetHandle())));
    gtk_text_view_set_left_margin(text, pixels);
    gtk_text_view_set_right_margin(text, pixels);
    gtk_text_view_set_top_margin(text, pixels);
}

// The arrows are two buttons side by side, already as high as a text box.
void FitArrows(wxSpinButton& /*arrows*/, const wxWindow& /*box*/) {}

void ShowTabCaption(wxNotebook& tabs, size_t page, const wxString& caption)
{
    GtkNotebook* const strip = GTK_NOTEBOOK(tabs.GetHandle());
    GtkWidget* const child = gtk_notebook_get_nth_page(strip, static_cast<int>(page));
    GtkLabel* const label = LabelInside(gtk_notebook_get_tab_label(strip, child));
    wxString marked = caption;
    marked.Replace("_", "__");
    marked.Replace("&", "_");
    gtk_label_set_text_with_mnemonic(label, marked.utf8_str());
}

int ShowMessageBox(wxWindow* parent, const wxString& text, const wxString& title, long style)
{
    // GTK's own message dialog does not show the icon.
    wxGenericMessageDialog box(parent, text, title, style | wxCENTRE);
    box.Bind(wxEVT_INIT_DIALOG, [&box](wxInitDialogEvent& event) {
        atk_object_set_role(gtk_widget_get_accessible(box.GetHandle()), ATK_ROLE_ALERT);
        event.Skip();
    });
    return box.ShowModal();
}

void ShowLayout(wxWindow& window)
{
    GtkWidget* const widget = window.GetHandle();
    GdkFrameClock* const clock = gtk_widget_get_frame_clock(widget);
    if (clock == nullptr) // not on the screen yet
        return;
    auto* const firstFrame = g_new(gint64, 1);
    *firstFrame = gdk_frame_clock_get_frame_counter(clock) + 1;
    gtk_widget_add_tick_callback(widget, LayOutAgain, firstFrame, g_free);
}

void HandleInputOf(wxWindow& control)
{
    const InputFor onlyThis(control);
    if (auto* const loop = wxEventLoopBase::GetActive())
        loop->YieldFor(wxEVT_CATEGORY_UI | wxEVT_CATEGORY_USER_INPUT);
}

void Emphasize(wxButton& button)
{
    gtk_style_context_add_class(gtk_widget_get_style_context(button.GetHandle()),
                                GTK_STYLE_CLASS_SUGGESTED_ACTION);
}

} // namespace orrery::ui::wx
