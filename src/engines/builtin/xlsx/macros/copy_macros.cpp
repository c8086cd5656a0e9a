#include "engines/builtin/xlsx/macros/copy_macros.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/compound_writer.h"

#include <string_view>
#include <utility>

namespace orrery::xlsx {
namespace {

/// There are several kinds, for digests of several ages. [MS-OSHARED] 2.3.2
bool IsSignature(const Relationship& relationship)
{
    const std::string_view type = relationship.Type;
    return !relationship.External &&
           type.substr(type.rfind('/') + 1).starts_with("vbaProjectSignature");
}

} // namespace

CopyMacros::CopyMacros(const Package& package, const std::vector<vba::SheetModule>& sheets)
    : package_(package)
{
    if (!vba::MayNeedModules(sheets))
        return;
    const std::string& workbook = package.MainPart();
    const auto* project = package.RelationshipsOf(workbook).FindByType("vbaProject");
    if (project == nullptr || project->External)
        return;
    part_ = ResolveTarget(workbook, project->Target);
    if (!package.Has(part_))
        return;
    try {
        ReadProject(sheets);
    }
    catch (const util::Error& error) {
        macros_.reset();
        losses_.push_back(vba::MacrosNotCopied(error));
    }
}

void CopyMacros::ReadProject(const std::vector<vba::SheetModule>& sheets)
{
    file_ = std::make_unique<xls::CompoundFile>(*package_.Read(part_));
    const vba::CopiedMacros& macros = macros_.emplace(*file_, xls::kRootEntry, sheets);
    if (const auto& loss = macros.Loss())
        losses_.push_back(*loss);
    if (macros.IsChanged())
        FindSignatures();
}

/// They do not fit the project with the modules of copies.
void CopyMacros::FindSignatures()
{
    for (const Relationship& relationship : package_.RelationshipsOf(part_).All()) {
        if (IsSignature(relationship))
            signatures_.push_back(relationship);
    }
    if (!signatures_.empty())
        losses_.emplace_back(book::ErrorKind::SignatureNotKept);
}

std::optional<std::string> CopyMacros::CodeNameOf(std::size_t position) const
{
    if (!macros_ || macros_->CodeNameOf(position).empty())
        return std::nullopt;
    return macros_->CodeNameOf(position);
}

void CopyMacros::Put(PackageEdit& edit) const
{
    if (!macros_ || !macros_->IsChanged())
        return;
    xls::CompoundWriter writer(*file_);
    macros_->WriteTo(writer);
    edit.Put(part_, package_.TypeOf(part_), writer.ToBytes());
    if (signatures_.empty())
        return;
    Relationships links = package_.RelationshipsOf(part_);
    for (const Relationship& signature : signatures_) {
        links.Remove(signature.Id);
        const std::string part = ResolveTarget(part_, signature.Target);
        if (package_.TypeOf(part).find("vbaProjectSignature") != std::string::npos)
            edit.Remove(part);
    }
    edit.SetRelationships(part_, std::move(links));
}

} // namespace orrery::xlsx
