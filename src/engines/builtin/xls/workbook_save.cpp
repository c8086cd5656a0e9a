#include "book/error.h"
#include "engines/builtin/common/error_path.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/compound/compound_writer.h"
#include "engines/builtin/xls/copy_identities.h"
#include "engines/builtin/xls/copy_macros.h"
#include "engines/builtin/xls/globals_patch.h"
#include "engines/builtin/xls/sheet/sheet_bytes.h"
#include "engines/builtin/xls/stale_sheets.h"
#include "engines/builtin/xls/workbook.h"
#include "util/error.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace orrery::xls {
namespace {

/// The limit of a saved file's size: twelve times 40 MiB, far beyond the templates that people
/// make, and less than the format's own limit of 2 GiB, with which a file could fill a disk.
constexpr std::uint64_t kMaxFileBytes = std::uint64_t{512} << 20;
/// The same for the data of all controls, which is built in memory.
constexpr std::uint64_t kMaxControlBytes = std::uint64_t{128} << 20;

void CheckGrowth(const char* what, std::uint64_t bytes, std::uint64_t most)
{
    if (bytes > most)
        throw util::Error(book::ErrorKind::TooLargeOutput, {},
                          std::string(what) + " would take " + std::to_string(bytes >> 20) +
                              " MiB, and " + std::to_string(most >> 20) + " MiB is the limit");
}

} // namespace

/// Everything that saving works out before it writes.
struct Workbook::Saving {
    std::vector<SavedSheet> sheets;
    std::vector<std::uint16_t> tabIds;
    References references;
    CopyIdentities identities;
    CopyMacros macros;
    std::vector<bool> recalculate; // by position

    explicit Saving(Workbook& workbook)
        : sheets(workbook.SavedSheets()), tabIds(TabIds(*workbook.globals_, sheets)),
          references(*workbook.globals_, sheets),
          identities(*workbook.globals_, *workbook.file_, workbook.template_, sheets),
          macros(*workbook.file_, workbook.template_, sheets),
          recalculate(workbook.SheetsToRecalculate(sheets))
    {
    }
};

void Workbook::SaveAs(const std::filesystem::path& target, book::AccessMode /*accessMode*/)
{
    builtin::WithErrorPath(Path(), [&] {
        CompoundWriter writer(*file_);
        std::optional<Saving> saving;
        if (IsChanged()) {
            saving.emplace(*this);
            CheckSize(*saving);
            saving->identities.CopyData(writer);
            saving->macros.WriteTo(writer);
            writer.ProduceStream(streamEntry_,
                                 [&](StreamSink& sink) { WriteStream(sink, *saving); });
        }
        else if (wasEncrypted_) {
            writer.ReplaceStream(streamEntry_, stream_);
        }
        writer.SaveTo(target);
        SetLosses(saving ? saving->macros.Losses() : std::vector<util::Error>());
    });
}

/// Before anything is written. The bytes of written cells are few in comparison.
void Workbook::CheckSize(const Saving& saving) const
{
    CheckGrowth("the data of its controls", saving.identities.ControlBytes(), kMaxControlBytes);
    std::uint64_t bytes =
        file_->Size() + saving.identities.AddedBytes() + saving.macros.AddedBytes();
    for (const auto& sheet : saving.sheets) {
        if (sheet.IsCopy)
            bytes += template_[sheet.Origin].Bytes().size();
    }
    CheckGrowth("the file with all copies", bytes, kMaxFileBytes);
}

std::vector<SavedSheet> Workbook::SavedSheets() const
{
    std::vector<SavedSheet> saved;
    for (const Sheet* sheet : Sheets<Sheet>())
        saved.push_back({sheet->CurrentName(), sheet->Origin(), sheet->IsCopy()});
    return saved;
}

std::vector<bool> Workbook::SheetsToRecalculate(const std::vector<SavedSheet>& saved)
{
    return FindStaleSheets(*globals_, template_, saved, WrittenSheets());
}

