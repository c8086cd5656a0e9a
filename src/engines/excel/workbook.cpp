#include "engines/excel/workbook.h"

#include "book/error.h"
#include "engines/excel/typed_text.h"
#include "util/error.h"

#include <algorithm>

namespace orrery::excel {
namespace {

/// Whether a collection has no element of the requested name.
bool IsNotInCollection(HRESULT code)
{
    constexpr auto subscriptOutOfRange = static_cast<HRESULT>(0x800A0009);
    constexpr auto refused = static_cast<HRESULT>(0x800A03EC); // the application's own error 1004
    return code == DISP_E_BADINDEX || code == subscriptOutOfRange || code == refused;
}

Variant VariantOf(const book::CellValue& value)
{
    if (const auto* const number = std::get_if<std::int16_t>(&value))
        return Variant(*number);
    return Variant(std::string_view(TypedAsText(std::get<std::string>(value))));
}

} // namespace

void Worksheet::CopyAfter(book::Worksheet& after)
{
    const Object& place = static_cast<Worksheet&>(after).sheet_;
    sheet_.Call("Copy", {Variant::Omitted(), Variant(place.Interface())});
}

book::Worksheet* Worksheet::Next()
{
    auto next = sheet_.Get("Next").TakeObject();
    return next ? &workbook_.SheetOf(std::move(next)) : nullptr;
}

void Worksheet::SetCell(std::int32_t row, std::int32_t column, const book::CellValue& value,
                        book::CellMember member)
{
    const Object cell =
        ObjectFrom(sheet_.Get("Cells", {Variant(row), Variant(column)}), workbook_.Model().range);
    cell.Put(member == book::CellMember::Value ? "Value" : kDefaultMember, VariantOf(value));
}

bool Worksheet::IsVisible() const
{
    constexpr std::int32_t visible = -1; // the two kinds of hidden sheets have other numbers
    return sheet_.Get("Visible").AsNumber() == visible;
}

book::Worksheet* Workbook::FindWorksheet(std::string_view name)
{
    return Find(name);
}

Worksheet* Workbook::Find(std::string_view name)
{
    const Object& worksheets = Worksheets();
    try {
        auto sheet = worksheets.Get(kDefaultMember, {Variant(name)}).TakeObject();
        return sheet ? &SheetOf(std::move(sheet)) : nullptr;
    }
    catch (const CallFailure& failure) {
        if (!IsNotInCollection(failure.Code()))
            throw;
        return nullptr;
    }
}

void Workbook::SaveAs(const std::filesystem::path& target, book::AccessMode accessMode)
{
    // File name, file format, password, password for writing, read-only recommended, backup,
    // access.
    workbook_.Call("SaveAs",
                   {Variant(std::string_view(PathText(target))), Variant::Omitted(),
                    Variant::Omitted(), Variant::Omitted(), Variant::Omitted(), Variant::Omitted(),
                    Variant(std::int32_t{static_cast<std::int16_t>(accessMode)})});
}

void Workbook::ExportPdf(const std::vector<std::string>& sheets,
                         const std::filesystem::path& target)
{
    bool isAnySelected = false;
    for (const std::string& name : sheets) {
        const Worksheet* const sheet = Find(name);
        if (sheet == nullptr || !sheet->IsVisible())
            continue;
        sheet->Select(!isAnySelected);
        isAnySelected = true;
    }
    if (!isAnySelected)
        throw Error(book::ErrorKind::NothingToPrint);
    // The active sheet is exported together with the others that are selected.
    const Object active = ObjectFrom(workbook_.Get("ActiveSheet"), model_.worksheet);
    // Type, file name, quality, document properties, print areas ignored, first page, last page,
    // open afterwards.
    active.Call("ExportAsFixedFormat",
                {Variant(std::int32_t{0}), Variant(std::string_view(PathText(target))),
                 Variant(std::int32_t{0}), Variant(true), Variant(false), Variant::Omitted(),
                 Variant::Omitted(), Variant(false)});
}

Worksheet& Workbook::SheetOf(Pointer<IDispatch> sheet)
{
    auto identity = IdentityOf(*sheet.Get());
    const auto known = std::find_if(sheets_.begin(), sheets_.end(), [&](const KnownSheet& one) {
        return one.identity.Get() == identity.Get();
    });
    if (known != sheets_.end())
        return *known->sheet;
    sheets_.push_back(
        {std::move(identity),
         std::make_unique<Worksheet>(Object(std::move(sheet), model_.worksheet), *this)});
    return *sheets_.back().sheet;
}

const Object& Workbook::Worksheets()
{
    if (!worksheets_)
        worksheets_.emplace(ObjectFrom(workbook_.Get("Worksheets"), model_.worksheets));
    return *worksheets_;
}

} // namespace orrery::excel
