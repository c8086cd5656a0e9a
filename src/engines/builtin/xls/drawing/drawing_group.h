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
    /// Shape ids come in clusters of 1,024; these are the clusters that the shapes fill in order.
    std::vector<std::uint32_t> clusters;
};

/// Writes the ids into a copy's bytes. `places` are those of the model; `ids` has as many elements.
void PutDrawingIds(std::string& sheet, const DrawingPlaces& places,
                   const std::vector<FreshDrawingIds>& ids);

/// The data that all drawings of a workbook share: the table of ids and the pictures. [MS-ODRAW]
/// 2.2.12
/// Copies of a group are independent.
class DrawingGroup {
public:
    /// `records` are, for DrawingKind::Sheet, the MSODRAWINGGROUP records of the globals with their
    /// CONTINUE records, else the HFPICTURE records of the globals; empty if the workbook has none.
    /// They must outlive the group.
    DrawingGroup(DrawingKind kind, std::string_view records);

    /// Registers the ids of a sheet of the template, so that no copy gets them.
    void Reserve(const DrawingPlaces& places);

    /// Adds the drawings of one more copy of a sheet to the table of ids and to the counts of the
    /// pictures. Returns the new ids by the position of the drawing; drawings of the other kind
    /// keep theirs. Throws Error(SheetNotCopied) without a subject if a drawing or the group is
    /// damaged, or if no ids are left.
    std::vector<FreshDrawingIds> AddCopy(const DrawingPlaces& places);

    bool Changed() const { return changed_; }
    /// Appends the current records; those of the workbook if nothing changed.
    void AppendTo(std::string& stream) const;

private:
    /// The use of 1,024 shape ids. [MS-ODRAW] 2.2.46
    struct Cluster {
        std::uint32_t drawing = 0; ///< the drawing that has them; 0 if it is gone
        std::uint32_t next = 0;    ///< the lowest free id, [0:1,024]
    };
    using Clusters = std::map<std::uint32_t, Cluster>; ///< by number: id / 1,024

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
    std::vector<Cluster> clusters_; // by number, from 1
    Clusters reserved_;
    std::set<std::uint32_t> drawingIds_;
    std::uint32_t nextDrawingId_ = 1; // no id below it is free

    std::vector<std::size_t> pictures_; // offsets of their counts in the art; 0: none
    std::map<std::uint32_t, std::uint32_t> addedUses_; // by picture, from 1
};

} // namespace orrery::xls
