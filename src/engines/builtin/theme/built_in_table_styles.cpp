#include "engines/builtin/theme/built_in_table_styles.h"

#include "engines/builtin/common/tint.h"
#include "engines/builtin/common/words.h"
#include "engines/builtin/xml/reading.h"

#include <array>
#include <cstddef>

namespace orrery::builtin {
namespace {

using book::LineStyle;
using book::PartialStyle;
using book::TablePart;

/// Styles that differ in their colour alone: the first is grey, the others have an accent of the
/// theme. ECMA-376 lists each of them (presetTableStyles).
///
///     rules = part {"; " part}
///     part  = name {" " ("bold" | "text=" color | "fill=" color | edges "=" line ":" color)}
///     edges = {"l" | "r" | "t" | "b" | "h" | "v"}      the last two between rows and columns
///     color = ("0" | "1" | "X" | "Y") [("+" | "-") percent]
///
/// "0" and "1" are the theme's lt1 and dk1, "X" is the accent, "Y" the one after it; percents are
/// tints. `greys` replaces the colours of the first style: "X=1 X+80=0-15".
struct Family {
    std::string_view prefix;
    std::size_t first = 1;
    std::size_t last = 7;
    std::size_t accent = 3; ///< the theme index of the first; 3 if it is grey
    std::string_view rules;
    std::string_view greys;
};

constexpr std::string_view kGreys = "X=1 X-25=1 X+80=0-15 X+60=0-35 X+40=1";
constexpr std::string_view kPivotGreys = "X=1+50 X-25=1+50 X+80=0-15 X+60=0-35 X+40=0-25";

constexpr std::array<Family, 20> kFamilies = {{
    {"TableStyleLight", 1, 7, 3,
     "whole text=X-25 tb=thin:X; header bold text=X-25 b=thin:X; total bold text=X-25 t=thin:X; "
     "first bold text=X-25; last bold text=X-25; rows fill=X+80; columns fill=X+80",
     kGreys},
    {"TableStyleLight", 8, 14, 3,
     "whole text=1 lrtb=thin:X; header bold text=0 fill=X; total bold text=1 t=double:X; "
     "first bold text=1; last bold text=1; rows t=thin:X; rows2 t=thin:X; columns l=thin:X; "
     "columns2 l=thin:X",
     kGreys},
    {"TableStyleLight", 15, 21, 3,
     "whole text=1 lrtbhv=thin:X; header bold text=1 b=medium:X; total bold text=1 t=double:X; "
     "first bold text=1; last bold text=1; rows fill=X+80; columns fill=X+80",
     kGreys},
    {"TableStyleMedium", 1, 7, 3,
     "whole text=1 lrtbh=thin:X+40; header bold text=0 fill=X; total bold text=1 t=double:X; "
     "first bold text=1; last bold text=1; rows fill=X+80; columns fill=X+80",
     kGreys},
    {"TableStyleMedium", 8, 14, 3,
     "whole text=1 fill=X+80 hv=thin:0; header bold text=0 fill=X b=thick:0; "
     "total bold text=0 fill=X t=thick:0; first bold text=0 fill=X; last bold text=0 fill=X; "
     "rows fill=X+60; columns fill=X+60",
     kGreys},
    {"TableStyleMedium",
     15,
     15,
     3,
     "whole text=1 lrhv=thin:1 tb=medium:1; header bold text=0 fill=1 b=medium:1; "
     "total t=double:1; first bold text=0 fill=1; last bold text=0 fill=1; rows fill=0-15; "
     "columns fill=0-15",
     {}},
    {"TableStyleMedium",
     16,
     21,
     4,
     "whole text=1 tb=medium:1; header bold text=0 fill=X b=medium:1; total t=double:1; "
     "first bold text=0 fill=X; last bold text=0 fill=X; rows fill=0-15; columns fill=0-15",
     {}},
    {"TableStyleMedium", 22, 28, 3,
     "whole text=1 fill=X+80 lrtbhv=thin:X+40; header bold text=1; total bold text=1 t=medium:X; "
     "first bold text=1; last bold text=1; rows fill=X+60; columns fill=X+60",
     kGreys},
    {"TableStyleDark", 1, 7, 3,
     "whole text=0 fill=X; header bold text=0 fill=1 b=medium:0; "
     "total bold text=0 fill=X-50 t=medium:0; first bold text=0 fill=X-25 r=medium:0; "
     "last bold text=0 fill=X-25 l=medium:0; rows fill=X-25; columns fill=X-25",
     "X=1+45 X-25=1+25 X-50=1+15"},
    {"TableStyleDark", 8, 11, 3,
     "whole fill=X+80; header text=0 fill=Y; total bold text=1 t=double:1; first bold text=1; "
     "last bold text=1; rows fill=X+60; columns fill=X+60",
     "X+80=0-15 X+60=0-35 Y=1"},
    {"PivotStyleLight", 1, 7, 3,
     "whole text=1 h=thin:X+80; header bold text=1 tb=thin:X; total bold text=1 fill=0 tb=thin:X; "
     "rows fill=X+80 tb=thin:X+60; columns fill=X+80 lrtbhv=thin:X+60",
     kPivotGreys},
    {"PivotStyleLight", 8, 14, 3,
     "whole text=X-25 h=thin:X+80; header bold text=1 lrtb=medium:X h=thin:0; "
     "total bold text=1 lrtb=medium:X; first r=thin:X; rows lrtb=thin:X+60; columns lrtb=thin:X",
     "X=1+50 X-25=1 X+80=0-15 X+60=0-35"},
    {"PivotStyleLight", 15, 21, 3,
     "header bold text=1 fill=X+80 b=thin:X+40; total bold text=1 fill=X+80 t=thin:X+40; "
     "rows fill=0-15; columns fill=0-15 lr=thin:0-25",
     "X+80=0-15 X+40=0-35"},
    {"PivotStyleLight",
     22,
     22,
     3,
     "whole text=1 lrtbv=thin:1+50; header bold text=1 b=thin:1+50; total bold text=1 t=thin:1+50; "
     "first bold text=1; rows fill=0-15 tb=thin:1+50; columns fill=0-15",
     {}},
    {"PivotStyleLight",
     23,
     28,
     4,
     "whole text=X-25 lrtbv=thin:X; header text=X-25 b=thin:X; total text=X-25 t=thin:X; "
     "first text=X-25; rows fill=X+80 tb=thin:1+50; columns fill=X+80",
     {}},
    {"PivotStyleMedium", 1, 7, 3,
     "whole text=1 h=thin:X+80; header text=0 fill=X-25 h=thin:X-25; total bold text=1 "
     "t=double:X-25; rows tbh=thin:X-25; columns lr=thin:X-25; corner bold text=0",
     kPivotGreys},
    {"PivotStyleMedium", 8, 14, 3,
     "whole text=1; header bold text=0 fill=X t=medium:X-25; total bold text=1 t=thin:X-25 "
     "b=medium:X-25; rows tbh=thin:X+40; columns lr=thin:X+40",
     kPivotGreys},
    {"PivotStyleMedium",
     15,
     15,
     3,
     "whole text=1 fill=0-5 lrv=thin:0-15; header text=0 fill=1; total text=0 fill=1; "
     "rows fill=0-15 tb=thin:0-25; columns fill=0-15 lr=thin:0-25",
     {}},
    {"PivotStyleMedium",
     16,
     21,
     4,
     "whole text=1 fill=X+80 lrv=thin:X+60; header text=0 fill=1; total text=0 fill=1; "
     "rows fill=X+80 tb=thin:X+60; columns fill=X+80 lr=thin:X+60",
     {}},
    {"PivotStyleMedium", 22, 28, 3,
     "whole text=X-25 fill=X+80 v=thin:0; header bold text=X-25 b=thin:0; total bold text=X-25; "
     "first bold text=X-25 fill=X+60; rows2 fill=X+60",
     "X-25=1+50 X+80=0-15 X+60=0-25"},
}};

constexpr Words<TablePart, 10> kPartNames = {{
    {"whole", TablePart::WholeTable},
    {"header", TablePart::HeaderRow},
    {"total", TablePart::TotalRow},
    {"first", TablePart::FirstColumn},
    {"last", TablePart::LastColumn},
    {"rows", TablePart::FirstRowStripe},
    {"rows2", TablePart::SecondRowStripe},
    {"columns", TablePart::FirstColumnStripe},
    {"columns2", TablePart::SecondColumnStripe},
    {"corner", TablePart::FirstHeaderCell},
}};

constexpr Words<LineStyle, 4> kLineNames = {{
    {"thin", LineStyle::Thin},
    {"medium", LineStyle::Medium},
    {"thick", LineStyle::Thick},
    {"double", LineStyle::Double},
}};

/// Cuts the text before the separator off; without one, all of it.
std::string_view Cut(std::string_view& text, std::string_view separator)
{
    const std::size_t end = text.find(separator);
    const std::string_view piece = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + separator.size());
    return piece;
}

template <typename Value, std::size_t N>
Value Named(const Words<Value, N>& names, std::string_view name)
{
    return ValueOfWord(names, name).value_or(names.front().value);
}

/// One style of a family.
class Builder {
public:
    Builder(const Family& family, std::size_t number, const ThemeColors& theme)
        : theme_(theme), position_(number - family.first),
          greys_(family.accent == 3 && position_ == 0 ? family.greys : std::string_view())
    {
        // Two accents belong to each style of the family that has "Y".
        const bool hasPairs = family.rules.find('Y') != family.rules.npos;
        accent_ = hasPairs ? 2 + 2 * position_ : family.accent + position_;
    }

