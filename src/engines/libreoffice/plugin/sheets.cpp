#include "engines/libreoffice/plugin/sheets.h"

#include "book/error.h"
#include "engines/common/cell_address.h"
#include "engines/common/cell_text.h"
#include "engines/common/sheet_names.h"
#include "engines/libreoffice/plugin/own_references.h"

#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include <algorithm>
#include <utility>

namespace orrery::libreoffice {

using book::ErrorKind;
using css::uno::UNO_QUERY_THROW;

Worksheet::Worksheet(Sheets& sheets, std::string name,
                     const Reference<css::sheet::XSpreadsheet>& sheet)
    : sheets_(sheets), name_(std::move(name)), sheet_(sheet)
{
}

void Worksheet::SetName(std::string_view name)
{
    if (name == name_)
        return;
    sheets_.CheckStructure(name_);
    auto others = sheets_.Names();
    std::erase(others, name_);
    engines::CheckSheetName(name, others);
    const bool renamed = sheets_.Instance().Call([&] {
        const Reference<css::container::XNamed> named(sheet_, UNO_QUERY_THROW);
        named->setName(ToUno(name));
        return named->getName() == ToUno(name);
    });
    if (!renamed)
        throw Error(ErrorKind::InvalidSheetName, std::string(name));
    name_ = name;
}

void Worksheet::CopyAfter(book::Worksheet& after)
{
    sheets_.CheckStructure(name_);
    const auto names = sheets_.Names();
    const auto place = std::find(names.begin(), names.end(), after.Name());
    const std::string copy = engines::CopyName(name_, names);
    const bool copied = sheets_.Instance().Call([&] {
        if (outerFormats_ == nullptr) {
            UpdateFormulas(sheet_);
            outerFormats_ = std::make_shared<const OuterFormats>(sheet_);
        }
        const auto& collection = sheets_.Collection();
        collection->copyByName(ToUno(name_), ToUno(copy),
                               static_cast<sal_Int16>(place - names.begin() + 1));
        if (!collection->hasByName(ToUno(copy)))
            return false;
        const OuterFormats::Sheet made(collection->getByName(ToUno(copy)), UNO_QUERY_THROW);
        UpdateCharts(ToUno(name_), made);
        outerFormats_->ApplyTo(made);
        return true;
    });
    if (!copied)
        throw Error(ErrorKind::SheetNotCopied, name_);
    Worksheet& made = sheets_.Of(copy);
    made.guards_ = Guards();
    made.outerFormats_ = outerFormats_;
}

book::Worksheet* Worksheet::Next()
{
    const auto names = sheets_.Names();
    const auto own = std::find(names.begin(), names.end(), name_);
    return own == names.end() || std::next(own) == names.end() ? nullptr
                                                               : &sheets_.Of(*std::next(own));
}

void Worksheet::SetCell(std::int32_t row, std::int32_t column, const book::CellValue& value,
                        book::CellMember /*member*/)
{
    const engines::CellAddress address = {row, column};
    if (!sheets_.Whole().Contains(address))
        engines::ThrowOutsideSheet(row, column);
    const auto* const text = std::get_if<std::string>(&value);
    if (text != nullptr)
        engines::CheckTextLength(*text);
    const auto guards = Guards();
    sheets_.Instance().Call([&] {
        const auto cell = sheet_->getCellByPosition(column - 1, row - 1);
        guards->CheckChangeable(sheet_, cell, address);
        if (guards->IsHiddenByMerge(address))
            return;
        const Reference<css::text::XText> content(cell, UNO_QUERY_THROW);
        if (text != nullptr)
            content->setString(ToUno(*text));
        else if (guards->IsTableHeader(address))
            content->setString(ToUno(std::to_string(std::get<std::int16_t>(value))));
        else
            cell->setValue(std::get<std::int16_t>(value));
    });
}

std::shared_ptr<const SheetGuards> Worksheet::Guards()
{
    if (guards_ == nullptr) {
        guards_ = sheets_.Instance().Call([&] {
            return std::make_shared<const SheetGuards>(sheets_.Document(), sheet_, sheets_.Whole());
        });
    }
    return guards_;
}

void Sheets::Adopt(const Reference<css::frame::XModel2>& document, bool isBinary)
{
    known_.clear();
    document_ = document;
    collection_ =
        Reference<css::sheet::XSpreadsheetDocument>(document, UNO_QUERY_THROW)->getSheets();
    isBinary_ = isBinary;
}

std::vector<std::string> Sheets::Names() const
{
    return office_.Call([&] {
        const auto names = collection_->getElementNames();
        std::vector<std::string> texts(static_cast<std::size_t>(names.getLength()));
        std::transform(names.begin(), names.end(), texts.begin(), FromUno);
        return texts;
    });
}

Worksheet& Sheets::Of(const std::string& name)
{
    // A sheet is renamed only through its own object, so its name identifies it.
    const auto known = std::find_if(known_.begin(), known_.end(),
                                    [&](const auto& sheet) { return sheet->Name() == name; });
    if (known != known_.end())
        return **known;
    Reference<css::sheet::XSpreadsheet> sheet = office_.Call([&] {
        return Reference<css::sheet::XSpreadsheet>(collection_->getByName(ToUno(name)),
                                                   UNO_QUERY_THROW);
    });
    known_.push_back(std::make_unique<Worksheet>(*this, name, sheet));
    return *known_.back();
}

void Sheets::CheckStructure(const std::string& sheet) const
{
    const bool isProtected = office_.Call([&] {
        const Reference<css::util::XProtectable> structure(document_, UNO_QUERY_THROW);
        return static_cast<bool>(structure->isProtected());
    });
    if (isProtected)
        throw Error(ErrorKind::StructureProtected, sheet);
}

} // namespace orrery::libreoffice
