#include "engines/builtin/vba/compression.h"

#include "engines/builtin/xls/compound/bytes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace orrery::vba {
namespace {

constexpr char kContainerSignature = 1;
constexpr std::size_t kChunk = 4096; ///< bytes that a chunk holds
constexpr std::size_t kChunkHeader = 2;
constexpr unsigned kCompressed = 0x8000; ///< in the header of a chunk
constexpr unsigned kChunkSignature = 0x3000;
constexpr unsigned kSignatureMask = 0x7000;
constexpr unsigned kSizeMask = 0x0FFF;
constexpr std::size_t kShortestCopy = 3;
constexpr unsigned kTokens = 8; ///< that follow a byte of flags

[[noreturn]] void ThrowBadCompression()
{
    xls::ThrowDamaged("their code cannot be decompressed");
}

/// The low bits of a token give the length of a copy, the high ones how far back it begins. How
/// many of each there are depends on the bytes of the chunk so far, of which there is at least one.
/// [MS-OVBA] 2.4.1.3.19.1
unsigned LengthBits(std::size_t done)
{
    const auto bits = static_cast<unsigned>(std::bit_width(done - 1));
    return 16 - std::max(4U, bits);
}

/// Appends what a token stands for to a chunk that begins at `begin`.
void AppendCopy(unsigned token, std::size_t begin, std::string& bytes)
{
    const std::size_t done = bytes.size() - begin;
    if (done == 0)
        ThrowBadCompression();
    const unsigned lengthBits = LengthBits(done);
    const std::size_t length = (token & ((1U << lengthBits) - 1)) + kShortestCopy;
    const std::size_t back = (token >> lengthBits) + 1;
    if (back > done || length > kChunk - done)
        ThrowBadCompression();
    for (std::size_t i = 0; i < length; ++i) // the copy may overlap what it is copied from
        bytes += bytes[bytes.size() - back];
}

void AppendTokens(std::string_view tokens, std::string& bytes)
{
    const std::size_t begin = bytes.size();
    for (std::size_t at = 0; at < tokens.size();) {
        const unsigned flags = xls::ReadU8(tokens, at++);
        for (unsigned i = 0; i < kTokens && at < tokens.size(); ++i) {
            if ((flags >> i & 1U) != 0) {
                if (tokens.size() - at < 2)
                    ThrowBadCompression();
                AppendCopy(xls::ReadU16(tokens, at), begin, bytes);
                at += 2;
                continue;
            }
            if (bytes.size() - begin == kChunk)
                ThrowBadCompression();
            bytes += tokens[at++];
        }
    }
}

/// Finds what the bytes of a chunk have in common with those before them.
class History {
public:
    explicit History(std::string_view chunk) : chunk_(chunk) { last_.fill(kNowhere); }

    struct Match {
        std::size_t back = 0;
        std::size_t length = 0;
    };

    /// The longest match, of at most `most` bytes, among the places added so far.
    Match Find(std::size_t at, std::size_t most) const
    {
        Match best;
        if (!HasKey(at))
            return best;
        std::uint16_t from = last_[KeyAt(at)];
        for (int tries = 0; tries < kTries && from != kNowhere; ++tries) {
            const std::size_t length = CommonLength(from, at, most);
            if (length > best.length)
                best = {at - from, length};
            from = before_[from];
        }
        return best;
    }

    void Add(std::size_t at)
    {
        if (!HasKey(at))
            return;
        std::uint16_t& last = last_[KeyAt(at)];
        before_[at] = last;
        last = static_cast<std::uint16_t>(at);
    }

private:
    static constexpr std::uint16_t kNowhere = 0xFFFF;
    static constexpr unsigned kKeyBits = 12;
    static constexpr int kTries = 64; // a bound for chunks in which everything is alike

    bool HasKey(std::size_t at) const { return chunk_.size() - at >= kShortestCopy; }

    /// A number for the three bytes at a place. Few others share it.
    std::size_t KeyAt(std::size_t at) const
    {
        const std::uint32_t first = xls::ReadU8(chunk_, at);
        const std::uint32_t others = xls::ReadU16(chunk_, at + 1);
        const std::uint32_t bytes = others << 8U | first;
        return bytes * 2654435761U >> (32U - kKeyBits);
    }

    std::size_t CommonLength(std::size_t from, std::size_t at, std::size_t most) const
    {
        std::size_t length = 0;
        while (length < most && chunk_[from + length] == chunk_[at + length])
            ++length;
        return length;
    }

    std::string_view chunk_;
    std::array<std::uint16_t, std::size_t{1} << kKeyBits> last_{}; // the last place with each key
    std::array<std::uint16_t, kChunk> before_{}; // the place with the same key before each
};

/// The tokens of a chunk, with their flags.
std::string TokensOf(std::string_view chunk)
{
    std::string tokens;
    History history(chunk);
    std::size_t flagsAt = 0;
    unsigned flags = 0;
    unsigned token = kTokens;
    for (std::size_t at = 0; at < chunk.size(); ++token) {
        if (token == kTokens) {
            token = flags = 0;
            flagsAt = tokens.size();
            tokens += '\0';
        }
        const unsigned lengthBits = at == 0 ? 0 : LengthBits(at);
        const std::size_t longest = (std::size_t{1} << lengthBits) - 1 + kShortestCopy;
        const auto match = history.Find(at, std::min(longest, chunk.size() - at));
        const bool isCopy = match.length >= kShortestCopy;
        if (isCopy) {
            flags |= 1U << token;
            xls::PutU8(tokens, flagsAt, static_cast<std::uint8_t>(flags));
            xls::AppendU16(tokens, static_cast<std::uint16_t>((match.back - 1) << lengthBits |
                                                              (match.length - kShortestCopy)));
        }
        else {
            tokens += chunk[at];
        }
        for (const std::size_t end = at + (isCopy ? match.length : 1); at < end; ++at)
            history.Add(at);
    }
    return tokens;
}

void AppendChunk(std::string_view chunk, std::string& container)
{
    std::string content = TokensOf(chunk);
    unsigned flag = kCompressed;
    if (content.size() > kChunk) {
        content = chunk;
        content.resize(kChunk);
        flag = 0;
    }
    // The size counts the header, less three.
    const auto size = static_cast<unsigned>(content.size() + kChunkHeader - 3);
    xls::AppendU16(container, static_cast<std::uint16_t>(flag | kChunkSignature | size));
    container += content;
}

} // namespace

std::string Decompress(std::string_view container, std::size_t most)
{
    if (!container.starts_with(kContainerSignature))
        ThrowBadCompression();
    std::string bytes;
    for (std::size_t at = 1; at < container.size();) {
        if (container.size() - at < kChunkHeader)
            ThrowBadCompression();
        const unsigned header = xls::ReadU16(container, at);
        const std::size_t size = (header & kSizeMask) + 3;
        if ((header & kSignatureMask) != kChunkSignature || container.size() - at < size)
            ThrowBadCompression();
        const auto content = container.substr(at + kChunkHeader, size - kChunkHeader);
        if ((header & kCompressed) != 0)
            AppendTokens(content, bytes);
        else if (content.size() == kChunk)
            bytes += content;
        else
            ThrowBadCompression();
        if (bytes.size() > most)
            xls::ThrowDamaged("their code is too large");
        at += size;
    }
    return bytes;
}

std::string Compress(std::string_view bytes)
{
    std::string container(1, kContainerSignature);
    for (std::size_t at = 0; at < bytes.size(); at += kChunk)
        AppendChunk(bytes.substr(at, kChunk), container);
    return container;
}

} // namespace orrery::vba
