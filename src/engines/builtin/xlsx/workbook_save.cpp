#include "book/error.h"
#include "engines/builtin/common/error_path.h"
#include "engines/builtin/edit/recalculation.h"
#include "engines/builtin/xlsx/document_titles.h"
#include "engines/builtin/xlsx/identity_patch.h"
#include "engines/builtin/xlsx/macros/copy_macros.h"
#include "engines/builtin/xlsx/package/package_edit.h"
#include "engines/builtin/xlsx/package/part_errors.h"
#include "engines/builtin/xlsx/part_references.h"
#include "engines/builtin/xlsx/workbook.h"
#include "engines/builtin/zip/deflate.h"
#include "util/error.h"

#include <algorithm>
#include <map>
#include <set>

namespace orrery::xlsx {
namespace {

constexpr std::string_view kStringsType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml";

/// Text parts that never refer to sheets, some of them large.
bool NeverRefersToSheets(std::string_view type)
{
    return !MayReferToSheets(type) || type.ends_with(".sharedStrings+xml") ||
           type.ends_with(".styles+xml") || type.ends_with(".theme+xml") ||
           type.ends_with(".pivotCacheRecords+xml") || type.ends_with(".calcChain+xml") ||
           type.ends_with("comments+xml") || type.ends_with("relationships+xml") ||
           type.ends_with("-properties+xml");
}

void AddPatched(zip::EntrySink& sink, zip::SharedText& text, const TextPatch& patch)
{
    patch.ForEachPiece(
        text.Text().size(), [&](std::size_t begin, std::size_t end) { sink.Add(text, begin, end); },
        [&](std::string_view piece) { sink.Add(piece); });
}

} // namespace

/// Everything that saving works out before it writes: which parts change, and how.
class Workbook::Saving {
public:
    /// Throws Error if the workbook cannot be saved. The workbook outlives it.
    explicit Saving(const Workbook& workbook);

    void SaveTo(const std::filesystem::path& target) const { edit_.Save(target); }
    /// What the saved workbook lacks.
    const std::vector<util::Error>& Losses() const { return macros_.Losses(); }

private:
    using Names = std::shared_ptr<const NamesOfOwner>;

    // computed from the current sheets
    std::vector<SavedSheet> SavedSheets() const;
    std::vector<vba::SheetModule> SheetModules() const;
    std::vector<bool> SheetsToRecalculate() const;
    edit::SheetReads ReadsOf(const Sheet& sheet,
                             const std::map<const edit::Sheet*, std::size_t>& positions) const;
    std::vector<TableChange> ChangedTables() const;
    /// The current names as seen from a sheet, or from the workbook for nullptr.
    Names NamesSeenBy(const Sheet* owner) const;
    std::vector<Names> NamesOfSheets() const;
    TextPatch PatchOf(std::size_t position) const;
    TextPatch SelectionPatch(const Sheet& sheet) const;
    bool RenamesSheetsOrTables() const;

    void PutCopies();
    void PutSheets();
    /// A text that the sheet has in common with its copies.
    zip::SharedText& TextOf(const Sheet& sheet);
    void PutRenamedParts();
    void PutRenamedPart(const std::string& part);
    void PutRenamedLinks(const std::string& part);
    void PutSharedStrings();
    void CheckStringsAreThere() const;
    void PutWorkbookPart();
    void PutTitles();
    void DropCalculationChain();
    bool IsOnlyUsedAsChain(const std::string& part) const;
    void PutLinks();

