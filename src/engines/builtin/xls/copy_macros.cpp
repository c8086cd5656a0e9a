#include "engines/builtin/xls/copy_macros.h"

#include "book/error.h"
#include "engines/builtin/vba/signature.h"

#include <algorithm>
#include <utility>

namespace orrery::xls {
namespace {

constexpr const char* kProject = "_VBA_PROJECT_CUR"; // [MS-XLS] 2.1.7
constexpr const char* kProperties = "\005DocumentSummaryInformation";

std::vector<vba::SheetModule> ModulesOf(const std::vector<TemplateSheet>& originals,
                                        const std::vector<SavedSheet>& sheets)
{
    std::vector<vba::SheetModule> modules;
    for (const SavedSheet& sheet : sheets) {
        const TemplateSheet& original = originals[sheet.Origin];
        auto name = original.Places().CodeName(original.Bytes());
        modules.push_back({std::move(name).value_or(std::string()), sheet.IsCopy});
    }
    return modules;
}

} // namespace

CopyMacros::CopyMacros(const CompoundFile& file, const std::vector<TemplateSheet>& originals,
                       const std::vector<SavedSheet>& sheets)
{
    const bool hasCopies = std::any_of(sheets.begin(), sheets.end(),
                                       [](const SavedSheet& sheet) { return sheet.IsCopy; });
    const auto storage = hasCopies ? file.Find(kProject) : std::nullopt;
    if (!storage || !file.Entry(*storage).IsStorage())
        return;
    const auto modules = ModulesOf(originals, sheets);
    if (!vba::MayNeedModules(modules))
        return;
    const vba::CopiedMacros& macros = macros_.emplace(file, *storage, modules);
    if (const auto& loss = macros.Loss())
        losses_.push_back(*loss);
    if (macros.IsChanged())
        RemoveSignature(file);
}

/// It does not fit the project with the modules of copies.
void CopyMacros::RemoveSignature(const CompoundFile& file)
{
    const auto properties = file.Find(kProperties);
    if (!properties || !file.Entry(*properties).IsStream())
        return;
    auto changed = vba::WithoutSignature(file.ReadStream(*properties));
    if (!changed)
        return;
    properties_ = properties;
    unsignedProperties_ = std::move(*changed);
    losses_.emplace_back(book::ErrorKind::SignatureNotKept);
}

std::optional<std::string> CopyMacros::CodeNameOf(std::size_t position) const
{
    if (!macros_ || macros_->CodeNameOf(position).empty())
        return std::nullopt;
    return macros_->CodeNameOf(position);
}

void CopyMacros::WriteTo(CompoundWriter& writer) const
{
    if (macros_)
        macros_->WriteTo(writer);
    if (properties_)
        writer.ReplaceStream(*properties_, unsignedProperties_);
}

} // namespace orrery::xls
