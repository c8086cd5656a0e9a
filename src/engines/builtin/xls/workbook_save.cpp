#include "engines/builtin/xls/bytes.h"
#include "engines/builtin/xls/compound_writer.h"
#include "engines/builtin/xls/copy_identities.h"
#include "engines/builtin/xls/globals_patch.h"
#include "engines/builtin/xls/sheet_bytes.h"
#include "engines/builtin/xls/stale_sheets.h"
#include "engines/builtin/xls/workbook.h"
#include "engines/common/sheet_names.h"
#include "util/error.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <unordered_map>
#include <utility>

namespace orrery::xls {
namespace {

/// What a saved file may grow to: twelve times 40 MiB, far beyond the templates that people make,
/// and less than what the format's own limit of 2 GiB would fill a disk with.
constexpr std::uint64_t kMostFileBytes = std::uint64_t{512} << 20;
/// The same for the data of all controls, which are made in memory.
constexpr std::uint64_t kMostControlBytes = std::uint64_t{128} << 20;

void CheckGrowth(const char* what, std::uint64_t bytes, std::uint64_t most)
{
    if (bytes > most)
        throw util::Error(util::ErrorKind::TooLargeOutput, {},
                          std::string(what) + " would take " + std::to_string(bytes >> 20) +
                              " MiB, and " + std::to_string(most >> 20) + " MiB is the limit");
}

std::string Number(std::uint32_t value)
{
    std::string bytes;
    AppendU32(bytes, value);
    return bytes;
}

} // namespace

/// What one save works out before it writes.
struct Workbook::Saving {
    std::vector<SavedSheet> sheets;
    std::vector<std::uint16_t> tabIds;
    References references;
    CopyIdentities identities;
    std::vector<bool> recalculate; // by position
    /// The template's sheets by their names there, folded.
    std::unordered_map<std::string, const Sheet*> originals;

    explicit Saving(Workbook& workbook)
        : sheets(workbook.SavedSheets()), tabIds(TabIds(*workbook.globals_, sheets)),
          references(*workbook.globals_, sheets),
          identities(*workbook.globals_, *workbook.file_, workbook.template_, sheets),
          recalculate(workbook.StaleSheets(sheets))
    {
        for (const auto& sheet : workbook.sheets_) {
            if (!sheet->isCopy_)
                originals.emplace(engines::FoldCase(workbook.TemplateName(*sheet)), sheet.get());
        }
    }
};

void Workbook::SaveAs(const std::filesystem::path& target, generate::AccessMode /*accessMode*/)
{
    Naming([&] {
        CompoundWriter writer(*file_);
        std::optional<Saving> saving;
        if (IsChanged()) {
            saving.emplace(*this);
            CheckSize(*saving);
            saving->identities.CopyData(writer);
            writer.ProduceStream(streamEntry_,
                                 [&](StreamSink& sink) { WriteStream(sink, *saving); });
        }
        else if (wasEncrypted_) {
            writer.ReplaceStream(streamEntry_, stream_);
        }
        writer.SaveTo(target);
    });
}

bool Workbook::IsChanged() const
{
    return HasCopies() || HasRenamed() ||
           std::any_of(sheets_.begin(), sheets_.end(),
                       [](const auto& sheet) { return sheet->IsWritten(); });
}

bool Workbook::HasCopies() const
{
    return sheets_.size() > template_.size();
}

bool Workbook::HasRenamed() const
{
    return std::any_of(sheets_.begin(), sheets_.end(),
                       [this](const auto& sheet) { return sheet->name_ != TemplateName(*sheet); });
}

/// Before anything is written. What is written into cells is little beside it.
void Workbook::CheckSize(const Saving& saving) const
{
    CheckGrowth("the data of its controls", saving.identities.ControlBytes(), kMostControlBytes);
    std::uint64_t bytes = file_->Size() + saving.identities.AddedBytes();
    for (const auto& sheet : sheets_) {
        if (sheet->isCopy_)
            bytes += template_[sheet->origin_].Bytes().size();
    }
    CheckGrowth("the file with all copies", bytes, kMostFileBytes);
}

std::vector<SavedSheet> Workbook::SavedSheets() const
{
    std::vector<SavedSheet> saved;
    for (const auto& sheet : sheets_)
        saved.push_back({sheet->name_, sheet->origin_, sheet->isCopy_});
    return saved;
}

std::vector<bool> Workbook::StaleSheets(const std::vector<SavedSheet>& saved)
{
    std::vector<bool> written;
    for (const auto& sheet : sheets_)
        written.push_back(sheet->IsWritten());
    return FindStaleSheets(*globals_, template_, saved, std::move(written));
}

std::uint32_t Workbook::TextReferences()
{
    std::size_t references = 0;
    for (const auto& sheet : sheets_)
        references +=
            sheet->cells_ ? sheet->cells_->TextReferences() : OriginalOf(*sheet).SharedTexts();
    return static_cast<std::uint32_t>(references);
}

void Workbook::WriteStream(StreamSink& sink, const Saving& saving)
{
    const auto globals = GlobalsBytes(saving);
    sink.Append(globals);
    const auto places = OffsetPlaces(globals);
    if (places.size() != sheets_.size())
        ThrowDamaged("its list of sheets cannot be read");
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        if (sink.Size() > std::numeric_limits<std::uint32_t>::max())
            throw util::Error(util::ErrorKind::SheetNotCopied, sheets_[i]->name_,
                              "the workbook would be larger than its format allows");
        const auto offset = static_cast<std::uint32_t>(sink.Size());
        sink.Patch(places[i], Number(offset));
        sink.Append(SheetBytes(i, offset, saving));
        if (!sheets_[i]->isCopy_)
            sink.Append(OriginalOf(*sheets_[i]).Tail());
    }
    sink.Append(end_.In(stream_));
}

