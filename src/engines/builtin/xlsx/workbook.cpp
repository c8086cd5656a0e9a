#include "engines/builtin/xlsx/workbook.h"

#include "book/error.h"
#include "engines/builtin/common/error_path.h"
#include "engines/builtin/xlsx/package/part_errors.h"
#include "engines/builtin/xml/scanner.h"
#include "util/error.h"
#include "util/paths.h"

#include <algorithm>

namespace orrery::xlsx {
namespace {

using book::ErrorKind;
using builtin::WithErrorPath;
using util::Error;

/// Another relationship type of the same family, transitional or strict.
std::string SiblingType(const std::string& type, std::string_view lastWord)
{
    return type.substr(0, type.rfind('/') + 1) + std::string(lastWord);
}

std::string RootNamespace(std::string_view xml, std::string_view partName)
{
    xml::Scanner scanner(xml, partName);
    for (auto token = scanner.Next(); token != xml::Scanner::Token::End; token = scanner.Next()) {
        if (token == xml::Scanner::Token::StartTag)
            return scanner.NamespaceUri();
    }
    return {};
}

} // namespace

Sheet::Sheet(Workbook& workbook, SheetEntry entry, std::size_t origin, std::string part, Kind kind)
    : edit::Sheet(workbook, std::move(entry.Name), origin), workbook_(workbook),
      sheetId_(entry.SheetId), relationshipId_(std::move(entry.RelationshipId)),
      part_(std::move(part)), kind_(kind)
{
}

std::unique_ptr<edit::Sheet> Sheet::MakeCopy()
{
    return workbook_.Copy(*this);
}

void Sheet::Write(std::int32_t row, std::int32_t column, const book::CellValue& value)
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
        cells.Set(row, column, SharedStringIndex{workbook_.Strings().IndexOf(*text)});
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

Workbook::Workbook(const std::filesystem::path& path) : edit::Workbook(path), package_(path)
{
    templateParts_ = package_.PartNames();
    workbookPart_ = package_.MainPart();
    links_ = package_.RelationshipsOf(workbookPart_);
    WithErrorPath(path, [this] {
        part_ = std::make_unique<WorkbookPart>(package_.ReadXml(workbookPart_), workbookPart_);
        ReadSheets();
    });
}

void Workbook::ReadSheets()
{
    std::unordered_map<std::string_view, const Relationship*> byId;
    for (const auto& relationship : links_.All())
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
        Add(std::make_unique<Sheet>(*this, entry, templateNames_.size() - 1, std::move(target),
                                    kind));
    }
}

std::unique_ptr<Sheet> Workbook::Copy(Sheet& model)
{
    if (!copier_) {
        std::vector<std::string> definedNames;
        for (const auto& name : part_->Names())
            definedNames.push_back(name.Name);
        copier_ = std::make_unique<SheetCopier>(package_, definedNames);
    }
    SheetEntry entry;
    entry.Name = model.TemplateName();
    entry.SheetId = FreeSheetId();
    auto copy = std::make_unique<Sheet>(*this, entry, model.Origin(), model.part_, model.kind_);
    copy->text_ = model.Text();
    copy->cells_ = model.cells_;
    copy->tables_ = model.Tables();
    copy->copy_ = copier_->Copy(model.part_, model.Text()->Identities(),
                                {OriginalOf(model).sheetId_, copy->sheetId_});
    LinkCopy(model, *copy);
    return copy;
}

/// Adds relationships to the parts of the copy, of the types of those to the model's.
void Workbook::LinkCopy(const Sheet& model, Sheet& copy)
{
    std::vector<Relationship> links;
    const auto add = [&](const std::string& modelId, const std::string& part) {
        links.push_back(
            {{}, links_.FindById(modelId)->Type, RelativeTarget(workbookPart_, part), false});
    };
    add(model.relationshipId_, copy.copy_->Part());
    for (const auto& [modelId, part] : copy.copy_->ofWorkbook)
        add(modelId, part);
    const auto ids = links_.AddAll(std::move(links));
    copy.relationshipId_ = ids.front();
    for (std::size_t i = 1; i < ids.size(); ++i)
        copy.ofWorkbook_.emplace_back(copy.copy_->ofWorkbook[i - 1].relationshipId, ids[i]);
}

/// One above the highest; if Excel would refuse that, the lowest free one.
std::uint32_t Workbook::FreeSheetId() const
{
    std::set<std::uint32_t> taken;
    for (const Sheet* sheet : Sheets<Sheet>())
        taken.insert(sheet->sheetId_);
    if (*taken.rbegin() < kHighestSheetId)
        return *taken.rbegin() + 1;
    std::uint32_t id = 1;
    for (auto next = taken.lower_bound(id); next != taken.end() && *next == id; ++next)
        ++id;
    return id;
}

SharedStrings& Workbook::Strings()
{
    if (strings_)
        return *strings_;
    const auto* relationship = links_.FindByType("sharedStrings");
    if (relationship)
        stringsPart_ = ResolveTarget(workbookPart_, relationship->Target);
    else
        CheckNoStringsAreUnlinked();
    // The strings of a missing part are lost.
    const auto xml = relationship ? package_.ReadXml(stringsPart_) : PartText();
    auto mainNamespace = RootNamespace(*package_.ReadXml(workbookPart_), workbookPart_);
    auto part = relationship ? stringsPart_ : AddStringsRelationship();
    strings_ = std::make_unique<SharedStrings>(xml, part, std::move(mainNamespace));
    stringsPart_ = std::move(part);
    return *strings_;
}

/// Programs find such strings by their content type, and would take them for those of a new part.
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
    const auto folder = workbookPart_.substr(0, workbookPart_.rfind('/') + 1);
    auto part = folder + "sharedStrings.xml";
    const auto isTaken = [this](const std::string& name) {
        return !package_.IsFree(name) || (copier_ && copier_->HasPart(name));
    };
    for (int number = 1; isTaken(part); ++number)
        part = folder + "sharedStrings" + std::to_string(number) + ".xml";
    const auto* workbook = package_.RelationshipsOf("").FindByType("officeDocument");
    links_.Add(SiblingType(workbook->Type, "sharedStrings"), RelativeTarget(workbookPart_, part));
    return part;
}

const Styles& Workbook::CellStyles()
{
    if (!styles_) {
        const auto* relationship = links_.FindByType("styles");
        const auto part =
            relationship ? ResolveTarget(workbookPart_, relationship->Target) : std::string();
        if (package_.Has(part))
            styles_.emplace(*package_.ReadXml(part), part);
        else
            styles_.emplace(std::string_view(), part);
    }
    return *styles_;
}

} // namespace orrery::xlsx
