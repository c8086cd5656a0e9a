#pragma once

#include "engines/builtin/xls/compound/compound_file.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <tuple>

namespace orrery::xls::test {

/// The content of a compound file by path ("/_VBA_PROJECT_CUR/VBA/dir"), without its layout.
struct EntryContent {
    EntryId id = 0;
    std::u16string name;
    EntryType type = EntryType::Unallocated;
    std::string classId;
    std::uint32_t stateBits = 0;
    std::uint64_t created = 0;
    std::uint64_t modified = 0;
    std::string bytes; ///< of a stream
    friend bool operator==(const EntryContent&, const EntryContent&) = default;
};
using Snapshot = std::map<std::u16string, EntryContent>;

inline Snapshot SnapshotOf(const CompoundFile& file)
{
    Snapshot snapshot;
    for (EntryId id = 0; id < file.Entries().size(); ++id) {
        const DirectoryEntry& entry = file.Entry(id);
        if (entry.type == EntryType::Unallocated)
            continue;
        std::u16string path;
        for (EntryId at = id; at != kRootEntry; at = file.Entry(at).parent)
            path = u"/" + file.Entry(at).name + path;
        snapshot[path] = {id,
                          entry.name,
                          entry.type,
                          {entry.classId.begin(), entry.classId.end()},
                          entry.stateBits,
                          entry.created,
                          entry.modified,
                          entry.IsStream() ? file.ReadStream(id) : std::string()};
    }
    return snapshot;
}

/// Prints no long output on failure.
inline void ExpectSame(const Snapshot& actual, const Snapshot& expected)
{
    EXPECT_EQ(actual.size(), expected.size());
    for (const auto& [path, content] : expected) {
        const auto found = actual.find(path);
        EXPECT_TRUE(found != actual.end() && found->second == content)
            << "entry " << content.id << (found == actual.end() ? " is gone" : " differs");
    }
}

} // namespace orrery::xls::test