    const Workbook& workbook_;
    const Package& package_;
    const std::vector<Sheet*> sheets_;    // the current ones
    const std::vector<SavedSheet> saved_; // the same
    const CopyMacros macros_;
    const std::vector<bool> recalculate_;   // whether their stored results are left out
    const std::vector<TableChange> tables_; // of the template
    const Names workbookNames_;
    const std::vector<Names> names_; // as seen from each sheet
    Relationships links_;            // of the workbook part
    bool linksChanged_ = false;
    std::map<const SheetText*, zip::SharedText> texts_; // each that of a sheet and its copies
    PackageEdit edit_;
};

void Workbook::SaveAs(const std::filesystem::path& target, book::AccessMode /*accessMode*/)
{
    builtin::WithErrorPath(package_.Path(), [&] {
        const Saving saving(*this);
        saving.SaveTo(target);
        SetLosses(saving.Losses());
    });
}

Workbook::Saving::Saving(const Workbook& workbook)
    : workbook_(workbook), package_(workbook.package_), sheets_(workbook.Sheets<Sheet>()),
      saved_(SavedSheets()), macros_(package_, SheetModules()), recalculate_(SheetsToRecalculate()),
      tables_(ChangedTables()), workbookNames_(NamesSeenBy(nullptr)), names_(NamesOfSheets()),
      links_(workbook.links_), edit_(workbook.package_)
{
    PutCopies();
    PutSheets();
    PutRenamedParts();
    PutSharedStrings();
    PutWorkbookPart();
    PutTitles();
    macros_.Put(edit_);
    DropCalculationChain();
    PutLinks();
}

std::vector<SavedSheet> Workbook::Saving::SavedSheets() const
{
    std::vector<SavedSheet> saved;
    for (const Sheet* sheet : sheets_)
        saved.push_back({sheet->CurrentName(), sheet->Origin(), sheet->IsCopy(), sheet->sheetId_,
                         sheet->relationshipId_, sheet->ofWorkbook_});
    return saved;
}

std::vector<vba::SheetModule> Workbook::Saving::SheetModules() const
{
    std::vector<vba::SheetModule> modules;
    if (!workbook_.HasCopies())
        return modules;
    for (const Sheet* sheet : sheets_) {
        const SheetText* const text = sheet->ReadableText();
        modules.push_back({text ? text->CodeName() : std::string(), sheet->IsCopy()});
    }
    return modules;
}

// Decided for whole sheets, not for single cells: a sheet is computed again if it was written or if
// its formulas may read one that is.
std::vector<bool> Workbook::Saving::SheetsToRecalculate() const
{
    std::map<const edit::Sheet*, std::size_t> positions;
    for (const Sheet* sheet : sheets_)
        positions.emplace(sheet, positions.size());
    auto recalculate = edit::PropagateChanges(
        workbook_.WrittenSheets(), [&](std::size_t i) { return ReadsOf(*sheets_[i], positions); });
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        const auto* text = recalculate[i] ? sheets_[i]->ReadableText() : nullptr;
        recalculate[i] = text != nullptr && text->HasFormulas();
    }
    return recalculate;
}

edit::SheetReads
Workbook::Saving::ReadsOf(const Sheet& sheet,
                          const std::map<const edit::Sheet*, std::size_t>& positions) const
{
    edit::SheetReads reads;
    const auto* text = sheet.ReadableText();
    if (text == nullptr || !text->HasFormulas())
        return reads;
    reads.everything = text->Facts().readsElsewhere;
    for (const auto& name : text->Facts().sheets) {
        if (const auto* const read = workbook_.FindOriginal(name))
            reads.sheets.push_back(positions.at(read));
    }
    return reads;
}

std::vector<TableChange> Workbook::Saving::ChangedTables() const
{
    std::vector<TableChange> changes;
    for (const Sheet* sheet : sheets_) {
        if (!sheet->IsCopy() && sheet->tables_)
            std::ranges::move(sheet->tables_->Changes(), std::back_inserter(changes));
    }
    return changes;
}

Workbook::Saving::Names Workbook::Saving::NamesSeenBy(const Sheet* owner) const
{
    TableNames tables;
    for (const TableChange& change : tables_)
        tables.Set(change.name, change);
    if (owner && owner->copy_) {
        for (const auto& [model, own] : owner->copy_->identity.tables) {
            auto change = owner->tables_ ? owner->tables_->ChangeOf(model) : TableChange();
            change.name = own;
            tables.Set(model, std::move(change));
        }
        for (const auto& [model, own] : owner->copy_->identity.names)
            tables.Set(model, {own, {}, {}, {}});
    }
    return std::make_shared<const NamesOfOwner>(
        NamesOfOwner{{workbook_.NamesSeenBy(owner), workbook_.NamesSeenBy(nullptr)}, tables});
}

/// Sheets of the template see the workbook's tables.
std::vector<Workbook::Saving::Names> Workbook::Saving::NamesOfSheets() const
{
    std::vector<Names> names;
    for (const Sheet* sheet : sheets_) {
        if (sheet->IsCopy())
            names.push_back(NamesSeenBy(sheet));
        else
            names.push_back(std::make_shared<const NamesOfOwner>(
                NamesOfOwner{{workbook_.NamesSeenBy(sheet), workbook_.NamesSeenBy(nullptr)},
                             workbookNames_->tables}));
    }
    return names;
}