    book::TableStyle Build(std::string_view rules) const
    {
        book::TableStyle style;
        while (!rules.empty()) {
            std::string_view rule = Cut(rules, "; ");
            PartialStyle& part = style.parts[Named(kPartNames, Cut(rule, " "))];
            while (!rule.empty())
                Apply(Cut(rule, " "), part);
        }
        return style;
    }

private:
    void Apply(std::string_view setting, PartialStyle& part) const
    {
        const std::string_view key = Cut(setting, "=");
        if (key == "bold") {
            part.bold = true;
        }
        else if (key == "text") {
            part.fontColor = ColorOf(setting);
        }
        else if (key == "fill") {
            part.fill.emplace();
            part.fill->pattern = book::FillPattern::Solid;
            part.fill->foreground = ColorOf(setting);
        }
        else {
            const LineStyle line = Named(kLineNames, Cut(setting, ":"));
            for (const char edge : key)
                EdgeOf(part, edge) = book::BorderLine{line, ColorOf(setting)};
        }
    }

    static std::optional<book::BorderLine>& EdgeOf(PartialStyle& part, char edge)
    {
        switch (edge) {
        case 'l':
            return part.left;
        case 'r':
            return part.right;
        case 't':
            return part.top;
        case 'b':
            return part.bottom;
        case 'h':
            return part.innerHorizontal;
        default:
            return part.innerVertical;
        }
    }

