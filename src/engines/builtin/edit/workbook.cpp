#include "engines/builtin/edit/workbook.h"

#include "book/error.h"
#include "engines/builtin/common/error_path.h"
#include "engines/common/sheet_names.h"
#include "util/error.h"
#include "util/paths.h"

#include <algorithm>
#include <utility>

namespace orrery::edit {

using book::ErrorKind;
using builtin::WithErrorPath;
using util::Error;

Sheet::Sheet(Workbook& workbook, std::string name, std::size_t origin)
    : workbook_(workbook), name_(name), templateName_(std::move(name)), origin_(origin)
{
}

void Sheet::SetName(std::string_view name)
{
    WithErrorPath(workbook_.Path(), [&] { workbook_.Rename(*this, name); });
}

void Sheet::CopyAfter(book::Worksheet& after)
{
    WithErrorPath(workbook_.Path(),
                  [&] { workbook_.Copy(*this, dynamic_cast<const Sheet&>(after)); });
}

book::Worksheet* Sheet::Next()
{
    const std::size_t next = workbook_.PositionOf(*this) + 1;
    return next < workbook_.sheets_.size() ? workbook_.sheets_[next].get() : nullptr;
}

void Sheet::SetCell(std::int32_t row, std::int32_t column, const book::CellValue& value,
                    book::CellMember /*member*/)
{
    if (!IsWorksheet())
        throw Error(ErrorKind::NotAWorksheet, name_);
    WithErrorPath(workbook_.Path(), [&] { Write(row, column, value); });
}

void Workbook::Add(std::unique_ptr<Sheet> sheet)
{
    byName_.emplace(engines::FoldCase(sheet->templateName_), sheet.get());
    originals_.push_back(sheet.get());
    sheets_.push_back(std::move(sheet));
}

book::Worksheet* Workbook::FindWorksheet(std::string_view name)
{
    for (const auto& sheet : sheets_) {
        if (sheet->IsWorksheet() && book::SameName(sheet->name_, name))
            return sheet.get();
    }
    return nullptr;
}

const Sheet* Workbook::FindOriginal(std::string_view templateName) const
{
    const auto found = byName_.find(engines::FoldCase(templateName));
    return found == byName_.end() ? nullptr : found->second;
}

std::size_t Workbook::PositionOf(const Sheet& sheet) const
{
    const auto found = std::find_if(sheets_.begin(), sheets_.end(),
                                    [&](const auto& each) { return each.get() == &sheet; });
    return static_cast<std::size_t>(found - sheets_.begin());
}

std::vector<std::string> Workbook::NamesBeside(const Sheet* sheet) const
{
    std::vector<std::string> names;
    for (const auto& each : sheets_) {
        if (each.get() != sheet)
            names.push_back(each->name_);
    }
    return names;
}

void Workbook::CheckStructure(const Sheet& sheet) const
{
    if (IsStructureProtected())
        throw Error(ErrorKind::StructureProtected, sheet.name_);
}

void Workbook::SetLosses(const std::vector<util::Error>& losses)
{
    losses_.clear();
    for (const Error& loss : losses) {
        const bool isNamed = !loss.Subject().empty();
        losses_.emplace_back(loss.Kind(), isNamed ? loss.Subject() : util::FromPath(path_),
                             loss.Cause());
    }
}

void Workbook::Rename(Sheet& sheet, std::string_view name)
{
    if (name == sheet.name_)
        return;
    CheckStructure(sheet);
    engines::CheckSheetName(name, NamesBeside(&sheet));
    sheet.CheckRenamable();
    sheet.name_ = name;
}

void Workbook::Copy(Sheet& model, const Sheet& after)
{
    CheckStructure(model);
    if (!model.IsWorksheet())
        throw Error(ErrorKind::NotAWorksheet, model.name_);
    if (sheets_.size() >= MaxSheets())
        throw Error(ErrorKind::SheetNotCopied, model.name_, "the workbook has too many sheets");
    std::string name = engines::CopyName(model.name_, NamesBeside(nullptr));
    sheets_.reserve(sheets_.size() + 1); // nothing may fail once the copy is made
    auto copy = model.MakeCopy();
    copy->name_ = std::move(name);
    copy->templateName_ = model.templateName_;
    copy->isCopy_ = true;
    sheets_.insert(sheets_.begin() + static_cast<std::ptrdiff_t>(PositionOf(after)) + 1,
                   std::move(copy));
}

bool Workbook::HasRenamedOriginals() const
{
    return std::any_of(originals_.begin(), originals_.end(),
                       [](const Sheet* sheet) { return sheet->IsRenamed(); });
}

bool Workbook::IsChanged() const
{
    return HasCopies() || HasRenamedOriginals() ||
           std::any_of(sheets_.begin(), sheets_.end(),
                       [](const auto& sheet) { return sheet->IsWritten(); });
}

NameLookup Workbook::NamesSeenBy(const Sheet* owner) const
{
    return [this, owner](std::string_view name) -> std::optional<std::string> {
        const bool itself = owner != nullptr && book::SameName(owner->templateName_, name);
        const Sheet* const meant = itself ? owner : FindOriginal(name);
        if (meant == nullptr || !meant->IsRenamed())
            return std::nullopt;
        return meant->name_;
    };
}

std::vector<bool> Workbook::WrittenSheets() const
{
    std::vector<bool> written;
    for (const auto& sheet : sheets_)
        written.push_back(sheet->IsWritten());
    return written;
}

} // namespace orrery::edit
