#include "engines/builtin/xlsx/workbook.h"

#include "engines/builtin/common/naming.h"
#include "engines/builtin/xlsx/document_titles.h"
#include "engines/builtin/xlsx/package/part_errors.h"

#include <algorithm>

namespace orrery::xlsx {
namespace {

constexpr std::string_view kStringsType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml";

/// Parts that name no sheets although they are text, some of them large.
bool NamesNoSheets(std::string_view type)
{
    return !MayNameSheets(type) || type.ends_with(".sharedStrings+xml") ||
           type.ends_with(".styles+xml") || type.ends_with(".theme+xml") ||
           type.ends_with(".pivotCacheRecords+xml") || type.ends_with(".calcChain+xml") ||
           type.ends_with("comments+xml") || type.ends_with("relationships+xml") ||
           type.ends_with("-properties+xml");
}

} // namespace

void Workbook::SaveAs(const std::filesystem::path& target, book::AccessMode /*accessMode*/)
{
    builtin::Naming(package_.Path(), [&] {
        for (const auto& part : templateParts_) {
            if (package_.Has(part))
                package_.Restore(part); // every save starts from the template
        }
        tables_.clear();
        recalculate_ = SheetsToRecalculate();
        PutSheets();
        PutRenamedParts();
        PutSharedStrings();
        PutWorkbookPart();
        PutTitles();
        DropCalculationChain();
        package_.Save(target);
    });
}

// Whole sheets are looked at, not single cells: a sheet is computed anew when it was written or
// when its formulas may read one that is.
std::set<const Sheet*> Workbook::SheetsToRecalculate() const
{
    const auto sheets = Sheets<Sheet>();
    std::map<const edit::Sheet*, std::size_t> positions;
    for (const Sheet* sheet : sheets)
        positions.emplace(sheet, positions.size());
    const auto changed = edit::SpreadChanges(
        WrittenSheets(), [&](std::size_t i) { return ReadsOf(*sheets[i], positions); });
    std::set<const Sheet*> recalculate;
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        const auto* text = changed[i] ? sheets[i]->ReadableText() : nullptr;
        if (text != nullptr && text->HasFormulas())
            recalculate.insert(sheets[i]);
    }
    return recalculate;
}

edit::SheetReads Workbook::ReadsOf(const Sheet& sheet,
                                   const std::map<const edit::Sheet*, std::size_t>& positions) const
{
    edit::SheetReads reads;
    const auto* text = sheet.ReadableText();
    if (text == nullptr || !text->HasFormulas())
        return reads;
    reads.everything = text->Facts().ReadsElsewhere;
    for (const auto& name : text->Facts().Sheets) {
        if (const auto* const read = FindOriginal(name))
            reads.sheets.push_back(positions.at(read));
    }
    return reads;
}

std::string Workbook::SheetXml(const Sheet& sheet) const
{
    return SheetPatch(sheet).Apply(sheet.Text()->Xml());
}

TextPatch Workbook::SheetPatch(const Sheet& sheet) const
{
    const auto& text = *sheet.Text();
    const auto names = NamesFor(&sheet);
    const auto& tables = TablesFor(&sheet);
    TextPatch patch;
    if (!text.References().empty())
        patch.Add(RenameReferences(text.Xml(), text.References(), names, tables));
    const auto rename = [&](const std::string& formula) {
        return RenameInFormula(formula, names, tables).value_or(formula);
    };
    const bool recalculate = recalculate_.contains(&sheet);
    if (sheet.IsWritten())
        patch.Add(sheet.cells_->Patch(recalculate, rename));
    else if (recalculate)
        patch.Add(SheetCells(sheet.Text()).Patch(true, rename));
    patch.Add(SelectionPatch(sheet));
    return patch;
}

const TableNames& Workbook::TablesFor(const Sheet* owner) const
{
    const auto known = tables_.find(owner);
    return known != tables_.end() ? known->second
                                  : tables_.emplace(owner, CollectTables(owner)).first->second;
}

TableNames Workbook::CollectTables(const Sheet* owner) const
{
    TableNames names;
    for (const Sheet* sheet : Sheets<Sheet>()) {
        if (sheet->IsCopy() || !sheet->tables_)
            continue;
        for (auto& change : sheet->tables_->Changes()) {
            const auto name = change.name;
            names.Set(name, std::move(change));
        }
    }
    if (!owner || !owner->identity_)
        return names;
    for (const auto& [model, own] : owner->identity_->tables) {
        auto change = owner->tables_ ? owner->tables_->ChangeOf(model) : TableChange();
        change.name = own;
        names.Set(model, std::move(change));
    }
    return names;
}

bool Workbook::HasChangedTables() const
{
    return std::ranges::any_of(Sheets<Sheet>(), [](const Sheet* sheet) {
        return !sheet->IsCopy() && sheet->tables_ && sheet->tables_->HasChanges();
    });
}

// Of several selected sheets every entry would go into all of them, so only the active one stays
// selected beside copies. A code name belongs to one module of the macros.
TextPatch Workbook::SelectionPatch(const Sheet& sheet) const
{
    const auto& text = *sheet.Text();
    TextPatch patch;
    const bool active = !sheet.IsCopy() && sheet.Origin() == part_->ActiveSheet();
    if (HasCopies())
        patch.Add(text.SelectTab(active));
    if (const auto& codeName = text.CodeName(); codeName && sheet.IsCopy())
        patch.Remove(codeName->begin, codeName->end);
    return patch;
}

