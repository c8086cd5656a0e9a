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

/// What copied sheets own that may be in a workbook only once: the ids of their drawings, the data
/// of their embedded objects and controls, the names of their tables. It is given before anything
/// is written, because the globals stand before the sheets. All that it is made from has to live
/// as long.
class CopyIdentities {
public:
    /// Throws Error(SheetNotCopied) without a subject where a drawing is damaged or no ids are
    /// left.
    CopyIdentities(const Globals& globals, const CompoundFile& file,
                   std::vector<TemplateSheet>& originals, const std::vector<SavedSheet>& sheets);

    /// The workbook's records of drawings and of header pictures, where they change; else empty.
    std::string DrawingGroup() const;
    std::string HeaderPictures() const;
    /// How large the data of all controls become, in bytes.
    std::uint64_t ControlBytes() const;
    /// At least so many bytes does what copies own add to the file, the workbook stream apart.
    std::uint64_t AddedBytes() const;
    /// Copies the data of embedded objects and controls.
    void CopyData(CompoundWriter& writer) const;
    /// Gives the copy at a position what it owns: in place, and through the patch where a size
    /// changes.
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
    std::map<std::string, EntryId> storages_; // under the root, by their names in capitals
    std::optional<EntryId> controls_;
    std::map<std::size_t, Identity> identities_; // of copies, by position
};

} // namespace orrery::xls
