#include "engines/libreoffice/plugin/outer_formats.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/sheet/XCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>

#include <array>
#include <utility>

namespace orrery::libreoffice {
namespace {

namespace css = com::sun::star;
using css::table::CellRangeAddress;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

constexpr const char* kStyle = "CellStyle";

/// A cell's format and protection. The style comes first, because it resets the others.
constexpr std::array kProperties = {
    kStyle,         "NumberFormat",   "CellProtection", "CellBackColor", "HoriJustify",
    "VertJustify",  "IsTextWrapped",  "ParaIndent",     "ShrinkToFit",   "RotateAngle",
    "CharFontName", "CharFontFamily", "CharHeight",     "CharColor",     "CharWeight",
    "CharPosture",  "CharUnderline",  "CharStrikeout",  "TopBorder2",    "BottomBorder2",
    "LeftBorder2",  "RightBorder2",   "DiagonalTLBR2",  "DiagonalBLTR2"};

CellRangeAddress AddressOf(const Reference<css::uno::XInterface>& cells)
{
    return Reference<css::sheet::XCellRangeAddressable>(cells, UNO_QUERY_THROW)->getRangeAddress();
}

/// Nothing if the cell has the default format.
std::vector<css::beans::PropertyValue> FormatOf(const Reference<css::uno::XInterface>& cell)
{
    const Reference<css::beans::XPropertySet> properties(cell, UNO_QUERY_THROW);
    const Reference<css::beans::XPropertyState> states(cell, UNO_QUERY_THROW);
    std::vector<css::beans::PropertyValue> format;
    for (const char* const each : kProperties) {
        css::beans::PropertyValue property;
        property.Name = rtl::OUString::createFromAscii(each);
        property.Value = properties->getPropertyValue(property.Name);
        const bool isOwn =
            each == kStyle
                ? property.Value != css::uno::Any(rtl::OUString("Default"))
                : states->getPropertyState(property.Name) == css::beans::PropertyState_DIRECT_VALUE;
        if (isOwn)
            format.push_back(property);
    }
    return format;
}

} // namespace

OuterFormats::OuterFormats(const Sheet& model)
{
    const auto whole = AddressOf(model);
    const auto cursor = model->createCursor();
    Reference<css::sheet::XUsedAreaCursor>(cursor, UNO_QUERY_THROW)->gotoEndOfUsedArea(false);
    const auto first = AddressOf(cursor).EndColumn + 1;
    if (first > whole.EndColumn)
        return;
    const Reference<css::sheet::XUniqueCellFormatRangesSupplier> outer(
        model->getCellRangeByPosition(first, 0, whole.EndColumn, whole.EndRow), UNO_QUERY_THROW);
    const auto groups = outer->getUniqueCellFormatRanges();
    for (sal_Int32 i = 0; i < groups->getCount(); ++i) {
        const Reference<css::sheet::XSheetCellRanges> group(groups->getByIndex(i), UNO_QUERY_THROW);
        for (const auto& place : group->getRangeAddresses()) {
            if (place.EndColumn != whole.EndColumn)
                continue;
            const auto cell = model->getCellByPosition(place.EndColumn, place.StartRow);
            if (auto format = FormatOf(cell); !format.empty())
                bands_.push_back({place, std::move(format)});
        }
    }
}

void OuterFormats::ApplyTo(const Sheet& copy) const
{
    for (const auto& [place, format] : bands_) {
        const Reference<css::beans::XPropertySet> cells(
            copy->getCellRangeByPosition(place.StartColumn, place.StartRow, place.EndColumn,
                                         place.EndRow),
            UNO_QUERY_THROW);
        for (const auto& property : format)
            cells->setPropertyValue(property.Name, property.Value);
    }
}

} // namespace orrery::libreoffice
