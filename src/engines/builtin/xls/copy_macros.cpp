#include "engines/builtin/xls/copy_macros.h"

#include "book/error.h"
#include "engines/builtin/vba/signature.h"

#include <algorithm>
#include <utility>

namespace orrery::xls {
namespace {

constexpr const char* kProject = "_VBA_PROJECT_CUR"; // [MS-XLS] 2.1.7
constexpr const char* kProperties = "\005DocumentSummaryInformation";

} // namespace

CopyMacros::CopyMacros(const CompoundFile& file, const std::vector<TemplateSheet>& originals,
                       const std::vector<SavedSheet>& sheets)
    : file_(file)
{
    const bool hasCopies = std::any_of(sheets.begin(), sheets.end(),
                                       [](const SavedSheet& sheet) { return sheet.IsCopy; });
    const auto storage = hasCopies ? file.Find(kProject) : std::nullopt;
    if (!storage || !file.Entry(*storage).IsStorage())
        return;
    std::vector<std::optional<std::string>> codeNames; // of the template's sheets
    for (const TemplateSheet& sheet : originals)
        codeNames.push_back(sheet.Places().CodeName(sheet.Bytes()));
    const auto isNamedCopy = [&](const SavedSheet& sheet) {
        return sheet.IsCopy && codeNames[sheet.Origin].has_value();
    };
    if (std::none_of(sheets.begin(), sheets.end(), isNamedCopy))
        return;
    try {
        AddModules(*storage, codeNames, sheets);
    }
    catch (const util::Error& error) {
        project_.reset();
        codeNames_.clear();
        losses_.emplace_back(book::ErrorKind::MacrosNotCopied, std::string(), error.Cause());
        return;
    }
    if (codeNames_.empty())
        project_.reset();
    else
        FindSignature();
}

void CopyMacros::AddModules(EntryId storage,
                            const std::vector<std::optional<std::string>>& codeNames,
                            const std::vector<SavedSheet>& sheets)
{
    project_.emplace(file_, storage);
    std::vector<bool> haveCode;
    for (const auto& codeName : codeNames) {
        haveCode.push_back(codeName && project_->HasCode(*codeName));
        if (codeName)
            project_->Reserve(*codeName);
    }
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        if (sheets[i].IsCopy && haveCode[sheets[i].Origin])
            codeNames_.emplace(i, project_->AddCopy(*codeNames[sheets[i].Origin]));
    }
}

/// It is that of the project without the copies' modules.
void CopyMacros::FindSignature()
{
    const auto properties = file_.Find(kProperties);
    if (!properties || !file_.Entry(*properties).IsStream())
        return;
    auto unsignedProperties = vba::WithoutSignature(file_.ReadStream(*properties));
    if (!unsignedProperties)
        return;
    properties_ = properties;
    propertiesWithoutSignature_ = std::move(*unsignedProperties);
    losses_.emplace_back(book::ErrorKind::SignatureNotKept);
}

std::optional<std::string> CopyMacros::CodeNameOf(std::size_t position) const
{
    const auto found = codeNames_.find(position);
    return found == codeNames_.end() ? std::nullopt : std::optional(found->second);
}

void CopyMacros::WriteTo(CompoundWriter& writer) const
{
    if (project_)
        project_->WriteTo(writer);
    if (properties_)
        writer.ReplaceStream(*properties_, propertiesWithoutSignature_);
}

} // namespace orrery::xls
