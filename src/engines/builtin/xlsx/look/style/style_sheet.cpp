#include "engines/builtin/xlsx/look/style/style_sheet.h"

#include "engines/builtin/common/number_format_codes.h"
#include "engines/builtin/theme/built_in_table_styles.h"
#include "engines/builtin/xlsx/look/style/style_sheet_reader.h"
#include "engines/builtin/xlsx/look/style/table_parts.h"

namespace orrery::xlsx {
namespace {

/// The item, else the first one, else a default one.
template <typename Item> Item ItemAt(const std::vector<Item>& items, std::optional<std::size_t> at)
{
    if (at && *at < items.size())
        return items[*at];
    return items.empty() ? Item() : items.front();
}

} // namespace

StyleSheet::StyleSheet(builtin::ThemeColors theme)
{
    lists_.colors.theme = std::move(theme);
    lists_.formats.emplace_back();
    book::Font font;
    font.name = lists_.colors.theme.minorFont;
    lists_.fonts.push_back(std::move(font));
}

StyleSheet::StyleSheet(builtin::ThemeColors theme, std::string_view xml)
{
    lists_.colors.theme = std::move(theme);
    StyleSheetReader(lists_, xml).Read();
    if (lists_.formats.empty())
        lists_.formats.emplace_back();
}

book::CellStyle StyleSheet::Format(std::size_t index) const
{
    const CellFormat format = WithBase(lists_.formats[index < lists_.formats.size() ? index : 0]);
    book::CellStyle style;
    style.font = ItemAt(lists_.fonts, format.font);
    style.fill = ItemAt(lists_.fills, format.fill);
    style.border = ItemAt(lists_.borders, format.border);
    style.alignment = format.alignment;
    style.numberFormat = NumberFormatOf(format.numberFormat.value_or(0));
    return style;
}

CellFormat StyleSheet::WithBase(const CellFormat& format) const
{
    CellFormat whole = format;
    if (format.base >= lists_.bases.size())
        return whole;
    const CellFormat& base = lists_.bases[format.base];
    if (!whole.font)
        whole.font = base.font;
    if (!whole.fill)
        whole.fill = base.fill;
    if (!whole.border)
        whole.border = base.border;
    if (!whole.numberFormat)
        whole.numberFormat = base.numberFormat;
    return whole;
}

std::string StyleSheet::NumberFormatOf(std::size_t id) const
{
    if (const auto own = lists_.numberFormats.find(id); own != lists_.numberFormats.end())
        return own->second;
    return std::string(builtin::BuiltInNumberFormat(id).value_or("General"));
}

const book::PartialStyle* StyleSheet::Differential(std::size_t index) const
{
    return index < lists_.differentials.size() ? &lists_.differentials[index] : nullptr;
}

std::optional<book::TableStyle> StyleSheet::FindTableStyle(std::string_view name) const
{
    const auto own = lists_.tableStyles.find(name);
    if (own == lists_.tableStyles.end())
        return builtin::BuiltInTableStyle(name, lists_.colors.theme);
    book::TableStyle style;
    for (const TableElement& element : own->second) {
        const auto part = TablePartOf(element.type);
        const book::PartialStyle* look = Differential(element.differential);
        if (!part || look == nullptr)
            continue;
        style.parts[*part] = *look;
        if (std::int32_t* stripe = StripeOf(style, *part))
            *stripe = element.size;
    }
    return style;
}

const book::Font& StyleSheet::NormalFont() const
{
    static const book::Font kDefault;
    std::size_t font = 0;
    if (lists_.normalBase < lists_.bases.size())
        font = lists_.bases[lists_.normalBase].font.value_or(0);
    if (font < lists_.fonts.size())
        return lists_.fonts[font];
    return lists_.fonts.empty() ? kDefault : lists_.fonts.front();
}

} // namespace orrery::xlsx
