#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orrery::xls::test {

/// A stream, or a storage with its members, of a compound file that a test builds.
struct Node {
    std::u16string name;
    std::string bytes; ///< of a stream
    bool isStorage = false;
    std::vector<Node> members = {};
    std::string classId = {}; ///< 16 bytes, or none
    std::uint32_t stateBits = 0;
    std::uint64_t modified = 0;
};

Node Stream(std::u16string name, std::string bytes);
Node Storage(std::u16string name, std::vector<Node> members);

/// How the members of a storage are linked. All entries are black.
enum class TreeShape {
    Chain,    ///< each is the right child of the one before, in order
    Reversed, ///< the same from last to first: out of order
};

struct Layout {
    std::size_t sectorSize = 512;
    unsigned seed = 0; ///< other than 0: the sectors are in a random order
    TreeShape shape = TreeShape::Chain;
};

/// A compound file with those members of the root. Entries are numbered storage by storage.
std::string BuildCompound(const std::vector<Node>& members, const Layout& layout = {});

/// Bytes that depend on the seed.
std::string Noise(std::size_t size, unsigned seed);

} // namespace orrery::xls::test
