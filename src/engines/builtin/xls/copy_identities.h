#pragma once

#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/drawing/drawing_group.h"
#include "engines/builtin/xls/formula/references.h"
#include "engines/builtin/xls/sheet/template_sheet.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orrery::xls {

class CompoundWriter;

/// The parts of copied sheets that must be unique in a workbook: ids of drawings, data of embedded
/// objects and controls, names of tables. They are determined before anything is written, because
/// the globals come before the sheets. All arguments must outlive this object.
class CopyIdentities {
public:
    /// Throws Error(SheetNotCopied) without a subject if a drawing is damaged or no ids are left.
    CopyIdentities(const Globals& globals, const CompoundFile& file,
                   std::vector<TemplateSheet>& originals, const std::vector<SavedSheet>& sheets);

    /// The workbook's records of drawings and of header pictures; empty if they do not change.
    std::string DrawingGroup() const;
    std::string HeaderPictures() const;
    /// The size of the data of all controls in the saved file, in bytes.
    std::uint64_t ControlBytes() const;
    /// The bytes that the copies' parts add to the file at least, apart from the workbook stream.
    std::uint64_t AddedBytes() const;
    /// Copies the data of embedded objects and controls.
    void CopyData(CompoundWriter& writer) const;
    /// Gives the copy at a position its own parts: in place, and in the patch if a size changes.
    void Apply(std::string& bytes, TextPatch& patch, std::size_t position) const;

private:
    struct Identity {
        std::vector<FreshDrawingIds> drawings;
        std::vector<FreshDrawingIds> headerDrawings;
        FreshEmbedding embedding;
        std::optional<FreshTables> tables;
    };

    void GiveDrawingIds();
    void CopyObjects();
    void FindStoredObjects();
    void NameTables();

    const Globals& globals_;
    const CompoundFile& file_;
    std::vector<TemplateSheet>& originals_;
    const std::vector<SavedSheet>& sheets_;
    xls::DrawingGroup drawings_;
    xls::DrawingGroup headerDrawings_;
    std::optional<EmbeddedCopies> objects_;
    std::map<std::string, EntryId> storages_; // under the root, by upper-case name
    std::optional<EntryId> controls_;
    std::map<std::size_t, Identity> identities_; // of copies, by position
};

} // namespace orrery::xls