std::uint32_t Workbook::StringReferences()
{
    std::size_t references = 0;
    for (const Sheet* sheet : Sheets<Sheet>())
        references += sheet->cells_ ? sheet->cells_->StringReferences()
                                    : sheet->Original().Strings().references;
    return static_cast<std::uint32_t>(references);
}

void Workbook::WriteStream(StreamSink& sink, const Saving& saving)
{
    auto globals = GlobalsBytes(saving);
    sink.Append(globals);
    const auto places = OffsetPlaces(globals);
    const auto sheets = Sheets<Sheet>();
    if (places.size() != sheets.size())
        ThrowDamaged("its list of sheets cannot be read");
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        if (sink.Size() > std::numeric_limits<std::uint32_t>::max())
            throw util::Error(book::ErrorKind::SheetNotCopied, sheets[i]->CurrentName(),
                              "the workbook would be larger than its format allows");
        const auto offset = static_cast<std::uint32_t>(sink.Size());
        PutU32(globals, places[i], offset);
        sink.Append(SheetBytes(i, offset, saving));
        if (!sheets[i]->IsCopy())
            sink.Append(sheets[i]->Original().Tail());
    }
    sink.Append(end_.In(stream_));
    // The sheets' offsets, which are near each other.
    const std::size_t begin = places.front();
    const std::size_t end = places.back() + sizeof(std::uint32_t);
    sink.Patch(begin, std::string_view(globals).substr(begin, end - begin));
}

std::string Workbook::GlobalsBytes(const Saving& saving)
{
    const auto names = NamesSeenBy(nullptr);
    const bool recalculate = std::find(saving.recalculate.begin(), saving.recalculate.end(),
                                       true) != saving.recalculate.end();
    SavedGlobals saved{saving.sheets, saving.references, saving.tabIds, names};
    saved.selectsOneSheet = HasCopies();
    saved.recalculate = recalculate;
    if (!globals_->StringsPlace().Empty() || (strings_ && strings_->Changed()))
        saved.strings = &Strings();
    saved.stringReferences = StringReferences();
    saved.drawingGroup = saving.identities.DrawingGroup();
    saved.headerPictures = saving.identities.HeaderPictures();
    return PatchGlobals(*globals_, std::move(saved));
}

/// Makes a copy's bytes differ from its model's where they must.
TextPatch Workbook::MakeCopyBytes(std::string& bytes, std::size_t position, const Saving& saving)
{
    const auto& places = template_[saving.sheets[position].Origin].Places();
    TextPatch patch;
    if (saving.references.ChangeAt(position))
        RemapFormulas(bytes, saving.references.MapFor(position));
    saving.identities.Apply(bytes, patch, position);
    places.SetTabId(bytes, saving.tabIds[position]);
    places.SetCodeName(patch, saving.macros.CodeNameOf(position));
    return patch;
}

std::string Workbook::SheetBytes(std::size_t position, std::size_t offset, const Saving& saving)
{
    const auto& sheet = SheetAt<Sheet>(position);
    auto& original = sheet.Original();
    std::string bytes(original.Bytes());
    TextPatch patch;
    if (sheet.IsCopy())
        patch = MakeCopyBytes(bytes, position, saving);
    // An entry into several selected sheets would go into all of them, so beside copies only the
    // active sheet stays selected.
    if (HasCopies())
        original.Places().Select(bytes,
                                 !sheet.IsCopy() && sheet.Origin() == globals_->ActiveSheet());
    original.Places().Rename(patch, bytes, NamesSeenBy(&sheet));
    if (!original.IsWorksheet() || !original.IsIntact())
        return patch.Apply(bytes);
    return MakeSheet(*original.Text(), bytes, sheet.cells_ ? &*sheet.cells_ : nullptr,
                     saving.recalculate[position], std::move(patch), offset);
}

} // namespace orrery::xls
