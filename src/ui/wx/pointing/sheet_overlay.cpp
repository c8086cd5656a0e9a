#include "ui/wx/pointing/sheet_overlay.h"

#include "ui/wx/native/native.h"
#include "ui/wx/native/text.h"
#include "ui/wx/pointing/mark_styles.h"

#include <wx/settings.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace orrery::ui::wx {
namespace {

constexpr double kSampleShare = 0.72;   // of a cell's height
constexpr unsigned char kVeil = 150;    // white below samples
constexpr unsigned char kTint = 26;     // of an outlined cell
constexpr unsigned char kMildTint = 13; // of another block
// Pixels at 96 dpi.
constexpr int kLargestSample = 14;
constexpr int kLeastSample = 6; // smaller ones are left out
constexpr int kSmallCell = 18;  // has finer lines
constexpr int kHandle = 7;
constexpr int kSmallHandle = 5;

wxColour WithAlpha(const wxColour& color, unsigned char alpha)
{
    return {color.Red(), color.Green(), color.Blue(), alpha};
}

bool IsSeen(const wxRect2DDouble& box, const wxSize& window)
{
    return box.GetRight() >= 0 && box.GetBottom() >= 0 && box.m_x <= window.x &&
           box.m_y <= window.y && box.m_width > 0 && box.m_height > 0;
}

/// One kind of mark after the other, each in its style.
class MarkDrawing {
public:
    MarkDrawing(wxGraphicsContext& target, SheetGuide& guide, const SheetPlace& place,
                const wxWindow& window)
        : target_(target), pointer_(guide.Pointer()), sheets_(guide.Sheets()),
          layout_(sheets_.Picture()->Layout()), place_(place), window_(window),
          face_(GraphicsFontOf(window).GetFaceName())
    {
    }

    void Draw()
    {
        for (const MarkedCell& mark : pointer_.Marks())
            boxes_.push_back(place_.Of(layout_.BoxOf(sheets_.MergedAt(mark.cell))));
        for (const Field field :
             {Field::Holiday, Field::Day, Field::Weekday, Field::Month, Field::Year}) {
            if (field != pointer_.Active())
                DrawField(field);
        }
        if (pointer_.Active() && IsCellField(*pointer_.Active()))
            DrawField(*pointer_.Active());
    }

private:
    void DrawField(Field field)
    {
        DrawCells(field);
        DrawBlocks(field);
        DrawSamples(field);
        DrawHandles(field);
    }

    wxColour ColorOf(Field field) const
    {
        return pointer_.IsWrong(field) ? WrongColor() : StyleOf(field).color;
    }

    wxPen PenOf(Field field)
    {
        const bool stands = pointer_.Active() == field || pointer_.IsWrong(field);
        const int width = LeastHeight(field) < window_.FromDIP(kSmallCell) ? 1 : 2;
        return {ColorOf(field), window_.FromDIP(stands ? width + 1 : width), StyleOf(field).dashes};
    }

    /// Of the field's cells, as they are seen.
    double LeastHeight(Field field)
    {
        double least = std::numeric_limits<double>::max();
        ForEach(field, [&least](const MarkedCell&, const wxRect2DDouble& box) {
            if (box.m_height > 0)
                least = std::min(least, box.m_height);
        });
        return least;
    }

    template <typename Visit> void ForEach(Field field, const Visit& visit)
    {
        for (std::size_t i = 0; i < boxes_.size(); ++i) {
            const MarkedCell& mark = pointer_.Marks()[i];
            if (mark.mark == field)
                visit(mark, boxes_[i]);
        }
    }