void Workbook::PutSheets()
{
    const bool all = HasCopies() || HasRenamedOriginals() || HasChangedTables();
    for (const Sheet* sheet : Sheets<Sheet>()) {
        const bool needsLook = all || sheet->IsWritten() || recalculate_.contains(sheet);
        if (sheet->IsCopy() || !needsLook || sheet->ReadableText() == nullptr)
            continue; // copies were put when they were made; what is damaged stays as it is
        auto patch = SheetPatch(*sheet);
        if (patch.Empty())
            continue;
        auto content = [text = sheet->Text(), patch = std::move(patch)] {
            return patch.Apply(text->Xml());
        };
        package_.Put(sheet->part_, package_.TypeOf(sheet->part_), std::move(content));
    }
}

void Workbook::PutRenamedParts()
{
    if (!HasRenamedOriginals() && !HasChangedTables() && templateLinks_.empty())
        return;
    const auto names = NamesFor(nullptr);
    const auto& tables = TablesFor(nullptr);
    std::set<std::string> done = {PartKey(workbookPart_)}; // worksheets are put by themselves
    for (const Sheet* sheet : Sheets<Sheet>()) {
        if (sheet->kind_ == Sheet::Kind::Worksheet)
            done.insert(PartKey(sheet->part_));
    }
    for (const auto& part : templateParts_) {
        UnlessDamaged([&] { PutRenamedLinks(part, names); });
        if (!done.contains(PartKey(part)) && !NamesNoSheets(package_.TypeOf(part)))
            UnlessDamaged([&] { PutRenamedPart(part, names, tables); });
    }
}

void Workbook::PutRenamedPart(const std::string& part, const SheetNames& names,
                              const TableNames& tables)
{
    const auto type = package_.TypeOf(part);
    const auto text = ReadText(package_, part);
    const auto patch =
        RenameInPart(*text, part, type, FindReferencesIn(package_, part), names, tables);
    if (!patch.Empty())
        package_.Put(part, type, patch.Apply(*text));
}

void Workbook::PutRenamedLinks(const std::string& part, const SheetNames& names)
{
    const auto& relationships = package_.RelationshipsOf(part);
    if (!HasInnerLinks(relationships))
        return;
    const auto original = templateLinks_.emplace(part, relationships).first;
    package_.SetRelationships(part, RenameInnerLinks(original->second, names));
}

void Workbook::PutSharedStrings()
{
    if (!strings_ || !strings_->Changed())
        return;
    long references = 0;
    for (const Sheet* sheet : Sheets<Sheet>()) {
        if (sheet->cells_)
            references += sheet->cells_->AddedTextReferences();
    }
    package_.Put(stringsPart_, kStringsType,
                 [this, references] { return strings_->ToXml(references); });
}

std::vector<SavedSheet> Workbook::SavedSheets() const
{
    std::vector<SavedSheet> saved;
    for (const Sheet* sheet : Sheets<Sheet>())
        saved.push_back({sheet->CurrentName(), sheet->Origin(), sheet->IsCopy(), sheet->sheetId_,
                         sheet->relationshipId_});
    return saved;
}

void Workbook::PutWorkbookPart()
{
    const bool recalculate = !recalculate_.empty();
    if (!recalculate && !HasCopies() && !HasRenamedOriginals() && !HasChangedTables())
        return;
    auto xml = part_->ToXml(
        SavedSheets(), recalculate, NamesFor(nullptr), TablesFor(nullptr),
        [this](std::size_t position) { return NamesFor(&SheetAt<Sheet>(position)); },
        [this](std::size_t position) { return TablesFor(&SheetAt<Sheet>(position)); });
    package_.Put(workbookPart_, package_.TypeOf(workbookPart_), std::move(xml));
}

void Workbook::PutTitles()
{
    const auto* relationship = package_.RelationshipsOf("").FindByType("extended-properties");
    const auto part = relationship ? ResolveTarget("", relationship->Target) : std::string();
    if (!package_.Has(part) || (!HasCopies() && !HasRenamedOriginals()))
        return;
    UnlessDamaged([&] {
        const auto xml = package_.ReadXml(part);
        auto updated = UpdateTitles(*xml, part, templateNames_, SavedSheets());
        if (updated != *xml)
            package_.Put(part, package_.TypeOf(part), std::move(updated));
    });
}

// The chain lists every formula cell; programs make it anew where it is missing, but not where it
// is wrong.
void Workbook::DropCalculationChain()
{
    const bool wrong = std::ranges::any_of(Sheets<Sheet>(), [](const Sheet* sheet) {
        return (sheet->cells_ && sheet->cells_->RemovesFormulas()) ||
               (sheet->IsCopy() && sheet->Text()->HasFormulas());
    });
    auto relationships = package_.RelationshipsOf(workbookPart_);
    const auto* chain = relationships.FindByType("calcChain");
    if (!wrong || !chain)
        return;
    const auto part = ResolveTarget(workbookPart_, chain->Target);
    if (!chain->External && IsOnlyUsedAsChain(part))
        package_.Remove(part);
    relationships.Remove(std::string(chain->Id));
    package_.SetRelationships(workbookPart_, std::move(relationships));
}

/// Whether the part is what it is said to be, and nothing else refers to it.
bool Workbook::IsOnlyUsedAsChain(const std::string& part) const
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

} // namespace orrery::xlsx
