#include "engines/builtin/xlsx/defined_names.h"

#include "engines/builtin/xml/attribute_patch.h"
#include "engines/builtin/xml/reading.h"
#include "engines/common/sheet_names.h"

#include <limits>
#include <set>
#include <utility>

namespace orrery::xlsx {

using engines::FoldCase;

namespace {

constexpr std::size_t kNoSheet = std::numeric_limits<std::size_t>::max();
constexpr std::string_view kLocalSheet = "localSheetId";

/// Whether copies may have the name under names of their own: that of a chart's data, or of the
/// cache of a slicer, whose formula is an error.
bool MayHaveTwins(const NameEntry& entry)
{
    return IsChartData(entry.Name) || entry.Formula == "#N/A";
}

class NamePatcher {
public:
    NamePatcher(std::string_view xml, const std::vector<NameEntry>& names,
                const std::vector<SavedSheet>& sheets, const NameScopes& scopes)
        : xml_(xml), sheets_(sheets), scopes_(scopes)
    {
        for (const NameEntry& entry : names) {
            if (entry.LocalSheet)
                ownNames_.emplace(FoldCase(entry.Name), *entry.LocalSheet);
        }
    }

    void Add(const NameEntry& entry)
    {
        if (entry.LocalSheet) {
            AddOwnName(entry, *entry.LocalSheet);
        }
        else {
            AddWorkbookName(entry);
        }
    }

    TextPatch Take() { return std::move(patch_); }

private:
    void AddOwnName(const NameEntry& entry, std::size_t origin)
    {
        const std::size_t position = PositionOfOriginal(sheets_, origin);
        if (position == sheets_.size())
            return; // of no sheet: stays as it is
        ReplaceFormula(entry, FormulaAt(entry, position));
        if (position != origin)
            xml::SetAttribute(patch_, xml_, entry.begin, kLocalSheet, std::to_string(position));
        for (const std::size_t copy : PositionsOfCopies(sheets_, origin))
            RepeatName(entry, copy, FormulaAt(entry, copy));
    }

    void AddWorkbookName(const NameEntry& entry)
    {
        const std::string formula =
            RenameInFormula(entry.Formula, scopes_.Workbook, scopes_.WorkbookTables)
                .value_or(entry.Formula);
        ReplaceFormula(entry, formula);
        if (entry.IsMacro)
            return;
        const std::string key = FoldCase(entry.Name);
        const bool mayHaveTwins = MayHaveTwins(entry);
        for (std::size_t i = 0; i < sheets_.size(); ++i) {
            if (!sheets_[i].IsCopy)
                continue;
            if (mayHaveTwins)
                AddTwin(entry, i, FormulaAt(entry, i));
            else if (!ownNames_.contains({key, sheets_[i].Origin}))
                AddForCopy(entry, i, formula);
        }
    }

    /// Adds the name for the copy at `position` if its formula reads differently there.
    void AddForCopy(const NameEntry& entry, std::size_t position, const std::string& formula)
    {
        const auto copied = FormulaAt(entry, position);
        if (copied != formula)
            RepeatName(entry, position, copied);
    }

    /// Adds the same element under the name that the copy at `position` has for it.
    void AddTwin(const NameEntry& entry, std::size_t position, const std::string& formula)
    {
        if (const auto name = scopes_.TablesFor(position).NameOf(entry.Name))
            patch_.Insert(entry.end, ElementLike(entry, "name", *name, formula));
    }

    std::string FormulaAt(const NameEntry& entry, std::size_t position) const
    {
        return RenameInFormula(entry.Formula, scopes_.SheetsFor(position),
                               scopes_.TablesFor(position))
            .value_or(entry.Formula);
    }

    void ReplaceFormula(const NameEntry& entry, const std::string& formula)
    {
        if (formula != entry.Formula)
            patch_.Replace(entry.formulaBegin, entry.formulaEnd, xml::EncodeText(formula));
    }

    /// Adds the same element with all its attributes for the sheet at `position`. The same name
    /// twice on one sheet would make the workbook unreadable.
    void RepeatName(const NameEntry& entry, std::size_t position, const std::string& formula)
    {
        if (addedNames_.emplace(FoldCase(entry.Name), position).second) {
            patch_.Insert(entry.end,
                          ElementLike(entry, kLocalSheet, std::to_string(position), formula));
        }
    }

    /// The element with another value of an attribute and another formula.
    std::string ElementLike(const NameEntry& entry, std::string_view attribute,
                            std::string_view value, const std::string& formula) const
    {
        const std::string_view element = xml_.substr(entry.begin, entry.end - entry.begin);
        TextPatch copy;
        xml::SetAttribute(copy, element, 0, attribute, value);
        if (formula != entry.Formula) {
            copy.Replace(entry.formulaBegin - entry.begin, entry.formulaEnd - entry.begin,
                         xml::EncodeText(formula));
        }
        return copy.Apply(element);
    }

    using Key = std::pair<std::string, std::size_t>; // folded name, sheet
    std::string_view xml_;
    const std::vector<SavedSheet>& sheets_;
    const NameScopes& scopes_;
    std::set<Key> ownNames_;   // of the template's sheets
    std::set<Key> addedNames_; // of the saved sheets
    TextPatch patch_;
};

} // namespace

NameEntry ReadDefinedName(xml::Scanner& scanner)
{
    NameEntry entry;
    entry.begin = scanner.Begin();
    entry.formulaBegin = scanner.End();
    entry.Name = scanner.AttributeText("name").value_or("");
    if (const auto local = scanner.Attribute(kLocalSheet))
        entry.LocalSheet = xml::ReadDigits(local).value_or(kNoSheet);
    entry.IsMacro = xml::IsTrue(scanner.Attribute("function")) ||
                    xml::IsTrue(scanner.Attribute("vbProcedure")) ||
                    xml::IsTrue(scanner.Attribute("xlm"));
    entry.Formula = scanner.ElementText();
    entry.formulaEnd = scanner.Begin();
    entry.end = scanner.End();
    return entry;
}

TextPatch PatchDefinedNames(std::string_view xml, const std::vector<NameEntry>& names,
                            const std::vector<SavedSheet>& sheets, const NameScopes& scopes)
{
    NamePatcher patcher(xml, names, sheets, scopes);
    for (const NameEntry& entry : names)
        patcher.Add(entry);
    return patcher.Take();
}

} // namespace orrery::xlsx
