#include "engines/builtin/xls/bytes.h"
#include "engines/builtin/xls/compound_writer.h"
#include "engines/builtin/xls/globals_patch.h"
#include "engines/builtin/xls/sheet_bytes.h"
#include "engines/builtin/xls/workbook.h"
#include "util/error.h"
#include "util/unicode.h"

#include <algorithm>
#include <limits>
#include <map>
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

/// The drawings of the workbook's sheets and those of their headers and footers.
struct Workbook::DrawingGroups {
    DrawingGroup sheets;
    DrawingGroup headers;
    using Ids = std::pair<std::vector<FreshDrawingIds>, std::vector<FreshDrawingIds>>;

    explicit DrawingGroups(const Globals& globals)
        : sheets(DrawingKind::Sheet, globals.DrawingGroupPlace().In(globals.Stream())),
          headers(DrawingKind::HeaderFooter, globals.HeaderPicturesPlace().In(globals.Stream()))
    {
    }

    void Reserve(const DrawingPlaces& places)
    {
        sheets.Reserve(places);
        headers.Reserve(places);
    }

    Ids AddCopy(const DrawingPlaces& places)
    {
        return {sheets.AddCopy(places), headers.AddCopy(places)};
    }
};

/// What one save works out before it writes.
struct Workbook::Saving {
    std::vector<SavedSheet> sheets;
    std::vector<std::uint16_t> tabIds;
    References references;
    std::vector<bool> recalculate; // by position
    DrawingGroups drawings;
    std::map<std::size_t, DrawingGroups::Ids> drawingIds; // of copies, by position
    std::map<std::size_t, FreshEmbedding> embedded;       // the same
    std::map<std::size_t, FreshTables> tables;            // the same

    Saving(const Globals& globals, std::vector<SavedSheet> saved)
        : sheets(std::move(saved)), tabIds(TabIds(globals, sheets)), references(globals, sheets),
          drawings(globals)
    {
    }
};

void Workbook::SaveAs(const std::filesystem::path& target, generate::AccessMode /*accessMode*/)
{
    Naming([&] {
        CompoundWriter writer(*file_);
        std::optional<Saving> saving;
        if (IsChanged()) {
            saving.emplace(*globals_, SavedSheets());
            saving->recalculate = SheetsToRecalculate();
            GiveDrawingIds(*saving);
            NameTables(*saving);
            CopyEmbedded(*saving, writer);
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
    std::vector<bool> changed(sheets_.size());
    bool found = false;
    for (std::size_t i = 0; i < sheets_.size(); ++i)
        found |= changed[i] = sheets_[i]->IsWritten();
    while (found) {
        found = false;
        for (std::size_t i = 0; i < sheets_.size(); ++i) {
            if (!changed[i] && ReadsOneOf(*sheets_[i], changed))
                found = changed[i] = true;
        }
    }
    for (std::size_t i = 0; i < sheets_.size(); ++i)
        changed[i] = changed[i] && template_[sheets_[i]->origin_].isWorksheet &&
                     FactsOf(sheets_[i]->origin_).hasFormulas;
    return changed;
}

bool Workbook::ReadsOneOf(const Sheet& sheet, const std::vector<bool>& changed)
{
    if (!template_[sheet.origin_].isWorksheet)
        return false;
    const auto& facts = FactsOf(sheet.origin_);
    if (!facts.hasFormulas)
        return false;
    const auto ownName = [this](std::uint16_t link) {
        return link < globals_->Links().size() &&
               globals_->Links()[link].book == globals_->OwnBook();
    };
    if (facts.readsElsewhere || !facts.names.empty() ||
        std::any_of(facts.externNames.begin(), facts.externNames.end(), ownName))
        return true;
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        const auto reads = [&](std::uint16_t link) {
            const auto span = globals_->OwnSheets(link);
            return span && (span->first != span->last || span->IsOnly(sheets_[i]->origin_));
        };
        if (changed[i] && std::any_of(facts.sheets.begin(), facts.sheets.end(), reads))
            return true;
    }
    return false;
}

std::uint32_t Workbook::TextReferences()
{
    std::size_t references = 0;
    for (const auto& sheet : sheets_)
        references += sheet->cells_ ? sheet->cells_->TextReferences()
                                    : TextOf(sheet->origin_)->Index().sharedTexts;
    return static_cast<std::uint32_t>(references);
}

const DrawingPlaces& Workbook::DrawingsOf(std::size_t origin)
{
    auto& sheet = template_[origin];
    if (!sheet.drawings)
        sheet.drawings = FindDrawings(BytesOf(sheet));
    return *sheet.drawings;
}

/// What cannot be copied is told when it is asked for, not when the workbook is saved.
void Workbook::CheckCopyable(const Sheet& model)
{
    auto& sheet = template_[model.origin_];
    if (sheet.isCopyable)
        return;
    try {
        DrawingGroups(*globals_).AddCopy(DrawingsOf(model.origin_));
    }
    catch (const util::Error& error) {
        throw util::Error(error.Kind(), model.name_, error.Cause());
    }
    sheet.isCopyable = true;
}

void Workbook::GiveDrawingIds(Saving& saving)
{
    if (!HasCopies())
        return;
    for (std::size_t i = 0; i < template_.size(); ++i)
        saving.drawings.Reserve(DrawingsOf(i));
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        const auto& places = DrawingsOf(sheets_[i]->origin_);
        if (sheets_[i]->isCopy_ && !places.drawings.empty())
            saving.drawingIds[i] = saving.drawings.AddCopy(places);
    }
}

const EmbeddedPlaces& Workbook::EmbeddedIn(std::size_t origin)
{
    auto& sheet = template_[origin];
    if (!sheet.embedded)
        sheet.embedded = FindEmbedded(BytesOf(sheet));
    return *sheet.embedded;
}

/// The objects of a copied sheet get data of their own, in other storages and streams.
void Workbook::CopyEmbedded(Saving& saving, CompoundWriter& writer)
{
    const auto owns = [this](const auto& sheet) {
        return sheet->isCopy_ && !EmbeddedIn(sheet->origin_).Empty();
    };
    if (std::none_of(sheets_.begin(), sheets_.end(), owns))
        return;
    std::vector<std::string> names;
    for (const auto member : file_->MembersOf(kRootEntry))
        names.push_back(util::FromUtf16(file_->Entry(member).name));
    const auto controls = file_->Find("Ctls");
    EmbeddedCopies copies(names, controls ? file_->ReadStream(*controls) : std::string());
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        if (owns(sheets_[i]))
            saving.embedded[i] = copies.AddCopy(EmbeddedIn(sheets_[i]->origin_));
    }
    for (const auto& [from, to] : copies.Storages())
        writer.CopyStorage(file_->Find(from).value(), to);
    if (copies.ControlsChanged())
        writer.ReplaceStream(*controls, copies.Controls());
}

