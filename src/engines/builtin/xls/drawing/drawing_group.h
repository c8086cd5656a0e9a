#pragma once

#include "engines/builtin/xls/drawing/art_stream.h"
#include "engines/builtin/xls/drawing/drawing_places.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The ids that a drawing of a copied sheet has instead of its model's.
struct FreshDrawingIds {
    std::uint32_t drawing = 0; ///< 0: the drawing keeps its ids
    /// Shape ids come in clusters of 1,024; those that the shapes fill one after the other.
    std::vector<std::uint32_t> clusters;
};

/// Writes the ids into a copy's bytes. `places` are those of the model; `ids` holds as many.
void PutDrawingIds(std::string& sheet, const DrawingPlaces& places,
                   const std::vector<FreshDrawingIds>& ids);

/// What the drawings of a workbook share: the table of ids and the pictures. [MS-ODRAW] 2.2.12
/// Copies of a group go on independently.
class DrawingGroup {
public:
    /// For DrawingKind::Sheet the MSODRAWINGGROUP records of the globals with their CONTINUE
    /// records, else the HFPICTURE records of the globals; empty where the workbook has none. They
    /// have to live as long as the group.
    DrawingGroup(DrawingKind kind, std::string_view records);

    /// Takes note of the ids of a sheet of the template, so that no copy gets them.
    void Reserve(const DrawingPlaces& places);

    /// Adds the drawings of one more copy of a sheet: to the table of ids, and to the uses of the
    /// pictures. Gives the ids of its drawings of this kind, by position; the others keep theirs.
    /// Throws Error(SheetNotCopied) without a subject where a drawing or the group is damaged, or
    /// where no ids are left.
    std::vector<FreshDrawingIds> AddCopy(const DrawingPlaces& places);

    bool Changed() const { return changed_; }
    /// Appends the records as they are now; those of the workbook where nothing changed.
    void AppendTo(std::string& stream) const;

private:
    /// The use of 1,024 shape ids. [MS-ODRAW] 2.2.46
    struct Cluster {
        std::uint32_t drawing = 0; ///< that has them; 0 where it is gone
        std::uint32_t next = 0;    ///< the lowest that is free, [0:1,024]
    };
    using Clusters = std::map<std::uint32_t, Cluster>; ///< by their number: id / 1,024

    void Read();
    void ReadTable(const ArtRecord& record);
    FreshDrawingIds AddDrawing(const Drawing& drawing);
    std::uint32_t AddDrawingId();
    std::uint32_t AddCluster(Cluster cluster);
    void CountPictures(const Drawing& drawing);
    std::string Beginning() const;
    std::size_t TableSize() const;

    DrawingKind kind_;
    std::string_view records_;
    ArtStream art_;
    bool understood_ = true;
    bool changed_ = false;

    ArtRecord container_;
    ArtRecord table_;
    std::uint32_t highestShape_ = 0;
    std::uint32_t shapeCount_ = 0;
    std::uint32_t drawingCount_ = 0;
    std::vector<Cluster> clusters_; // the first has the number 1
    Clusters reserved_;
    std::set<std::uint32_t> drawingIds_;
    std::uint32_t nextDrawingId_ = 1; // none below it is free

    std::vector<std::size_t> pictures_; // offsets of their counts in the art, 0: none
    std::map<std::uint32_t, std::uint32_t> addedUses_; // by picture, from 1
};

} // namespace orrery::xls
