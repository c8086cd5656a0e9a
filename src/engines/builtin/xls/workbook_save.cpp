#include "engines/builtin/xls/bytes.h"
#include "engines/builtin/xls/compound_writer.h"
#include "engines/builtin/xls/copy_identities.h"
#include "engines/builtin/xls/globals_patch.h"
#include "engines/builtin/xls/sheet_bytes.h"
#include "engines/builtin/xls/workbook.h"
#include "util/error.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orrery::xls {
namespace {

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

    explicit Saving(Workbook& workbook)
        : sheets(workbook.SavedSheets()), tabIds(TabIds(*workbook.globals_, sheets)),
          references(*workbook.globals_, sheets),
          identities(*workbook.globals_, *workbook.file_, workbook.template_, sheets),
          recalculate(workbook.SheetsToRecalculate())
    {
    }
};

void Workbook::SaveAs(const std::filesystem::path& target, generate::AccessMode /*accessMode*/)
{
    Naming([&] {
        CompoundWriter writer(*file_);
        std::optional<Saving> saving;
        if (IsChanged()) {
            saving.emplace(*this);
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
    return std::any_of(sheets_.begin(), sheets_.end(), [this](const auto& sheet) {
        return sheet->name_ != globals_->Sheets()[sheet->origin_].Name;
    });
}

std::vector<SavedSheet> Workbook::SavedSheets() const
{
    std::vector<SavedSheet> saved;
    for (const auto& sheet : sheets_)
        saved.push_back({sheet->name_, sheet->origin_, sheet->isCopy_});
    return saved;
}

// Whole sheets are looked at, not single cells: a sheet is computed anew when it was written or
// when its formulas may read one that is.
std::vector<bool> Workbook::SheetsToRecalculate()
{
    std::vector<bool> changed;
    for (const auto& sheet : sheets_)
        changed.push_back(sheet->IsWritten());
    std::map<std::size_t, std::size_t> positions; // of the template's sheets, by origin
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        if (!sheets_[i]->isCopy_)
            positions.emplace(sheets_[i]->origin_, i);
    }
    changed = builtin::SpreadChanges(
        std::move(changed), [&](std::size_t i) { return ReadsOf(*sheets_[i], positions); });
    for (std::size_t i = 0; i < sheets_.size(); ++i)
        changed[i] = changed[i] && OriginalOf(*sheets_[i]).IsWorksheet() &&
                     OriginalOf(*sheets_[i]).Facts().hasFormulas;
    return changed;
}

builtin::SheetReads Workbook::ReadsOf(const Sheet& sheet,
                                      const std::map<std::size_t, std::size_t>& positions)
{
    if (!OriginalOf(sheet).IsWorksheet())
        return {};
    const auto& facts = OriginalOf(sheet).Facts();
    if (!facts.hasFormulas)
        return {};
    const auto ownName = [this](std::uint16_t link) {
        return link < globals_->Links().size() &&
               globals_->Links()[link].book == globals_->OwnBook();
    };
    builtin::SheetReads reads;
    reads.everything = facts.readsElsewhere || !facts.names.empty() ||
                       std::any_of(facts.externNames.begin(), facts.externNames.end(), ownName);
    for (const std::uint16_t link : facts.sheets) {
        const auto span = globals_->OwnSheets(link);
        reads.everything = reads.everything || (span && span->first != span->last);
        if (!span)
            continue;
        const auto position = positions.find(static_cast<std::size_t>(span->first));
        if (position != positions.end())
            reads.sheets.push_back(position->second);
    }
    return reads;
}

std::uint32_t Workbook::TextReferences()
{
    std::size_t references = 0;
    for (const auto& sheet : sheets_)
        references += sheet->cells_ ? sheet->cells_->TextReferences()
                                    : OriginalOf(*sheet).Text()->Index().sharedTexts;
    return static_cast<std::uint32_t>(references);
}

void Workbook::WriteStream(StreamSink& sink, const Saving& saving)
{
    const auto globals = GlobalsBytes(saving);
    sink.Append(globals);
    const auto places = OffsetPlaces(globals);
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

std::string Workbook::GlobalsBytes(const Saving& saving)
{
    const auto names = NamesFor(nullptr);
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
    original.Places().Rename(patch, bytes, NamesFor(&sheet));
    if (!original.IsWorksheet())
        return patch.Apply(bytes);
    return MakeSheet(*original.Text(), bytes, sheet.cells_ ? &*sheet.cells_ : nullptr,
                     saving.recalculate[position], std::move(patch), offset);
}

} // namespace orrery::xls