bool Workbook::Saving::RenamesSheetsOrTables() const
{
    return workbook_.HasRenamedOriginals() || !tables_.empty();
}

TextPatch Workbook::Saving::PatchOf(std::size_t position) const
{
    const Sheet& sheet = *sheets_[position];
    const auto& [names, tables] = *names_[position];
    const auto& text = *sheet.Text();
    TextPatch patch;
    if (!text.References().empty())
        patch.Add(RenameReferences(text.Xml(), text.References(), names, tables));
    const auto rename = [&names = names, &tables = tables](const std::string& formula) {
        return RenameInFormula(formula, names, tables).value_or(formula);
    };
    if (sheet.IsWritten())
        patch.Add(sheet.cells_->Patch(recalculate_[position], rename));
    else if (recalculate_[position])
        patch.Add(SheetCells(sheet.Text()).Patch(true, rename));
    patch.Add(SelectionPatch(sheet));
    if (sheet.IsCopy()) {
        patch.Add(text.SetCodeName(macros_.CodeNameOf(position)));
        patch.Add(ApplyIdentity(text, sheet.copy_->identity));
    }
    return patch;
}

// An entry into several selected sheets would go into all of them, so beside copies only the active
// sheet stays selected.
TextPatch Workbook::Saving::SelectionPatch(const Sheet& sheet) const
{
    const auto& text = *sheet.Text();
    TextPatch patch;
    const bool active = !sheet.IsCopy() && sheet.Origin() == workbook_.part_->ActiveSheet();
    if (workbook_.HasCopies())
        patch.Add(text.SelectTab(active));
    return patch;
}

/// In the order in which they were made, which is that of their parts in the container.
void Workbook::Saving::PutCopies()
{
    std::vector<std::size_t> copies; // by position
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        if (sheets_[i]->IsCopy())
            copies.push_back(i);
    }
    std::ranges::sort(copies, {}, [this](std::size_t i) { return sheets_[i]->copy_->number; });
    for (const std::size_t i : copies) {
        const auto content = [this, i, &text = TextOf(*sheets_[i])](zip::EntrySink& sink) {
            AddPatched(sink, text, PatchOf(i));
        };
        workbook_.copier_->Put(edit_, *sheets_[i]->copy_, content, names_[i]);
    }
}

zip::SharedText& Workbook::Saving::TextOf(const Sheet& sheet)
{
    return texts_.try_emplace(sheet.Text().get(), sheet.Text()->Xml()).first->second;
}

void Workbook::Saving::PutSheets()
{
    const bool all = workbook_.HasCopies() || RenamesSheetsOrTables();
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        const Sheet& sheet = *sheets_[i];
        const bool needsLook = all || sheet.IsWritten() || recalculate_[i];
        if (sheet.IsCopy() || !needsLook || sheet.ReadableText() == nullptr)
            continue; // a damaged sheet stays as it is
        auto patch = PatchOf(i);
        if (patch.Empty())
            continue;
        edit_.Put(sheet.part_, package_.TypeOf(sheet.part_),
                  [&text = TextOf(sheet), patch = std::move(patch)](zip::EntrySink& sink) {
                      AddPatched(sink, text, patch);
                  });
    }
}

void Workbook::Saving::PutRenamedParts()
{
    if (!RenamesSheetsOrTables())
        return;
    std::set<std::string> done = {PartKey(workbook_.workbookPart_)};
    for (const Sheet* sheet : sheets_) {
        if (sheet->IsWorksheet())
            done.insert(PartKey(sheet->part_));
    }
    for (const auto& part : workbook_.templateParts_) {
        UnlessDamaged([&] { PutRenamedLinks(part); });
        if (!done.contains(PartKey(part)) && !NeverRefersToSheets(package_.TypeOf(part)))
            UnlessDamaged([&] { PutRenamedPart(part); });
    }
}

void Workbook::Saving::PutRenamedPart(const std::string& part)
{
    const auto type = package_.TypeOf(part);
    const auto text = ReadText(package_, part);
    const auto patch = RenameInPart(*text, part, type, FindReferencesIn(package_, part),
                                    workbookNames_->sheets, workbookNames_->tables);
    if (!patch.Empty())
        edit_.Put(part, type, patch.Apply(*text));
}

