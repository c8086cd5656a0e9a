#include "engines/builtin/xls/copy_identities.h"

#include "engines/builtin/xls/compound/compound_writer.h"
#include "util/text.h"
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
            identities_[i]; // filled in below
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
        if (!objects_)
            FindStoredObjects();
        identity.embedding = objects_->AddCopy(places);
    }
}

void CopyIdentities::FindStoredObjects()
{
    std::vector<std::string> storages;
    std::vector<std::string> streams;
    for (const auto member : file_.MembersOf(kRootEntry)) {
        const auto& entry = file_.Entry(member);
        const auto name = util::FromUtf16(entry.name);
        (entry.IsStorage() ? storages : streams).push_back(name);
        if (entry.IsStorage())
            storages_.emplace(util::ToUpperAscii(name), member);
    }
    const auto controls = file_.Find(kControls);
    if (controls && file_.Entry(*controls).IsStream())
        controls_ = controls;
    objects_.emplace(storages, streams, controls_ ? file_.ReadStream(*controls_) : std::string());
}

std::uint64_t CopyIdentities::ControlBytes() const
{
    return objects_ ? objects_->ControlsSize() : 0;
}

std::uint64_t CopyIdentities::AddedBytes() const
{
    std::uint64_t bytes = ControlBytes();
    std::map<std::string, std::uint64_t>
        sizes; // of storages, each of which is copied several times
    if (objects_) {
        for (const auto& [from, to] : objects_->Storages()) {
            const auto [size, isNew] = sizes.emplace(from, 0);
            if (isNew)
                size->second = file_.SizeOf(storages_.at(from));
            bytes += size->second;
        }
    }
    return bytes;
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
        writer.CopyStorage(storages_.at(from), to);
    if (objects_->ControlsChanged())
        writer.ReplaceStream(controls_.value(), objects_->Controls());
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
