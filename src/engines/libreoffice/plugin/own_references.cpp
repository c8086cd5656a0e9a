#include "engines/libreoffice/plugin/own_references.h"

#include <com/sun/star/chart2/XChartDocument.hpp>
#include <com/sun/star/chart2/data/XDataSource.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/document/XEmbeddedObjectSupplier.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>

namespace orrery::libreoffice {
namespace {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using Sheet = Reference<css::sheet::XSpreadsheet>;

rtl::OUString NameOf(const Sheet& sheet)
{
    return Reference<css::container::XNamed>(sheet, UNO_QUERY_THROW)->getName();
}

/// Sets the formula of a cell, which is "{=...}" if the cell is part of an array.
void SetFormula(const Sheet& sheet, const Reference<css::table::XCell>& cell,
                const rtl::OUString& formula)
{
    if (!formula.startsWith("{")) {
        cell->setFormula(formula);
        return;
    }
    const auto array =
        sheet->createCursorByRange(Reference<css::sheet::XSheetCellRange>(cell, UNO_QUERY_THROW));
    array->collapseToCurrentArray();
    Reference<css::sheet::XArrayFormulaRange>(array, UNO_QUERY_THROW)
        ->setArrayFormula(formula.copy(1, formula.getLength() - 2));
}

/// The data of a chart, with the ranges that it comes from.
using Data = Reference<css::chart2::data::XDataSequence>;

/// The data for the ranges with the sheet replaced; empty if nothing changes.
Data DataOf(const Reference<css::chart2::data::XDataProvider>& provider, const Data& data,
            const rtl::OUString& from, const rtl::OUString& prefix)
{
    if (!data.is())
        return {};
    const auto ranges = data->getSourceRangeRepresentation();
    const auto others = ReplaceSheet(from, prefix, ranges);
    if (others == ranges || !provider->createDataSequenceByRangeRepresentationPossible(others))
        return {};
    const auto made = provider->createDataSequenceByRangeRepresentation(others);
    const Reference<css::beans::XPropertySet> properties(made, UNO_QUERY_THROW);
    properties->setPropertyValue(
        "Role",
        Reference<css::beans::XPropertySet>(data, UNO_QUERY_THROW)->getPropertyValue("Role"));
    return made;
}

void UpdateChart(const Reference<css::chart2::XChartDocument>& chart, const rtl::OUString& from,
                 const rtl::OUString& prefix)
{
    const auto provider = chart->getDataProvider();
    if (!provider.is())
        return; // the chart has its own data
    const Reference<css::chart2::data::XDataSource> source(chart, UNO_QUERY_THROW);
    for (const auto& series : source->getDataSequences()) {
        if (const auto values = DataOf(provider, series->getValues(), from, prefix); values.is())
            series->setValues(values);
        if (const auto label = DataOf(provider, series->getLabel(), from, prefix); label.is())
            series->setLabel(label);
    }
}

} // namespace

rtl::OUString SheetPrefix(const rtl::OUString& sheetName)
{
    return "'" + sheetName.replaceAll("'", "''") + "'.";
}

rtl::OUString ReplaceSheet(const rtl::OUString& sheetName, const rtl::OUString& prefix,
                           const rtl::OUString& text)
{
    const rtl::OUString quoted = "$" + SheetPrefix(sheetName);
    const rtl::OUString plain = "$" + sheetName + ".";
    rtl::OUString result;
    sal_Unicode inside = 0; // the quotation mark of the current text or name; 0 outside
    for (sal_Int32 at = 0; at < text.getLength(); ++at) {
        const bool isReference = inside == 0 && (at == 0 || text[at - 1] != '#');
        if (isReference && (text.match(quoted, at) || text.match(plain, at))) {
            result += prefix;
            at += (text.match(quoted, at) ? quoted : plain).getLength() - 1;
            continue;
        }
        if (inside == text[at])
            inside = 0;
        else if (inside == 0 && (text[at] == '"' || text[at] == '\''))
            inside = text[at];
        result += rtl::OUString(text[at]);
    }
    return result;
}

void UpdateFormulas(const Sheet& model)
{
    const auto name = NameOf(model);
    const auto prefix = SheetPrefix(name); // without "$" it is the sheet of the formula
    const auto ranges = Reference<css::sheet::XCellRangesQuery>(model, UNO_QUERY_THROW)
                            ->queryContentCells(css::sheet::CellFlags::FORMULA);
    for (const auto& place : ranges->getRangeAddresses()) {
        const Reference<css::sheet::XCellRangeFormula> range(
            model->getCellRangeByPosition(place.StartColumn, place.StartRow, place.EndColumn,
                                          place.EndRow),
            UNO_QUERY_THROW);
        sal_Int32 row = place.StartRow;
        for (const auto& formulas : range->getFormulaArray()) {
            sal_Int32 column = place.StartColumn;
            for (const auto& formula : formulas) {
                const auto follows = ReplaceSheet(name, prefix, formula);
                if (follows != formula)
                    SetFormula(model, model->getCellByPosition(column, row), follows);
                ++column;
            }
            ++row;
        }
    }
}

void UpdateCharts(const rtl::OUString& model, const Sheet& copy)
{
    const auto prefix = "$" + SheetPrefix(NameOf(copy));
    const auto charts =
        Reference<css::table::XTableChartsSupplier>(copy, UNO_QUERY_THROW)->getCharts();
    for (const auto& name : charts->getElementNames()) {
        const Reference<css::document::XEmbeddedObjectSupplier> holder(charts->getByName(name),
                                                                       UNO_QUERY_THROW);
        const Reference<css::chart2::XChartDocument> chart(holder->getEmbeddedObject(), UNO_QUERY);
        if (chart.is())
            UpdateChart(chart, model, prefix);
    }
}

} // namespace orrery::libreoffice
