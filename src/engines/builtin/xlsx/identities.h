#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/package/package.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace orrery::xlsx {

using builtin::TextPatch;

/// The names and ids of a copied sheet that differ from its model's, by the model's.
struct CopyIdentity {
    std::map<std::string, std::string> tables;     ///< display names
    std::map<std::string, std::string> slicers;    ///< slicers and timelines
    std::map<std::string, std::string> guids;      ///< threaded comments, braces included
    std::map<std::string, std::uint32_t> tableIds; ///< by the model's display name
};

/// The names and ids that must be unique in a workbook; copied parts get new ones.
class Identities {
public:
    /// Collects those of the package's parts and the given defined names. Parts that cannot be read
    /// are ignored.
    Identities(const Package& package, const std::vector<std::string>& definedNames);

    /// New ones for everything that these parts of a sheet declare. Throws Error as `Package` does
    /// if one cannot be read; no name is taken then.
    CopyIdentity ForCopy(const Package& package, const std::vector<std::string>& ownedParts);

private:
    std::string FreeName(const std::string& name);

    std::unordered_set<std::string> taken_; // upper-case names of tables, slicers, defined names
    std::unordered_map<std::string, unsigned> numbers_; // the next number to try for such a name
    std::uint32_t lastTableId_ = 0;
    std::uint32_t copies_ = 0;
};

/// The replacements that give a copied part its own identity.
TextPatch ApplyIdentity(std::string_view xml, std::string_view partName, std::string_view type,
                        const CopyIdentity& identity);
/// Whether parts of this content type declare or use such names.
bool HasIdentity(std::string_view type);

} // namespace orrery::xlsx