SheetNameLookup Workbook::NamesFor(const Sheet* owner, const Saving& saving) const
{
    return [this, owner, &saving](std::string_view name) -> std::optional<std::string> {
        const auto folded = engines::FoldCase(name);
        const auto found = saving.originals.find(folded);
        const Sheet* named = found == saving.originals.end() ? nullptr : found->second;
        if (owner && engines::FoldCase(TemplateName(*owner)) == folded)
            named = owner;
        if (named == nullptr || named->name_ == TemplateName(*named))
            return std::nullopt;
        return named->name_;
    };
}

std::string Workbook::GlobalsBytes(const Saving& saving)
{
    const auto names = NamesFor(nullptr, saving);
    const bool recalculate = std::find(saving.recalculate.begin(), saving.recalculate.end(),
                                       true) != saving.recalculate.end();
    SavedGlobals saved{saving.sheets, saving.references, saving.tabIds, names};
    saved.selectsOneSheet = HasCopies();
    saved.recalculate = recalculate;
    if (!globals_->StringsPlace().Empty() || (strings_ && strings_->Changed()))
        saved.strings = &Strings();
    saved.textReferences = TextReferences();
    saved.drawingGroup = saving.identities.DrawingGroup();
    saved.headerPictures = saving.identities.HeaderPictures();
    return PatchGlobals(*globals_, saved);
}

/// Gives a copy's bytes what tells it from its model.
TextPatch Workbook::MakeCopy(std::string& bytes, std::size_t position, const Saving& saving)
{
    const auto& places = OriginalOf(*sheets_[position]).Places();
    TextPatch patch;
    if (saving.references.ChangeAt(position))
        RemapFormulas(bytes, saving.references.MapFor(position));
    saving.identities.Apply(bytes, patch, position);
    places.SetTabId(bytes, saving.tabIds[position]);
    places.RemoveCodeName(patch);
    return patch;
}

std::string Workbook::SheetBytes(std::size_t position, std::size_t offset, const Saving& saving)
{
    const auto& sheet = *sheets_[position];
    auto& original = OriginalOf(sheet);
    std::string bytes(original.Bytes());
    TextPatch patch;
    if (sheet.isCopy_)
        patch = MakeCopy(bytes, position, saving);
    // Of several selected sheets every entry would go into all of them, so only the active one
    // stays selected beside copies.
    if (HasCopies())
        original.Places().Select(bytes, !sheet.isCopy_ && sheet.origin_ == globals_->ActiveSheet());
    original.Places().Rename(patch, bytes, NamesFor(&sheet, saving));
    if (!original.IsWorksheet() || !original.IsSound())
        return patch.Apply(bytes);
    return MakeSheet(*original.Text(), bytes, sheet.cells_ ? &*sheet.cells_ : nullptr,
                     saving.recalculate[position], std::move(patch), offset);
}

} // namespace orrery::xls