    /// Every cell of the first block; of the others only a tint.
    void DrawCells(Field field)
    {
        wxGraphicsPath cells = target_.CreatePath();
        wxGraphicsPath others = target_.CreatePath();
        ForEach(field, [&](const MarkedCell& mark, const wxRect2DDouble& box) {
            if (IsSeen(box, window_.GetClientSize()))
                (mark.month == 1 ? cells : others)
                    .AddRectangle(box.m_x, box.m_y, box.m_width, box.m_height);
        });
        target_.SetBrush(wxBrush(WithAlpha(ColorOf(field), kMildTint)));
        target_.FillPath(others);
        target_.SetBrush(wxBrush(WithAlpha(ColorOf(field), kTint)));
        target_.FillPath(cells);
        target_.SetPen(PenOf(field));
        target_.StrokePath(cells);
    }

    /// The other blocks, each as a whole.
    void DrawBlocks(Field field)
    {
        std::map<int, wxRect2DDouble> blocks;
        ForEach(field, [&](const MarkedCell& mark, const wxRect2DDouble& box) {
            if (mark.month > 1) {
                const auto [found, isFirst] = blocks.try_emplace(mark.month, box);
                if (!isFirst)
                    found->second.Union(box);
            }
        });
        target_.SetPen({ColorOf(field), window_.FromDIP(1), StyleOf(field).dashes});
        target_.SetBrush(*wxTRANSPARENT_BRUSH);
        for (const auto& [month, box] : blocks) {
            if (IsSeen(box, window_.GetClientSize()))
                target_.DrawRectangle(box.m_x, box.m_y, box.m_width, box.m_height);
        }
    }

    void DrawSamples(Field field)
    {
        const double size = std::min(kSampleShare * LeastHeight(field),
                                     static_cast<double>(window_.FromDIP(kLargestSample)));
        if (size < window_.FromDIP(kLeastSample))
            return;
        const wxFont font(wxFontInfo(wxSize(0, static_cast<int>(std::lround(size))))
                              .FaceName(face_)
                              .Bold(pointer_.Active() == field));
        target_.SetFont(font, ColorOf(field));
        extents_.clear();
        ForEach(field, [&](const MarkedCell& mark, const wxRect2DDouble& box) {
            if (!mark.sample.empty() && IsSeen(box, window_.GetClientSize()))
                DrawSample(ToWx(mark.sample), box);
        });
    }

    void DrawSample(const wxString& text, const wxRect2DDouble& box)
    {
        const auto found = extents_.find(text);
        wxSize size;
        if (found == extents_.end()) {
            double width = 0;
            double height = 0;
            target_.GetTextExtent(text, &width, &height);
            size = {static_cast<int>(width), static_cast<int>(height)};
            extents_.emplace(text, size);
        }
        else
            size = found->second;
        const double x = box.m_x + std::max((box.m_width - size.x) / 2, 1.0);
        const double y = box.m_y + (box.m_height - size.y) / 2;
        const bool isCut = size.x > box.m_width || size.y > box.m_height;
        if (isCut)
            target_.Clip(box.m_x, box.m_y, box.m_width, box.m_height);
        target_.SetBrush(wxBrush(wxColour(255, 255, 255, kVeil)));
        target_.SetPen(*wxTRANSPARENT_PEN);
        target_.DrawRectangle(x - 1, y, size.x + 2, size.y);
        target_.DrawText(text, x, y);
        if (isCut) {
            target_.ResetClip();
            ClipToSheet();
        }
    }

    void ClipToSheet() const
    {
        target_.Clip(place_.corner.x, place_.corner.y, window_.GetClientSize().x,
                     window_.GetClientSize().y);
    }

    /// What can be dragged in a way of its own.
    static bool IsHandle(const MarkedCell& mark)
    {
        if (mark.mark == Field::Day && mark.month == 1)
            return mark.place.week + mark.place.column <= 1;
        return mark.place == generate::GridPosition() &&
               (mark.month == 1 || mark.mark == Field::Day);
    }

    void DrawHandles(Field field)
    {
        const int size = window_.FromDIP(
            LeastHeight(field) < window_.FromDIP(kSmallCell) ? kSmallHandle : kHandle);
        target_.SetPen(wxPen(*wxWHITE, 1));
        target_.SetBrush(wxBrush(ColorOf(field)));
        ForEach(field, [&](const MarkedCell& mark, const wxRect2DDouble& box) {
            if (IsHandle(mark))
                target_.DrawRectangle(box.m_x - size / 2.0, box.m_y - size / 2.0, size, size);
        });
    }

