#include "engines/libreoffice/plugin/worksheet.h"

#include "engines/common/cell_address.h"
#include "engines/common/cell_text.h"
#include "engines/common/sheet_names.h"
#include "engines/libreoffice/plugin/own_references.h"
#include "engines/libreoffice/plugin/workbook.h"

#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/text/XText.hpp>

#include <algorithm>
#include <utility>

namespace orrery::libreoffice {

using css::uno::UNO_QUERY_THROW;
using util::ErrorKind;

Worksheet::Worksheet(Workbook& workbook, std::string name,
                     const Reference<css::sheet::XSpreadsheet>& sheet)
    : workbook_(workbook), name_(std::move(name)), sheet_(sheet)
{
}

void Worksheet::SetName(std::string_view name)
{
    if (name == name_)
        return;
    workbook_.CheckStructure(name_);
    auto others = workbook_.SheetNames();
    std::erase(others, name_);
    engines::CheckSheetName(name, others);
    const bool renamed = workbook_.Instance().Call([&] {
        const Reference<css::container::XNamed> named(sheet_, UNO_QUERY_THROW);
        named->setName(ToUno(name));
        return named->getName() == ToUno(name);
    });
    if (!renamed)
        throw Error(ErrorKind::InvalidSheetName, std::string(name));
    name_ = name;
}

void Worksheet::CopyAfter(generate::Worksheet& after)
{
    workbook_.CheckStructure(name_);
    const auto names = workbook_.SheetNames();
    const auto place = std::find(names.begin(), names.end(), after.Name());
    const std::string copy = engines::CopyName(name_, names);
    const bool copied = workbook_.Instance().Call([&] {
        if (outerFormats_ == nullptr) {
            LetFormulasFollow(sheet_);
            outerFormats_ = std::make_shared<const OuterFormats>(sheet_);
        }
        const auto& sheets = workbook_.Sheets();
        sheets->copyByName(ToUno(name_), ToUno(copy),
                           static_cast<sal_Int16>(place - names.begin() + 1));
        if (!sheets->hasByName(ToUno(copy)))
            return false;
        const OuterFormats::Sheet made(sheets->getByName(ToUno(copy)), UNO_QUERY_THROW);
        LetChartsFollow(ToUno(name_), made);
        outerFormats_->ApplyTo(made);
        return true;
    });
    if (!copied)
        throw Error(ErrorKind::SheetNotCopied, name_);
    Worksheet& made = workbook_.SheetOf(copy);
    made.guards_ = Guards();
    made.outerFormats_ = outerFormats_;
}

generate::Worksheet* Worksheet::Next()
{
    const auto names = workbook_.SheetNames();
    const auto own = std::find(names.begin(), names.end(), name_);
    return own == names.end() || std::next(own) == names.end()
               ? nullptr
               : &workbook_.SheetOf(*std::next(own));
}

void Worksheet::SetCell(std::int32_t row, std::int32_t column, const generate::CellValue& value,
                        generate::CellMember /*member*/)
{
    const engines::CellAddress address = {row, column};
    if (!workbook_.Whole().Contains(address))
        engines::ThrowOutsideSheet(row, column);
    const auto* const text = std::get_if<std::string>(&value);
    if (text != nullptr)
        engines::CheckTextLength(*text);
    const auto guards = Guards();
    workbook_.Instance().Call([&] {
        const auto cell = sheet_->getCellByPosition(column - 1, row - 1);
        guards->CheckChangeable(sheet_, cell, address);
        if (guards->IsCovered(address))
            return;
        const Reference<css::text::XText> content(cell, UNO_QUERY_THROW);
        if (text != nullptr)
            content->setString(ToUno(*text));
        else if (guards->NamesColumn(address))
            content->setString(ToUno(std::to_string(std::get<std::int16_t>(value))));
        else
            cell->setValue(std::get<std::int16_t>(value));
    });
}

std::shared_ptr<const SheetGuards> Worksheet::Guards()
{
    if (guards_ == nullptr) {
        guards_ = workbook_.Instance().Call([&] {
            return std::make_shared<const SheetGuards>(workbook_.Document(), sheet_,
                                                       workbook_.Whole());
        });
    }
    return guards_;
}

} // namespace orrery::libreoffice
