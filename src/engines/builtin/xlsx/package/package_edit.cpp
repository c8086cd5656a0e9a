#include "engines/builtin/xlsx/package/package_edit.h"

#include "engines/builtin/xlsx/package/part_names.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/paths.h"

#include <utility>

namespace orrery::xlsx {
namespace {

constexpr std::string_view kRelationshipsType =
    "application/vnd.openxmlformats-package.relationships+xml";

} // namespace

PackageEdit::PackageEdit(const Package& package) : package_(package), types_(package.types_) {}

PackageEdit::Change& PackageEdit::ChangePart(std::string_view part)
{
    const Key key = PartKey(part);
    const auto [change, isNew] = changes_.try_emplace(key);
    if (isNew && !package_.Has(part))
        added_.push_back(key);
    change->second = {std::string(part), {}, {}};
    return change->second;
}

void PackageEdit::Put(std::string_view part, std::string_view type, Content content)
{
    ChangePart(part).content = std::move(content);
    types_.Set(part, type);
}

void PackageEdit::Put(std::string_view part, std::string_view type, std::string content)
{
    Put(part, type, [text = std::move(content)](zip::EntrySink& sink) { sink.Add(text); });
}

void PackageEdit::PutCopy(std::string_view part, std::string_view original)
{
    const auto entry = package_.entries_.find(PartKey(original));
    if (entry == package_.entries_.end())
        package_.FailMissing(original);
    ChangePart(part).copyOf = entry->second;
    types_.Set(part, package_.TypeOf(original));
}

void PackageEdit::Remove(std::string_view part)
{
    ChangePart(part);
    types_.Remove(part);
    const std::string relationships = RelationshipsPartName(part);
    if (package_.Has(relationships) || changes_.contains(PartKey(relationships)))
        ChangePart(relationships);
}

void PackageEdit::SetRelationships(std::string_view part, Relationships relationships)
{
    if (!package_.Has(RelationshipsPartName(part)) && relationships.All().empty())
        return;
    PutRelationships(
        part, [all = std::move(relationships)](zip::EntrySink& sink) { sink.Add(all.ToXml()); });
}

void PackageEdit::PutRelationships(std::string_view part, Content content)
{
    Put(RelationshipsPartName(part), kRelationshipsType, std::move(content));
}

void PackageEdit::Save(const std::filesystem::path& target) const
{
    Verify();
    util::FileReplacement replacement(target);
    try {
        zip::Writer writer;
        WriteEntries(writer);
        writer.Write(replacement.TemporaryPath());
        package_.zip_->CheckUnchanged(); // else one half could be of one version and one of another
    }
    catch (const util::Error& error) { // the user knows the target, not the temporary file
        if (error.Subject() != util::FromPath(replacement.TemporaryPath()))
            throw;
        throw util::Error(error.Kind(), util::FromPath(target), error.Cause());
    }
    replacement.Commit();
}

/// The change of a part of the package; nullptr if it stays, and for entries that are not parts.
const PackageEdit::Change* PackageEdit::ChangeOf(std::size_t entry) const
{
    const auto change = changes_.find(PartKey(package_.NameOf(entry)));
    return change != changes_.end() && package_.IsPart(entry) ? &change->second : nullptr;
}

/// Entries that are copied packed are not looked at when they are written.
void PackageEdit::Verify() const
{
    for (std::size_t index = 0; index < package_.zip_->Entries().size(); ++index) {
        if (ChangeOf(index) == nullptr)
            package_.zip_->Verify(index);
    }
    for (const auto& [key, change] : changes_) {
        if (change.copyOf)
            package_.zip_->Verify(*change.copyOf);
    }
}

void PackageEdit::WriteEntries(zip::Writer& writer) const
{
    for (std::size_t index = 0; index < package_.zip_->Entries().size(); ++index) {
        const std::string& name = package_.zip_->Entries()[index].name;
        if (const Change* const change = ChangeOf(index))
            WriteChange(writer, *change, name);
        else if (package_.IsContentTypes(index) && types_.Changed())
            writer.AddEntry(name, [this](zip::EntrySink& sink) { sink.Add(types_.ToXml()); });
        else
            writer.CopyEntry(*package_.zip_, index, name);
    }
    for (const Key& key : added_)
        WriteChange(writer, changes_.at(key), changes_.at(key).name.substr(1));
}

void PackageEdit::WriteChange(zip::Writer& writer, const Change& change,
                              const std::string& name) const
{
    if (change.content)
        writer.AddEntry(name, change.content);
    else if (change.copyOf)
        writer.CopyEntry(*package_.zip_, *change.copyOf, name);
}

} // namespace orrery::xlsx