    wxGraphicsContext& target_;
    TabPointer& pointer_;
    ModelSheets& sheets_;
    const look::Layout& layout_;
    const SheetPlace& place_;
    const wxWindow& window_;
    const wxString face_;
    std::vector<wxRect2DDouble> boxes_;  ///< of the marks
    std::map<wxString, wxSize> extents_; ///< of samples in the font of a field
};

/// "A", "AB" of a column from 1.
wxString ColumnName(std::int32_t column)
{
    return ToWx(book::FormatCellAddress({1, column})).BeforeFirst('1');
}

struct HeadingColors {
    wxColour face = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE);
    wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT);
    wxColour line = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNSHADOW);
    wxColour chosen = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    wxColour chosenText = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT);
};

class HeadingDrawing {
public:
    HeadingDrawing(wxGraphicsContext& target, const wxWindow& window)
        : target_(target), font_(GraphicsFontOf(window))
    {
    }

    void Draw(const wxRect2DDouble& box, const wxString& text, bool isChosen)
    {
        target_.SetPen(wxPen(colors_.line, 1));
        target_.SetBrush(wxBrush(isChosen ? colors_.chosen : colors_.face));
        target_.DrawRectangle(box.m_x, box.m_y, box.m_width, box.m_height);
        target_.SetFont(font_, isChosen ? colors_.chosenText : colors_.text);
        double width = 0;
        double height = 0;
        target_.GetTextExtent(text, &width, &height);
        if (width <= box.m_width && height <= box.m_height * 1.5) // else there is no room
            target_.DrawText(text, box.m_x + (box.m_width - width) / 2,
                             box.m_y + (box.m_height - height) / 2);
    }

private:
    wxGraphicsContext& target_;
    const wxFont font_;
    HeadingColors colors_;
};

} // namespace

void DrawMarks(wxGraphicsContext& target, SheetGuide& guide, const SheetPlace& place,
               const wxWindow& window)
{
    target.Clip(place.corner.x, place.corner.y, window.GetClientSize().x, window.GetClientSize().y);
    MarkDrawing(target, guide, place, window).Draw();
    target.ResetClip();
}

void DrawHeadings(wxGraphicsContext& target, SheetGuide& guide, const SheetPlace& place,
                  const wxWindow& window)
{
    const look::Layout& layout = guide.Sheets().Picture()->Layout();
    const wxSize room = window.GetClientSize();
    const book::CellAddress cursor = guide.Cursor();
    const bool showsCursor = window.HasFocus();
    HeadingDrawing heading(target, window);
    target.Clip(place.corner.x, 0, room.x, place.corner.y);
    for (std::int32_t column = 1; column <= layout.range.last.column; ++column) {
        const auto box = place.Of(layout.BoxOf({{1, column}, {1, column}}));
        if (box.m_width > 0 && box.GetRight() >= place.corner.x && box.m_x <= room.x)
            heading.Draw({box.m_x, 0, box.m_width, static_cast<double>(place.corner.y)},
                         ColumnName(column), showsCursor && column == cursor.column);
    }
    target.ResetClip();
    target.Clip(0, place.corner.y, place.corner.x, room.y);
    for (std::int32_t row = 1; row <= layout.range.last.row; ++row) {
        const auto box = place.Of(layout.BoxOf({{row, 1}, {row, 1}}));
        if (box.m_height > 0 && box.GetBottom() >= place.corner.y && box.m_y <= room.y)
            heading.Draw({0, box.m_y, static_cast<double>(place.corner.x), box.m_height},
                         std::to_string(row), showsCursor && row == cursor.row);
    }
    target.ResetClip();
    heading.Draw({0, 0, static_cast<double>(place.corner.x), static_cast<double>(place.corner.y)},
                 "", false);
}

} // namespace orrery::ui::wx