void Workbook::Saving::PutRenamedLinks(const std::string& part)
{
    const auto& relationships = package_.RelationshipsOf(part);
    if (!HasInnerLinks(relationships))
        return;
    if (PartKey(part) == PartKey(workbook_.workbookPart_)) {
        links_ = RenameInnerLinks(links_, workbookNames_->sheets);
        linksChanged_ = true;
    }
    else {
        edit_.SetRelationships(part, RenameInnerLinks(relationships, workbookNames_->sheets));
    }
}

void Workbook::Saving::PutSharedStrings()
{
    if (!workbook_.strings_ || !workbook_.strings_->Changed())
        return;
    CheckStringsAreThere();
    long references = 0;
    for (const Sheet* sheet : sheets_) {
        if (sheet->cells_)
            references += sheet->cells_->AddedStringReferences();
    }
    edit_.Put(workbook_.stringsPart_, kStringsType, [this, references](zip::EntrySink& sink) {
        sink.Add(workbook_.strings_->ToXml(references));
    });
}

/// A cell that uses a string beyond the last one would show one of the new strings.
void Workbook::Saving::CheckStringsAreThere() const
{
    const std::size_t count = workbook_.strings_->Count();
    for (const Sheet* sheet : sheets_) {
        const SheetText* const text = sheet->ReadableText();
        const std::size_t used = text ? text->Index().stringsUsed : 0;
        if (used > count) {
            throw util::Error(book::ErrorKind::DamagedWorkbook, {},
                              "a cell of " + sheet->part_ + " uses the shared text " +
                                  std::to_string(used) + ", and there are " +
                                  std::to_string(count));
        }
    }
}

void Workbook::Saving::PutWorkbookPart()
{
    const bool recalculate = std::ranges::find(recalculate_, true) != recalculate_.end();
    if (!recalculate && !workbook_.HasCopies() && !RenamesSheetsOrTables())
        return;
    auto xml = workbook_.part_->ToXml(
        saved_, recalculate, workbookNames_->sheets, workbookNames_->tables,
        [this](std::size_t position) { return names_[position]->sheets; },
        [this](std::size_t position) { return names_[position]->tables; });
    edit_.Put(workbook_.workbookPart_, package_.TypeOf(workbook_.workbookPart_), std::move(xml));
}

void Workbook::Saving::PutTitles()
{
    const auto part = TitlesPart(package_);
    if (!package_.Has(part) || (!workbook_.HasCopies() && !workbook_.HasRenamedOriginals()))
        return;
    UnlessDamaged([&] {
        const auto xml = package_.ReadXml(part);
        auto updated = UpdateTitles(*xml, part, workbook_.templateNames_, saved_);
        if (updated != *xml)
            edit_.Put(part, package_.TypeOf(part), std::move(updated));
    });
}

// The chain lists every cell with a formula. Programs rebuild a missing chain, but not a wrong one.
void Workbook::Saving::DropCalculationChain()
{
    const bool wrong = std::ranges::any_of(sheets_, [](const Sheet* sheet) {
        return (sheet->cells_ && sheet->cells_->RemovesFormulas()) ||
               (sheet->IsCopy() && sheet->Text()->HasFormulas());
    });
    const auto* chain = links_.FindByType("calcChain");
    if (!wrong || !chain)
        return;
    const auto part = ResolveTarget(workbook_.workbookPart_, chain->Target);
    if (!chain->External && IsOnlyUsedAsChain(part))
        edit_.Remove(part);
    links_.Remove(std::string(chain->Id));
    linksChanged_ = true;
}

/// Whether the part really is a calculation chain, and nothing else refers to it.
bool Workbook::Saving::IsOnlyUsedAsChain(const std::string& part) const
{
    if (!package_.TypeOf(part).ends_with(".calcChain+xml"))
        return false;
    std::size_t users = 0;
    const auto count = [&](const std::string& owner) {
        for (const auto& relationship : package_.RelationshipsOf(owner).All()) {
            if (!relationship.External &&
                PartKey(ResolveTarget(owner, relationship.Target)) == PartKey(part))
                ++users;
        }
    };
    for (const auto& owner : package_.RelationshipsOwners())
        UnlessDamaged([&] { count(owner); });
    return users == 1;
}

void Workbook::Saving::PutLinks()
{
    const auto added = workbook_.links_.All().size() -
                       package_.RelationshipsOf(workbook_.workbookPart_).All().size();
    if (linksChanged_ || added != 0)
        edit_.SetRelationships(workbook_.workbookPart_, links_);
}

} // namespace orrery::xlsx
