#pragma once

#include "engines/builtin/xlsx/identities.h"
#include "engines/builtin/xlsx/package.h"
#include "engines/builtin/xlsx/references.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// The names of sheets and tables as seen from one sheet, asked for when its parts are written.
struct NamesOfOwner {
    std::function<SheetNames()> sheets;
    std::function<TableNames()> tables;
};

/// A sheet's copy in the package.
struct CopiedSheet {
    std::string part;
    std::shared_ptr<const CopyIdentity> identity;
};

/// Copies sheets within a package: the sheet's part and every part that it owns (drawings, charts,
/// comments, tables, controls, printer settings ...). Pictures and what belongs to the workbook
/// (pivot caches, persons, slicer caches) are shared.
class SheetCopier {
public:
    /// The package outlives the copier.
    SheetCopier(Package& package, const std::vector<std::string>& definedNames);

    /// Copies the template's sheet `model`. `content` gives the copy's own text when the package is
    /// saved; `names` what the copy calls the sheets then.
    CopiedSheet Copy(const std::string& model, std::function<std::string()> content,
                     NamesOfOwner names);
    /// Brings the links of copied parts that lead into the workbook up to the names of now;
    /// to be called before the package is saved.
    void UpdateLinks();

private:
    struct Context; // one copy in the making
    std::string CopyPart(const std::string& part, Context& context);
    Relationships CopyRelationships(const std::string& part, const std::string& copy,
                                    Context& context);
    void PutContent(const std::string& part, const std::string& copy, const Context& context);
    const std::vector<ReferenceSite>& ReferencesOf(const std::string& part);

    struct Linked { // a copied part whose relationships lead into the workbook
        std::string part;
        Relationships relationships; // with the template's names
        NamesOfOwner names;
    };
    Package& package_;
    Identities identities_;
    std::map<std::string, std::vector<ReferenceSite>> references_; // by the template's part
    std::vector<Linked> linked_;
};

/// The parts that a sheet owns, itself left out, in the order of its relationships.
std::vector<std::string> OwnedParts(const Package& package, const std::string& sheet);

/// Whether the relationships hold links into the workbook ("#Sheet1!A1").
bool HasInnerLinks(const Relationships& relationships);
/// The relationships with such links renamed; the same where no name changes.
Relationships RenameInnerLinks(Relationships relationships, const SheetNames& names);

/// Whether parts of this content type are text that may name sheets.
bool MayNameSheets(std::string_view type);
/// Whether the content type is that of VML, which need not be well-formed XML.
bool IsVml(std::string_view type);
/// The text of such a part, and the places where it names sheets.
PartText ReadText(const Package& package, std::string_view part);
std::vector<ReferenceSite> FindReferencesIn(const Package& package, const std::string& part);
/// The replacements in a part that the names of now make, the columns of a table included.
TextPatch RenameInPart(std::string_view text, const std::string& part, std::string_view type,
                       const std::vector<ReferenceSite>& sites, const SheetNames& sheets,
                       const TableNames& tables);

} // namespace orrery::xlsx