const TablePlaces& Workbook::TablesIn(std::size_t origin)
{
    auto& sheet = template_[origin];
    if (!sheet.tables)
        sheet.tables = FindTables(BytesOf(sheet));
    return *sheet.tables;
}

/// The tables of a copied sheet get names and ids of their own.
void Workbook::NameTables(Saving& saving)
{
    const auto owns = [this](const auto& sheet) {
        return sheet->isCopy_ && !TablesIn(sheet->origin_).Empty();
    };
    if (std::none_of(sheets_.begin(), sheets_.end(), owns))
        return;
    std::vector<std::string> names;
    for (const auto& name : globals_->Names())
        names.push_back(name.Key);
    TableIdentities identities(names);
    for (std::size_t i = 0; i < template_.size(); ++i)
        identities.Reserve(TablesIn(i));
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        if (owns(sheets_[i]))
            saving.tables[i] = identities.AddCopy(TablesIn(sheets_[i]->origin_));
    }
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
            sink.Append(template_[sheets_[i]->origin_].tail.In(stream_));
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
    saving.drawings.sheets.AppendTo(saved.drawingGroup);
    if (saving.drawings.headers.Changed())
        saving.drawings.headers.AppendTo(saved.headerPictures);
    return PatchGlobals(*globals_, saved);
}

/// Gives a copy's bytes what tells it from its model.
void Workbook::MakeCopy(std::string& bytes, std::size_t position, const Saving& saving)
{
    const auto origin = sheets_[position]->origin_;
    if (saving.references.ChangeAt(position))
        RemapFormulas(bytes, saving.references.MapFor(position));
    if (const auto ids = saving.drawingIds.find(position); ids != saving.drawingIds.end()) {
        PutDrawingIds(bytes, DrawingsOf(origin), ids->second.first);
        PutDrawingIds(bytes, DrawingsOf(origin), ids->second.second);
    }
    if (const auto own = saving.embedded.find(position); own != saving.embedded.end())
        PutEmbedding(bytes, EmbeddedIn(origin), own->second);
    template_[origin].places.SetTabId(bytes, saving.tabIds[position]);
}

std::string Workbook::SheetBytes(std::size_t position, std::size_t offset, const Saving& saving)
{
    const auto& sheet = *sheets_[position];
    const auto& places = template_[sheet.origin_].places;
    std::string bytes(BytesOf(template_[sheet.origin_]));
    TextPatch patch;
    if (sheet.isCopy_) {
        MakeCopy(bytes, position, saving);
        places.RemoveCodeName(patch);
        if (const auto own = saving.tables.find(position); own != saving.tables.end())
            PutTables(bytes, patch, TablesIn(sheet.origin_), own->second);
    }
    // Of several selected sheets every entry would go into all of them, so only the active one
    // stays selected beside copies.
    if (HasCopies())
        places.Select(bytes, !sheet.isCopy_ && sheet.origin_ == globals_->ActiveSheet());
    places.Rename(patch, bytes, NamesFor(&sheet));
    if (!template_[sheet.origin_].isWorksheet)
        return patch.Apply(bytes);
    return MakeSheet(*TextOf(sheet.origin_), bytes, sheet.cells_ ? &*sheet.cells_ : nullptr,
                     saving.recalculate[position], std::move(patch), offset);
}

} // namespace orrery::xls
