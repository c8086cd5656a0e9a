#pragma once

#include "engines/builtin/xlsx/package/package.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::xlsx {

/// A part of a copied sheet, and its relationships.
struct PlannedPart {
    std::string original;
    std::string copy;                     ///< a free name
    const Relationships* relationships{}; ///< of the original, in the package
    /// The targets that differ in the copy, by the position of their relationship.
    std::vector<std::pair<std::size_t, std::string>> targets;
    std::vector<std::size_t> dropped; ///< positions of relationships that the copy does not have
};

/// The names of the parts of all copies so far.
struct NewPartNames {
    std::set<std::string> keys; ///< PartKey of each
    /// The numbers from which free ones are searched, by the rest of the name. Copied parts are
    /// never removed, so no lower number becomes free again.
    std::map<std::string, std::size_t> numbers;
};

/// The parts of one copied sheet.
struct CopyPlan {
    /// A part or its relationships, in the order of the container.
    struct Step {
        std::size_t part = 0;
        bool isRelationships = false;
    };
    std::vector<PlannedPart> parts; ///< the sheet first
    std::vector<Step> steps;
    std::uint64_t size = 0;                     ///< of the originals, unpacked, in bytes
    NewPartNames names;                         ///< its own keys, and the next numbers
    std::map<std::string, std::size_t> indexes; ///< of the parts, by the PartKey of the original

    /// The name of the copy of a part, which is one of the plan.
    const std::string& CopyOf(const std::string& original) const;
};

/// What a copy of a sheet consists of: its own part and every part that it owns, each once, however
/// often it is referred to and however it is spelled. The copies have names like those of their
/// models ("/xl/charts/chart12.xml") with the first number that is free in the package and among
/// the names of earlier copies. Throws Error as `Package` does if relationships are damaged.
/// `others` are parts of the workbook that the copy needs for itself.
CopyPlan PlanCopy(const Package& package, const std::string& sheet,
                  const std::vector<std::string>& others, const NewPartNames& earlier);

/// The parts that a sheet owns, without itself, in the order of its relationships.
std::vector<std::string> OwnedParts(const Package& package, const std::string& sheet);

/// The relationships of a copied part: the original's as the plan wants them.
Relationships PlannedRelationships(const PlannedPart& part);

/// Whether a relationship is a link into the workbook ("#Sheet1!A1").
bool IsInnerLink(const Relationship& relationship);

} // namespace orrery::xlsx
