#include "engines/builtin/xlsx/workbook.h"

#include "engines/builtin/xlsx/part_errors.h"
#include "engines/builtin/xlsx/xml_scanner.h"
#include "util/error.h"
#include "util/paths.h"

#include <algorithm>

namespace orrery::xlsx {
namespace {

using engines::CopyName;
using engines::SameSheetName;
using util::Error;
using util::ErrorKind;

/// Another type of the same family of relationship types, transitional or strict.
std::string SiblingType(const std::string& type, std::string_view lastWord)
{
    return type.substr(0, type.rfind('/') + 1) + std::string(lastWord);
}

std::string RootNamespace(std::string_view xml, std::string_view partName)
{
    XmlScanner scanner(xml, partName);
    for (auto token = scanner.Next(); token != XmlScanner::Token::End; token = scanner.Next()) {
        if (token == XmlScanner::Token::StartTag)
            return scanner.NamespaceUri();
    }
    return {};
}

} // namespace

Sheet::Sheet(Workbook& workbook, SheetEntry entry, std::size_t origin, std::string part, Kind kind)
    : workbook_(workbook), name_(entry.Name), templateName_(std::move(entry.Name)), origin_(origin),
      sheetId_(entry.SheetId), relationshipId_(std::move(entry.RelationshipId)),
      part_(std::move(part)), kind_(kind)
{
}

void Sheet::SetName(std::string_view name)
{
    workbook_.Rename(*this, name);
}

void Sheet::CopyAfter(generate::Worksheet& after)
{
    Naming(workbook_.package_.Path(),
           [&] { workbook_.Copy(*this, dynamic_cast<const Sheet&>(after)); });
}

generate::Worksheet* Sheet::Next()
{
    const auto next = workbook_.PositionOf(*this) + 1;
    return next < workbook_.sheets_.size() ? workbook_.sheets_[next].get() : nullptr;
}

void Sheet::SetCell(std::int32_t row, std::int32_t column, const generate::CellValue& value,
                    generate::CellMember /*member*/)
{
    if (kind_ != Kind::Worksheet)
        throw Error(ErrorKind::NotAWorksheet, name_);
    Naming(workbook_.package_.Path(), [&] { Write(row, column, value); });
}

void Sheet::Write(std::int32_t row, std::int32_t column, const generate::CellValue& value)
{
    auto& cells = Cells();
    cells.CheckWritable(row, column, workbook_.CellStyles());
    if (!cells.TakesValue(row, column))
        return;
    const CellAddress cell{row, column};
    const auto header = Tables().WriteHeader(cell, value);
    if (!header)
        Tables().WriteTotal(cell, value);
    const auto* text = header ? &*header : std::get_if<std::string>(&value);
    if (text)
        cells.Set(row, column, SheetCells::Text{workbook_.Strings().IndexOf(*text)});
    else
        cells.Set(row, column, std::get<std::int16_t>(value));
}

const std::shared_ptr<const SheetText>& Sheet::Text() const
{
    if (!text_)
        text_ = std::make_shared<SheetText>(workbook_.package_.ReadXml(part_), part_);
    return text_;
}

const SheetText* Sheet::ReadableText() const
{
    if (kind_ != Kind::Worksheet || isDamaged_)
        return nullptr;
    isDamaged_ = true; // unless the next step succeeds
    UnlessDamaged([this] {
        Text();
        isDamaged_ = false;
    });
    return isDamaged_ ? nullptr : text_.get();
}

SheetCells& Sheet::Cells()
{
    if (!cells_)
        cells_.emplace(Text());
    return *cells_;
}

SheetTables& Sheet::Tables()
{
    if (!tables_)
        tables_ = SheetTables::Read(workbook_.package_, part_);
    return *tables_;
}

Workbook::Workbook(const std::filesystem::path& path) : package_(path)
{
    templateParts_ = package_.PartNames();
    workbookPart_ = package_.MainPart();
    Naming(path, [this] {
        part_ = std::make_unique<WorkbookPart>(package_.ReadXml(workbookPart_), workbookPart_);
        ReadSheets();
    });
}

void Workbook::ReadSheets()
{
    std::unordered_map<std::string_view, const Relationship*> byId;
    for (const auto& relationship : package_.RelationshipsOf(workbookPart_).All())
        byId.emplace(relationship.Id, &relationship);
    std::unordered_map<std::string, std::string> byPart;
    for (const auto& entry : part_->Sheets()) {
        const auto found = byId.find(entry.RelationshipId);
        const auto* relationship = found == byId.end() ? nullptr : found->second;
        auto target =
            relationship ? ResolveTarget(workbookPart_, relationship->Target) : std::string();
        if (!package_.Has(target) || !package_.CanBeOwned(target))
            throw Error(ErrorKind::DamagedWorkbook, util::FromPath(package_.Path()),
                        "the sheet \"" + entry.Name + "\" is missing");
        const auto [other, isNew] = byPart.emplace(PartKey(target), entry.Name);
        if (!isNew)
            throw Error(ErrorKind::DamagedWorkbook, util::FromPath(package_.Path()),
                        "the sheets \"" + other->second + "\" and \"" + entry.Name +
                            "\" are one part");
        const auto kind =
            relationship->Is("worksheet") ? Sheet::Kind::Worksheet : Sheet::Kind::Other;
        templateNames_.push_back(entry.Name);
        sheets_.push_back(
            std::make_unique<Sheet>(*this, entry, sheets_.size(), std::move(target), kind));
        originals_.emplace(engines::FoldCase(entry.Name), sheets_.back().get());
    }
}

generate::Worksheet* Workbook::FindWorksheet(std::string_view name)
{
    for (const auto& sheet : sheets_) {
        if (sheet->kind_ == Sheet::Kind::Worksheet && SameSheetName(sheet->name_, name))
            return sheet.get();
    }
    return nullptr;
}

std::size_t Workbook::PositionOf(const Sheet& sheet) const
{
    return builtin::PositionOf(sheets_, sheet);
}

void Workbook::CheckStructure(const std::string& name) const
{
    if (part_->IsStructureProtected())
        throw Error(ErrorKind::StructureProtected, name);
}

void Workbook::Rename(Sheet& sheet, std::string_view name)
{
    if (name == sheet.name_)
        return;
    CheckStructure(sheet.name_);
    engines::CheckSheetName(name, builtin::NamesBeside(sheets_, &sheet));
    sheet.name_ = name;
}

void Workbook::Copy(Sheet& model, const Sheet& after)
{
    CheckStructure(model.name_);
    if (model.kind_ != Sheet::Kind::Worksheet)
        throw Error(ErrorKind::NotAWorksheet, model.name_);
    if (!copier_) {
        std::vector<std::string> definedNames;
        for (const auto& name : part_->Names())
            definedNames.push_back(name.Name);
        copier_ = std::make_unique<SheetCopier>(package_, definedNames);
    }

    std::vector<std::string> taken;
    SheetEntry entry;
    for (const auto& sheet : sheets_)
        taken.push_back(sheet->name_);
    entry.SheetId = FreeSheetId();
    const auto& templatePart = sheets_[PositionOfOriginal(model.origin_)]->part_;
    auto copy = std::make_unique<Sheet>(*this, entry, model.origin_, std::string(), model.kind_);
    copy->name_ = CopyName(model.name_, taken);
    copy->templateName_ = model.templateName_;
    copy->isCopy_ = true;
    copy->text_ = model.Text();
    copy->cells_ = model.cells_;
    copy->tables_ = model.Tables();
    NamesOfOwner names{[this, sheet = copy.get()] { return NamesFor(sheet); },
                       [this, sheet = copy.get()] { return TablesFor(sheet); }};
    sheets_.reserve(sheets_.size() + 1);
    const auto copied = copier_->Copy(
        templatePart, [this, sheet = copy.get()] { return SheetXml(*sheet); }, std::move(names));
    try {
        copy->part_ = copied.part;
        copy->identity_ = copied.identity;
        auto relationships = package_.RelationshipsOf(workbookPart_);
        const auto* modelRelationship = relationships.FindById(model.relationshipId_);
        copy->relationshipId_ =
            relationships.Add(modelRelationship->Type, RelativeTarget(workbookPart_, copy->part_));
        package_.SetRelationships(workbookPart_, std::move(relationships));
    }
    catch (...) {
        copier_->TakeBack(copied); // its content reads the copy, which goes
        throw;
    }
    sheets_.insert(sheets_.begin() + static_cast<std::ptrdiff_t>(PositionOf(after)) + 1,
                   std::move(copy));
}

/// One behind the highest; where that is beyond what Excel takes, the lowest that is free.
std::uint32_t Workbook::FreeSheetId() const
{
    constexpr std::uint32_t kHighest = 65534; // [MS-OI29500] 2.1.607
    std::set<std::uint32_t> taken;
    for (const auto& sheet : sheets_)
        taken.insert(sheet->sheetId_);
    if (*taken.rbegin() < kHighest)
        return *taken.rbegin() + 1;
    std::uint32_t id = 1;
    for (auto next = taken.lower_bound(id); next != taken.end() && *next == id; ++next)
        ++id;
    return id;
}

std::size_t Workbook::PositionOfOriginal(std::size_t origin) const
{
    const auto found = std::find_if(sheets_.begin(), sheets_.end(), [&](const auto& sheet) {
        return !sheet->isCopy_ && sheet->origin_ == origin;
    });
    return static_cast<std::size_t>(found - sheets_.begin());
}

SharedStrings& Workbook::Strings()
{
    if (strings_)
        return *strings_;
    const auto& relationships = package_.RelationshipsOf(workbookPart_);
    const auto* relationship = relationships.FindByType("sharedStrings");
    if (relationship)
        stringsPart_ = ResolveTarget(workbookPart_, relationship->Target);
    else
        CheckNoStringsAreUnlinked();
    // A part that is missing held texts which nobody can give back.
    const auto xml = relationship ? package_.ReadXml(stringsPart_) : PartText();
    auto mainNamespace = RootNamespace(*package_.ReadXml(workbookPart_), workbookPart_);
    auto part = relationship ? stringsPart_ : AddStringsRelationship();
    strings_ = std::make_unique<SharedStrings>(xml, part, std::move(mainNamespace));
    stringsPart_ = std::move(part);
    return *strings_;
}

/// Programs find such texts by their type, and would take them for those of a new part.
void Workbook::CheckNoStringsAreUnlinked() const
{
    for (const auto& part : templateParts_) {
        if (package_.TypeOf(part).ends_with(".sharedStrings+xml")) {
            throw Error(ErrorKind::DamagedWorkbook, util::FromPath(package_.Path()),
                        "the workbook does not refer to its shared texts in the part " + part);
        }
    }
}

std::string Workbook::AddStringsRelationship()
{
    auto relationships = package_.RelationshipsOf(workbookPart_);
    const auto folder = workbookPart_.substr(0, workbookPart_.rfind('/') + 1);
    auto part = folder + "sharedStrings.xml";
    std::size_t number = 1;
    if (!package_.IsFree(part))
        part = package_.FreePartName(folder + "sharedStrings", ".xml", number);
    const auto* workbook = package_.RelationshipsOf("").FindByType("officeDocument");
    relationships.Add(SiblingType(workbook->Type, "sharedStrings"),
                      RelativeTarget(workbookPart_, part));
    package_.SetRelationships(workbookPart_, std::move(relationships));
    return part;
}

const Styles& Workbook::CellStyles()
{
    if (!styles_) {
        const auto* relationship = package_.RelationshipsOf(workbookPart_).FindByType("styles");
        const auto part =
            relationship ? ResolveTarget(workbookPart_, relationship->Target) : std::string();
        if (package_.Has(part))
            styles_.emplace(*package_.ReadXml(part), part);
        else
            styles_.emplace(std::string_view(), part);
    }
    return *styles_;
}

const Sheet* Workbook::FindOriginal(std::string_view templateName) const
{
    const auto found = originals_.find(engines::FoldCase(templateName));
    return found == originals_.end() ? nullptr : found->second;
}

SheetNames Workbook::NamesFor(const Sheet* owner) const
{
    const auto nameOf = [](const Sheet* meant) -> std::optional<std::string> {
        if (!meant || meant->name_ == meant->templateName_)
            return std::nullopt;
        return meant->name_;
    };
    const auto original = [this, nameOf](std::string_view name) {
        return nameOf(FindOriginal(name));
    };
    const auto own = [owner, nameOf, original](std::string_view name) {
        const bool itself = owner && SameSheetName(owner->templateName_, name);
        return itself ? nameOf(owner) : original(name);
    };
    return {own, original};
}

} // namespace orrery::xlsx
