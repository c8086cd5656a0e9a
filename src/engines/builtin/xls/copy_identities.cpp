#include "engines/builtin/xls/copy_identities.h"

#include "engines/builtin/xls/compound_writer.h"
#include "util/unicode.h"

#include <algorithm>

namespace orrery::xls {
namespace {

constexpr const char* kControls = "Ctls"; // the stream of all controls' data

} // namespace

CopyIdentities::CopyIdentities(const Globals& globals, const CompoundFile& file,
                               std::vector<TemplateSheet>& originals,
                               const std::vector<SavedSheet>& sheets)
    : globals_(globals), file_(file), originals_(originals), sheets_(sheets),
      drawings_(DrawingKind::Sheet, globals.DrawingGroupPlace().In(globals.Stream())),
      headerDrawings_(DrawingKind::HeaderFooter, globals.HeaderPicturesPlace().In(globals.Stream()))
{
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        if (sheets[i].IsCopy)
            identities_[i]; // to be filled in
    }
    if (identities_.empty())
        return;
    GiveDrawingIds();
    CopyObjects();
    NameTables();
}

void CopyIdentities::GiveDrawingIds()
{
    for (auto& original : originals_) {
        drawings_.Reserve(original.Drawings());
        headerDrawings_.Reserve(original.Drawings());
    }
    for (auto& [position, identity] : identities_) {
        const auto& places = originals_[sheets_[position].Origin].Drawings();
        identity.drawings = drawings_.AddCopy(places);
        identity.headerDrawings = headerDrawings_.AddCopy(places);
    }
}

void CopyIdentities::CopyObjects()
{
    for (auto& [position, identity] : identities_) {
        const auto& places = originals_[sheets_[position].Origin].Embedded();
        if (places.Empty())
            continue;
        if (!objects_) {
            std::vector<std::string> names;
            for (const auto member : file_.MembersOf(kRootEntry))
                names.push_back(util::FromUtf16(file_.Entry(member).name));
            const auto controls = file_.Find(kControls);
            objects_.emplace(names, controls ? file_.ReadStream(*controls) : std::string());
        }
        identity.embedding = objects_->AddCopy(places);
    }
}

void CopyIdentities::NameTables()
{
    const auto hasTables = [this](const auto& identity) {
        return !originals_[sheets_[identity.first].Origin].Tables().Empty();
    };
    if (std::none_of(identities_.begin(), identities_.end(), hasTables))
        return;
    std::vector<std::string> names;
    for (const auto& name : globals_.Names())
        names.push_back(name.Key);
    TableIdentities tables(names);
    for (auto& original : originals_)
        tables.Reserve(original.Tables());
    for (auto& [position, identity] : identities_) {
        const auto& places = originals_[sheets_[position].Origin].Tables();
        if (!places.Empty())
            identity.tables = tables.AddCopy(places);
    }
}

std::string CopyIdentities::DrawingGroup() const
{
    std::string records;
    if (drawings_.Changed())
        drawings_.AppendTo(records);
    return records;
}

std::string CopyIdentities::HeaderPictures() const
{
    std::string records;
    if (headerDrawings_.Changed())
        headerDrawings_.AppendTo(records);
    return records;
}

void CopyIdentities::CopyData(CompoundWriter& writer) const
{
    if (!objects_)
        return;
    for (const auto& [from, to] : objects_->Storages())
        writer.CopyStorage(file_.Find(from).value(), to);
    if (objects_->ControlsChanged())
        writer.ReplaceStream(file_.Find(kControls).value(), objects_->Controls());
}

void CopyIdentities::Apply(std::string& bytes, TextPatch& patch, std::size_t position) const
{
    auto& original = originals_[sheets_[position].Origin];
    const auto& identity = identities_.at(position);
    PutDrawingIds(bytes, original.Drawings(), identity.drawings);
    PutDrawingIds(bytes, original.Drawings(), identity.headerDrawings);
    if (!original.Embedded().Empty())
        PutEmbedding(bytes, original.Embedded(), identity.embedding);
    if (identity.tables)
        PutTables(bytes, patch, original.Tables(), *identity.tables);
}

} // namespace orrery::xls
