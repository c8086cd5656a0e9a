#include "engines/builtin/xlsx/document_titles.h"

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/formula/formula.h"
#include "engines/builtin/xml/attribute_patch.h"
#include "engines/builtin/xml/reading.h"
#include "engines/common/sheet_names.h"

#include <algorithm>
#include <array>
#include <optional>

namespace orrery::xlsx {

using book::SameName;
using builtin::TextPatch;

namespace {

/// An element that contains only text.
struct Leaf {
    std::string text; ///< decoded
    xml::TextRange element;
    xml::TextRange content;
};

Leaf ReadLeaf(xml::Scanner& scanner)
{
    Leaf leaf;
    leaf.element.begin = scanner.Begin();
    leaf.content.begin = scanner.End();
    leaf.text = scanner.ElementText();
    leaf.content.end = std::max(scanner.Begin(), leaf.content.begin);
    leaf.element.end = scanner.End();
    return leaf;
}

/// The lists of the part: pairs of a heading, which may be in any language, and a count, and the
/// titles in the same order.
struct Listing {
    std::vector<Leaf> counts;
    std::vector<Leaf> titles;
    std::size_t vector = 0; ///< offset of the element that counts the titles
    std::optional<std::size_t> size;
};

bool IsNumberElement(std::string_view name)
{
    constexpr std::array<std::string_view, 4> kNumbers = {"i4", "ui4", "int", "uint"};
    return std::find(kNumbers.begin(), kNumbers.end(), name) != kNumbers.end();
}

Listing ReadListing(std::string_view xml, std::string_view partName)
{
    Listing listing;
    bool inTitles = false;
    xml::Scanner scanner(xml, partName);
    for (auto token = scanner.Next(); token != xml::Scanner::Token::End; token = scanner.Next()) {
        if (token != xml::Scanner::Token::StartTag)
            continue;
        const std::string_view name = scanner.LocalName();
        if (name == "HeadingPairs" || name == "TitlesOfParts") {
            inTitles = name == "TitlesOfParts";
        }
        else if (inTitles && name == "vector") {
            listing.vector = scanner.Begin();
            listing.size = xml::ReadDigits(scanner.Attribute("size"));
        }
        else if (inTitles && name == "lpstr" && listing.size) {
            listing.titles.push_back(ReadLeaf(scanner));
        }
        else if (!inTitles && IsNumberElement(name)) {
            listing.counts.push_back(ReadLeaf(scanner));
        }
        else if (scanner.Depth() == 2) {
            scanner.SkipElement(); // other properties
        }
    }
    return listing;
}

/// How many titles each heading has; nothing if the counts do not fit the titles.
std::vector<std::size_t> GroupSizes(const Listing& listing)
{
    std::vector<std::size_t> sizes;
    std::size_t sum = 0;
    for (const Leaf& count : listing.counts) {
        sizes.push_back(xml::ReadDigits(count.text).value_or(listing.titles.size() + 1));
        sum += sizes.back();
    }
    if (sum != listing.titles.size() || listing.size != sum)
        sizes.clear();
    return sizes;
}

class TitlePatcher {
public:
    TitlePatcher(std::string_view xml, const std::vector<std::string>& oldSheets,
                 const std::vector<SavedSheet>& newSheets)
        : xml_(xml), oldSheets_(oldSheets), newSheets_(newSheets), listed_(oldSheets.size())
    {
    }

    std::string Update(const Listing& listing)
    {
        const auto sizes = GroupSizes(listing);
        auto title = listing.titles.begin();
        for (std::size_t group = 0; group < sizes.size(); ++group) {
            const auto end = title + static_cast<std::ptrdiff_t>(sizes[group]);
            const std::vector<Leaf> titles(title, end);
            const std::size_t before = added_;
            if (HoldsSheets(titles)) {
                std::for_each(titles.begin(), titles.end(),
                              [&](const Leaf& each) { UpdateSheet(each); });
            }
            else if (!titles.empty() && !anySheets_) {
                return std::string(xml_); // the sheets come first, and these are not the workbook's
            }
            else {
                std::for_each(titles.begin(), titles.end(),
                              [&](const Leaf& each) { UpdateName(each); });
            }
            const Leaf& count = listing.counts[group];
            ReplaceNumber(count.content, sizes[group], added_ - before);
            title = end;
        }
        if (added_ > 0) {
            xml::SetAttribute(patch_, xml_, listing.vector, "size",
                              std::to_string(listing.titles.size() + added_));
        }
        return patch_.Apply(xml_);
    }

private:
    std::size_t OldSheet(std::string_view name) const
    {
        const auto found = std::find_if(oldSheets_.begin(), oldSheets_.end(),
                                        [&](const auto& old) { return SameName(old, name); });
        return static_cast<std::size_t>(found - oldSheets_.begin());
    }

