#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::xls {

/// An object of a sheet whose data lie in a storage of the file, under its root.
struct EmbeddedObject {
    std::size_t place = 0;    ///< offset in the sheet of the four bytes that name the storage
    std::uint32_t number = 0; ///< what they say, see `StorageName`
};

/// A control whose data lie in the file's stream "Ctls".
struct StoredControl {
    std::size_t place = 0;   ///< offset in the sheet of the four bytes of `begin`
    std::uint32_t begin = 0; ///< offset in the stream
    std::uint32_t size = 0;  ///< bytes
};

/// The objects of a sheet that own data outside the workbook stream. [MS-XLS] 2.5.150
struct EmbeddedPlaces {
    std::vector<EmbeddedObject> objects;
    std::vector<StoredControl> controls;

    bool Empty() const { return objects.empty() && controls.empty(); }
};

/// Finds them in a sheet's substream. Objects whose records are damaged are left out.
/// Throws Error(DamagedWorkbook) where a record runs past the end.
EmbeddedPlaces FindEmbedded(std::string_view sheet);

/// The name of an object's storage, such as "MBD0063FA15".
std::string StorageName(std::uint32_t number);

/// Where the data of one copy's objects lie, in the order of the model's `EmbeddedPlaces`.
struct FreshEmbedding {
    std::vector<std::uint32_t> objects;  ///< numbers of storages
    std::vector<std::uint32_t> controls; ///< offsets in "Ctls"
};

/// Writes them into a copy's bytes. `places` are those of the model.
void PutEmbedding(std::string& sheet, const EmbeddedPlaces& places,
                  const FreshEmbedding& embedding);

/// Gives the objects of copied sheets data of their own. Objects of one sheet that share data share
/// them in its copies, too.
class EmbeddedCopies {
public:
    /// The names of the storages and of the streams that lie under the file's root. `controls`: the
    /// bytes of "Ctls", empty where there is none.
    EmbeddedCopies(const std::vector<std::string>& storages,
                   const std::vector<std::string>& streams, std::string controls);

    /// Plans one more copy. An object whose data are not there keeps what it says.
    FreshEmbedding AddCopy(const EmbeddedPlaces& places);

    /// The storages that have to be copied: the name of one that is there, and the new name, both
    /// in capitals.
    const std::vector<std::pair<std::string, std::string>>& Storages() const { return storages_; }
    /// "Ctls" as it has to be; its beginning stays. It is made here.
    std::string Controls() const;
    std::uint64_t ControlsSize() const { return controlsSize_; } ///< bytes that `Controls` gives
    bool ControlsChanged() const { return controlsSize_ != controls_.size(); }

private:
    using Stretch = std::pair<std::uint32_t, std::uint32_t>; ///< begin and size in "Ctls"

    std::uint32_t CopyStorage(std::uint32_t number);
    std::uint32_t CopyControl(const Stretch& control);

    std::set<std::string> originals_; // names of storages in capitals
    std::set<std::string> taken_;     // with those of streams and of copies
    std::uint32_t lastNumber_ = 0;    // that a copy got
    std::string controls_;
    std::uint64_t controlsSize_;
    std::vector<Stretch> addedControls_;
    std::vector<std::pair<std::string, std::string>> storages_;
};

} // namespace orrery::xls
