#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::xls {

/// An object of a sheet whose data is in a storage of the file, under its root.
struct EmbeddedObject {
    std::size_t place = 0;    ///< offset in the sheet of the storage's number, four bytes
    std::uint32_t number = 0; ///< the number of the storage, see `StorageName`
};

/// A control whose data is in the file's stream "Ctls".
struct StoredControl {
    std::size_t place = 0;   ///< offset in the sheet of `begin`, four bytes
    std::uint32_t begin = 0; ///< offset in the stream
    std::uint32_t size = 0;  ///< bytes
};

/// The objects of a sheet that have data outside the workbook stream. [MS-XLS] 2.5.150
struct EmbeddedPlaces {
    std::vector<EmbeddedObject> objects;
    std::vector<StoredControl> controls;

    bool Empty() const { return objects.empty() && controls.empty(); }
};

/// Finds them in a sheet's substream. Objects with damaged records are left out.
/// Throws Error(DamagedWorkbook) if a record runs past the end.
EmbeddedPlaces FindEmbedded(std::string_view sheet);

/// The name of an object's storage, such as "MBD0063FA15".
std::string StorageName(std::uint32_t number);

/// Where the data of one copy's objects is, in the order of the model's `EmbeddedPlaces`.
struct FreshEmbedding {
    std::vector<std::uint32_t> objects;  ///< numbers of storages
    std::vector<std::uint32_t> controls; ///< offsets in "Ctls"
};

/// Writes them into a copy's bytes. `places` are those of the model.
void PutEmbedding(std::string& sheet, const EmbeddedPlaces& places,
                  const FreshEmbedding& embedding);

/// Gives the objects of copied sheets their own data. Objects of one sheet that share data share it
/// in its copies, too.
class EmbeddedCopies {
public:
    /// The names of the storages and the streams under the file's root. `controls`: the bytes of
    /// "Ctls", empty if there is none.
    EmbeddedCopies(const std::vector<std::string>& storages,
                   const std::vector<std::string>& streams, std::string controls);

    /// Plans one more copy. An object whose data is missing keeps its numbers.
    FreshEmbedding AddCopy(const EmbeddedPlaces& places);

    /// The storages that must be copied: the existing name and the new name, both in upper case.
    const std::vector<std::pair<std::string, std::string>>& Storages() const { return storages_; }
    /// The new bytes of "Ctls", which begin with the old ones. They are built by this call.
    std::string Controls() const;
    std::uint64_t ControlsSize() const { return controlsSize_; } ///< bytes that `Controls` returns
    bool ControlsChanged() const { return controlsSize_ != controls_.size(); }

private:
    using ByteRange = std::pair<std::uint32_t, std::uint32_t>; ///< begin and size in "Ctls"

    std::uint32_t CopyStorage(std::uint32_t number);
    std::uint32_t CopyControl(const ByteRange& control);

    std::set<std::string> originals_; // upper-case names of storages
    std::set<std::string> taken_;     // the same, with those of streams and of copies
    std::uint32_t lastNumber_ = 0;    // the last number given to a copy
    std::string controls_;
    std::uint64_t controlsSize_;
    std::vector<ByteRange> addedControls_;
    std::vector<std::pair<std::string, std::string>> storages_;
};

} // namespace orrery::xls