    /// Whether the titles are sheets that were not listed yet: worksheets, then chart sheets. A
    /// defined name may have the name of a sheet.
    bool HoldsSheets(const std::vector<Leaf>& titles)
    {
        auto listed = listed_;
        for (const Leaf& title : titles) {
            const std::size_t sheet = OldSheet(title.text);
            if (sheet == oldSheets_.size() || listed[sheet])
                return false;
            listed[sheet] = true;
        }
        listed_ = listed;
        anySheets_ |= !titles.empty();
        return !titles.empty();
    }

    void UpdateSheet(const Leaf& title)
    {
        const std::size_t origin = OldSheet(title.text);
        const std::size_t position = PositionOfOriginal(newSheets_, origin);
        if (position < newSheets_.size())
            ReplaceTitle(title, newSheets_[position].Name);
        for (const std::size_t copy : PositionsOfCopies(newSheets_, origin))
            AddTitle(title, newSheets_[copy].Name);
    }

    /// "Sheet1!Print_Area": a sheet's own name, which its copies have, too.
    void UpdateName(const Leaf& title)
    {
        FormulaFacts facts;
        CollectFacts(title.text, facts);
        const std::size_t origin =
            facts.sheets.size() == 1 ? OldSheet(*facts.sheets.begin()) : oldSheets_.size();
        if (origin == oldSheets_.size())
            return;
        const auto titleAt = [&](std::size_t position) {
            const auto names = [&](std::string_view) -> std::optional<std::string> {
                return newSheets_[position].Name;
            };
            return RenameInFormula(title.text, names, {}).value_or(title.text);
        };
        const std::size_t position = PositionOfOriginal(newSheets_, origin);
        if (position < newSheets_.size())
            ReplaceTitle(title, titleAt(position));
        for (const std::size_t copy : PositionsOfCopies(newSheets_, origin))
            AddTitle(title, titleAt(copy));
    }

    void ReplaceTitle(const Leaf& title, const std::string& text)
    {
        if (text != title.text)
            patch_.Replace(title.content.begin, title.content.end, xml::EncodeText(text));
    }

    void AddTitle(const Leaf& model, const std::string& text)
    {
        ++added_;
        std::string element(
            xml_.substr(model.element.begin, model.content.begin - model.element.begin));
        element += xml::EncodeText(text);
        element += xml_.substr(model.content.end, model.element.end - model.content.end);
        patch_.Insert(model.element.end, std::move(element));
    }

    void ReplaceNumber(const xml::TextRange& place, std::size_t number, std::size_t added)
    {
        if (added > 0)
            patch_.Replace(place.begin, place.end, std::to_string(number + added));
    }

    std::string_view xml_;
    const std::vector<std::string>& oldSheets_;
    const std::vector<SavedSheet>& newSheets_;
    std::vector<bool> listed_; // by position in the template
    bool anySheets_ = false;
    std::size_t added_ = 0;
    TextPatch patch_;
};

} // namespace

/// A strict workbook spells the relationship in another way. [ISO/IEC 29500-1] 15.2.12.3
std::string TitlesPart(const Package& package)
{
    const Relationships& links = package.RelationshipsOf("");
    for (const std::string_view type : {"extended-properties", "extendedProperties"}) {
        if (const Relationship* link = links.FindByType(type))
            return ResolveTarget("", link->Target);
    }
    return {};
}

std::string UpdateTitles(std::string_view xml, std::string_view partName,
                         const std::vector<std::string>& oldSheets,
                         const std::vector<SavedSheet>& newSheets)
{
    return TitlePatcher(xml, oldSheets, newSheets).Update(ReadListing(xml, partName));
}

} // namespace orrery::xlsx
