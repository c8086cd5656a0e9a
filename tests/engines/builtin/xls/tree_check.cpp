#include "xls/tree_check.h"

#include <algorithm>

namespace orrery::xls::test {
namespace {

/// Checks the tree below an entry; its name must be between two others.
class Checker {
public:
    explicit Checker(const Directory& directory) : directory_(directory) {}

    /// Returns the number of black entries on each path down.
    int Check(EntryId id, const std::u16string* after, const std::u16string* before,
              bool isBelowRed)
    {
        if (id == kNoEntry)
            return 0;
        const DirectoryEntry& entry = directory_.at(id);
        const bool isRed = entry.colour == EntryColour::Red;
        if (isRed && isBelowRed)
            fault_ = "a red entry below a red one";
        if ((after != nullptr && CompareNames(*after, entry.name) >= 0) ||
            (before != nullptr && CompareNames(entry.name, *before) >= 0))
            fault_ = "not in order";
        const int left = Check(entry.left, after, &entry.name, isRed);
        const int right = Check(entry.right, &entry.name, before, isRed);
        if (left != right)
            fault_ = "out of balance";
        return std::max(left, right) + (isRed ? 0 : 1);
    }

    const std::string& Fault() const { return fault_; }

private:
    const Directory& directory_;
    std::string fault_;
};

} // namespace

std::string FindTreeFault(const Directory& directory, EntryId storage)
{
    Checker checker(directory);
    const EntryId root = directory.at(storage).child;
    if (root != kNoEntry && directory.at(root).colour == EntryColour::Red)
        return "a red root";
    checker.Check(root, nullptr, nullptr, false);
    return checker.Fault();
}

std::string FindTreeFault(const Directory& directory)
{
    for (EntryId id = 0; id < directory.size(); ++id) {
        if (!directory[id].IsStorage())
            continue;
        if (std::string fault = FindTreeFault(directory, id); !fault.empty())
            return fault;
    }
    return "";
}

} // namespace orrery::xls::test