    book::Color ColorOf(std::string_view text) const
    {
        for (std::string_view greys = greys_; !greys.empty();) {
            std::string_view grey = Cut(greys, " ");
            if (Cut(grey, "=") == text) {
                text = grey;
                break;
            }
        }
        const char base = text.front();
        const std::size_t index = base == 'X'   ? accent_
                                  : base == 'Y' ? accent_ + 1
                                                : static_cast<std::size_t>(base - '0');
        const auto percent = xml::ReadDigits(text.substr(text.size() > 1 ? 2 : 1)).value_or(0);
        // Files hold tints as shares of 32,767.
        const std::size_t share = percent * 32767 / 100;
        const double tint = static_cast<double>(share) / 32767.0;
        return ApplyTint(theme_.ByIndex(index).value_or(book::kBlack),
                         text.find('-') == text.npos ? tint : -tint);
    }

    const ThemeColors& theme_;
    std::size_t position_;
    std::string_view greys_;
    std::size_t accent_ = 0;
};

} // namespace

std::optional<book::TableStyle> BuiltInTableStyle(std::string_view name, const ThemeColors& theme)
{
    for (const Family& family : kFamilies) {
        if (!name.starts_with(family.prefix))
            continue;
        const auto number = xml::ReadDigits(name.substr(family.prefix.size()));
        if (number && *number >= family.first && *number <= family.last)
            return Builder(family, *number, theme).Build(family.rules);
    }
    return std::nullopt;
}

} // namespace orrery::builtin
