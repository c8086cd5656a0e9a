#include "engines/builtin/xlsx/look/look.h"

#include "book/error.h"
#include "engines/builtin/common/error_path.h"
#include "engines/builtin/xlsx/look/cells/shared_texts.h"
#include "engines/builtin/xlsx/look/cells/sheet_context.h"
#include "engines/builtin/xlsx/look/drawing/read_drawings.h"
#include "engines/builtin/xlsx/look/sheet/page_reader.h"
#include "engines/builtin/xlsx/look/sheet/sheet_reader.h"
#include "engines/builtin/xlsx/look/sheet/table_reader.h"
#include "engines/builtin/xlsx/look/style/style_sheet.h"
#include "engines/builtin/xlsx/look/style/theme_part.h"
#include "engines/builtin/xlsx/look/workbook_reader.h"
#include "engines/builtin/xlsx/package/package.h"
#include "util/error.h"
#include "util/paths.h"

#include <cassert>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orrery::xlsx {
namespace {

using book::SheetKind;
using book::SheetLook;
using builtin::WithErrorPath;

SheetKind KindOf(const Relationship& relationship)
{
    if (relationship.Is("chartsheet"))
        return SheetKind::ChartSheet;
    if (relationship.Is("dialogsheet"))
        return SheetKind::Dialog;
    const bool isMacro = relationship.Is("xlMacrosheet") || relationship.Is("xlIntlMacrosheet");
    return isMacro ? SheetKind::MacroSheet : SheetKind::Worksheet;
}

class Look : public book::WorkbookView {
public:
    explicit Look(const std::filesystem::path& path)
        : package_(path), theme_(ReadTheme(package_)), styles_(theme_)
    {
        const std::string& main = package_.MainPart();
        WorkbookEntries entries = ReadWorkbookPart(*package_.ReadXml(main), main);
        look_ = std::move(entries.look);
        FindParts(entries.relationshipIds);
        ReadStyles();
        look_.normalFont = styles_.NormalFont();
    }

    const book::WorkbookLook& Workbook() const override { return look_; }
    void CloseFile() override { package_.CloseFile(); }

    const SheetLook& Sheet(std::size_t index) override
    {
        assert(index < look_.sheets.size());
        const auto known = sheets_.find(index);
        if (known != sheets_.end())
            return known->second;
        SheetLook sheet = WithErrorPath(package_.Path(), [&] { return ReadSheet(index); });
        return sheets_.emplace(index, std::move(sheet)).first->second;
    }

private:
    void FindParts(const std::vector<std::string>& relationshipIds)
    {
        const std::string& main = package_.MainPart();
        for (std::size_t index = 0; index < relationshipIds.size(); ++index) {
            const auto* found = package_.RelationshipsOf(main).FindById(relationshipIds[index]);
            const bool isThere = found != nullptr && !found->External;
            parts_.push_back(isThere ? ResolveTarget(main, found->Target) : std::string());
            if (isThere)
                look_.sheets[index].kind = KindOf(*found);
        }
    }

    /// The part that the workbook has for all its sheets; empty if there is none.
    std::string SharedPart(std::string_view type) const
    {
        const auto* found = package_.RelationshipsOf(package_.MainPart()).FindByType(type);
        if (found == nullptr || found->External)
            return {};
        std::string part = ResolveTarget(package_.MainPart(), found->Target);
        return package_.Has(part) ? part : std::string();
    }

    void ReadStyles()
    {
        const std::string part = SharedPart("styles");
        if (part.empty())
            return;
        TellIfDamaged("styles", part,
                      [&] { styles_ = StyleSheet(theme_, *package_.ReadXml(part)); });
    }

    const SharedTexts& Texts()
    {
        if (!texts_) {
            texts_.emplace();
            const std::string part = SharedPart("sharedStrings");
            if (!part.empty())
                TellIfDamaged("texts", part, [&] { texts_.emplace(package_.Text(part)); });
        }
        return *texts_;
    }

    template <typename Action>
    void TellIfDamaged(std::string_view what, const std::string& part, Action action)
    {
        try {
            action();
        }
        catch (const util::Error&) {
            leftOut_.push_back({std::string(what), part, "the part is damaged"});
        }
    }

    SheetLook ReadSheet(std::size_t index)
    {
        SheetLook look;
        look.name = look_.sheets[index].name;
        SheetContext context(styles_, Texts(), look_.dateSystem, look);
        look.leftOut = leftOut_;
        const std::string& part = parts_[index];
        const SheetKind kind = look_.sheets[index].kind;
        if (kind == SheetKind::ChartSheet)
            ReadDrawings(package_, part, theme_, look);
        if (kind != SheetKind::Worksheet)
            return look;
        if (part.empty())
            throw util::Error(book::ErrorKind::DamagedWorkbook, util::FromPath(package_.Path()),
                              "the sheet " + look.name + " has no part");
        ReadSheetPart(package_.Text(part), part, context);
        ApplyPrintNames(look_.names, index, look.page, context.leftOut);
        ReadTables(package_, part, context);
        ReadDrawings(package_, part, theme_, look);
        return look;
    }

    Package package_;
    builtin::ThemeColors theme_;
    StyleSheet styles_;
    book::WorkbookLook look_;
    std::vector<std::string> parts_; // of the sheets; empty for one without a part
    std::optional<SharedTexts> texts_;
    std::vector<book::LeftOut> leftOut_; // of every sheet
    std::map<std::size_t, SheetLook> sheets_;
};

} // namespace

std::unique_ptr<book::WorkbookView> OpenLook(const std::filesystem::path& path)
{
    return WithErrorPath(path, [&] { return std::make_unique<Look>(path); });
}

} // namespace orrery::xlsx
