#pragma once

#include "engines/builtin/xlsx/workbook_part.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// A workbook part as it would be saved, without a package around it.
class WorkbookFixture {
public:
    /// `content` is the content of <workbook>, in the main namespace; "r:" is the prefix of
    /// relationships.
    explicit WorkbookFixture(std::string_view content) : WorkbookFixture(Wrap(content), 0) {}
    static WorkbookFixture OfXml(std::string xml) { return WorkbookFixture(std::move(xml), 0); }

    const WorkbookPart& Part() const { return part_; }
    /// The content as saved, without the root's tags.
    std::string Save(const std::vector<SavedSheet>& sheets, bool recalculate = false) const
    {
        const std::string xml = SaveXml(sheets, recalculate);
        const std::string_view root = kRoot;
        return xml.substr(root.size(), xml.size() - root.size() - kEnd.size());
    }
    std::string SaveXml(const std::vector<SavedSheet>& sheets, bool recalculate = false) const
    {
        return part_.ToXml(
            sheets, recalculate, NamesFor(sheets, sheets.size()), TableNames(),
            [&](std::size_t position) { return NamesFor(sheets, position); },
            [&](std::size_t position) { return TablesFor(sheets[position]); });
    }
    /// Every sheet as in the template.
    std::vector<SavedSheet> Originals() const
    {
        std::vector<SavedSheet> sheets;
        for (const auto& entry : part_.Sheets())
            sheets.push_back({entry.Name, sheets.size(), false, 0, {}});
        return sheets;
    }

private:
    static constexpr std::string_view kRoot =
        "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
        "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">";
    static constexpr std::string_view kEnd = "</workbook>";

    WorkbookFixture(std::string xml, int)
        : part_(std::make_shared<const std::string>(std::move(xml)), "/xl/workbook.xml")
    {
    }
    static std::string Wrap(std::string_view content)
    {
        return std::string(kRoot) + std::string(content) + std::string(kEnd);
    }

    /// As seen from the sheet at a position; from the workbook if there is none.
    SheetNames NamesFor(const std::vector<SavedSheet>& sheets, std::size_t viewer) const
    {
        return [this, &sheets, viewer](std::string_view name) -> std::optional<std::string> {
            const auto is = [&](const SavedSheet& sheet) {
                return book::SameName(part_.Sheets()[sheet.Origin].Name, name);
            };
            if (viewer < sheets.size() && is(sheets[viewer]))
                return sheets[viewer].Name;
            for (const auto& sheet : sheets) {
                if (!sheet.IsCopy && is(sheet))
                    return sheet.Name;
            }
            return std::nullopt;
        };
    }
    /// In a copy the table "Days" is called "Days_" and the sheet's id.
    static TableNames TablesFor(const SavedSheet& sheet)
    {
        TableNames names;
        if (sheet.IsCopy)
            names.Set("Days", {"Days_" + std::to_string(sheet.SheetId), {}, {}, {}});
        return names;
    }

    WorkbookPart part_;
};

} // namespace orrery::xlsx
