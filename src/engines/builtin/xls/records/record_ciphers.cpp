#include "engines/builtin/xls/records/record_ciphers.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/digest.h"
#include "util/unicode.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>

namespace orrery::xls {
namespace {

constexpr unsigned kXor = 0;
constexpr unsigned kRc4 = 1;
constexpr std::size_t kSaltSize = 16;
constexpr std::size_t kVerifierSize = 16;
constexpr std::size_t kBlockSize = 1024; ///< bytes of a stream that share one key

/// The key stream that RC4 makes from a key.
class Rc4 {
public:
    explicit Rc4(std::string_view key)
    {
        std::iota(state_.begin(), state_.end(), std::uint8_t{0});
        std::uint8_t j = 0;
        for (std::size_t i = 0; i < state_.size(); ++i) {
            j = static_cast<std::uint8_t>(j + state_[i] +
                                          static_cast<std::uint8_t>(key[i % key.size()]));
            std::swap(state_[i], state_[j]);
        }
    }

    void Apply(std::string& bytes)
    {
        for (char& byte : bytes)
            byte = static_cast<char>(static_cast<std::uint8_t>(byte) ^ Next());
    }

private:
    std::uint8_t Next()
    {
        ++i_;
        j_ = static_cast<std::uint8_t>(j_ + state_[i_]);
        std::swap(state_[i_], state_[j_]);
        return state_[static_cast<std::uint8_t>(state_[i_] + state_[j_])];
    }

    std::array<std::uint8_t, 256> state_;
    std::uint8_t i_ = 0;
    std::uint8_t j_ = 0;
};

/// The key of a block of the stream.
using BlockKey = std::function<std::string(std::uint32_t block)>;

/// The bytes that the stream is combined with. They are also used up by bytes that are not
/// encrypted.
class KeyStream {
public:
    explicit KeyStream(BlockKey key) : key_(std::move(key)) {}

    void operator()(std::string& stream, std::size_t begin, std::size_t end, std::size_t)
    {
        for (std::size_t at = begin; at < end; ++at) {
            if (at / kBlockSize != block_)
                GoTo(at / kBlockSize);
            stream[at] = static_cast<char>(stream[at] ^ bytes_[at % kBlockSize]);
        }
    }

private:
    void GoTo(std::size_t block)
    {
        block_ = block;
        bytes_.assign(kBlockSize, '\0');
        Rc4(key_(static_cast<std::uint32_t>(block))).Apply(bytes_);
    }

    BlockKey key_;
    std::size_t block_ = std::numeric_limits<std::size_t>::max();
    std::string bytes_;
};

/// The cipher if the password fits: the decrypted verifier has the decrypted hash.
RecordCipher CheckedRc4(BlockKey key, mbedtls_md_type_t hash, std::string_view encryptedVerifier)
{
    std::string verifier(encryptedVerifier);
    Rc4(key(0)).Apply(verifier);
    if (Digest(hash, verifier.substr(0, kVerifierSize)) != verifier.substr(kVerifierSize))
        return {};
    return KeyStream(std::move(key));
}

// [MS-OFFCRYPTO] 2.3.6: keys of 40 bits, from MD5
RecordCipher MakeRc4(std::string_view header, std::string_view password)
{
    constexpr std::size_t kSecret = 5;
    constexpr std::size_t kMd5Size = 16;
    const std::string_view salt = Slice(header, 4, kSaltSize);
    const std::string start = Digest(MBEDTLS_MD_MD5, Utf16Bytes(password)).substr(0, kSecret);
    std::string repeated;
    for (int i = 0; i < 16; ++i)
        repeated.append(start).append(salt);
    const std::string secret = Digest(MBEDTLS_MD_MD5, repeated).substr(0, kSecret);
    const auto key = [secret](std::uint32_t block) {
        return Digest(MBEDTLS_MD_MD5, secret + NumberBytes(block));
    };
    return CheckedRc4(key, MBEDTLS_MD_MD5, Slice(header, 4 + kSaltSize, kVerifierSize + kMd5Size));
}

// [MS-OFFCRYPTO] 2.3.5: keys of 40 to 128 bits, from SHA-1
RecordCipher MakeCryptoApiRc4(std::string_view header, std::string_view password)
{
    constexpr std::uint32_t kAlgorithmRc4 = 0x6801;
    constexpr std::uint32_t kHashSha1 = 0x8004;
    constexpr std::size_t kSha1Size = 20;
    constexpr std::size_t kMinKeySize = 5;
    constexpr std::size_t kMaxKeySize = 16;

    const std::size_t settingsSize = ReadU32(header, 8);
    const std::string_view settings = Slice(header, 12, settingsSize);
    const std::string_view verification = header.substr(12 + settingsSize);
    const std::uint32_t keyBits = ReadU32(settings, 16);
    const std::size_t keySize = keyBits == 0 ? kMinKeySize : keyBits / 8;
    if (ReadU32(settings, 8) != kAlgorithmRc4 || ReadU32(settings, 12) != kHashSha1 ||
        keySize < kMinKeySize || keySize > kMaxKeySize || ReadU32(verification, 0) != kSaltSize)
        return {};

    std::string salted(Slice(verification, 4, kSaltSize));
    salted += Utf16Bytes(password);
    const std::string secret = Digest(MBEDTLS_MD_SHA1, salted);
    const auto key = [secret, keySize](std::uint32_t block) {
        std::string bytes = Digest(MBEDTLS_MD_SHA1, secret + NumberBytes(block)).substr(0, keySize);
        if (keySize == kMinKeySize)
            bytes.resize(kMaxKeySize); // the provider pads the shortest keys with zeros
        return bytes;
    };
    std::string verifier(Slice(verification, 20, kVerifierSize));
    verifier += Slice(verification, 40, kSha1Size); // after its size
    return CheckedRc4(key, MBEDTLS_MD_SHA1, verifier);
}

/// The password as method 1 takes it: at most 15 bytes, the low byte of each unit unless that is
/// zero.
std::string XorPassword(std::string_view utf8)
{
    constexpr std::size_t kMaxBytes = 15;
    std::string bytes;
    for (const char16_t unit : util::ToUtf16(utf8).substr(0, kMaxBytes))
        bytes += static_cast<char>(unit % 256 != 0 ? unit % 256 : unit / 256);
    return bytes;
}

/// A checksum of the password: CRC-16 with the polynomial 0x1021, of seven bits of each byte.
std::uint16_t XorKey(std::string_view password)
{
    unsigned key = 0xFFFF;
    for (const char byte : password) {
        key ^= (static_cast<unsigned char>(byte) & 0x7FU) << 8;
        for (int bit = 0; bit < 8; ++bit)
            key = (key << 1 ^ ((key & 0x8000) != 0 ? 0x1021U : 0U)) & 0xFFFF;
    }
    return static_cast<std::uint16_t>(key);
}

std::uint16_t XorVerifier(std::string_view password)
{
    unsigned verifier = 0;
    const auto add = [&verifier](unsigned byte) {
        verifier = ((verifier << 1 | verifier >> 14) & 0x7FFF) ^ byte;
    };
    std::for_each(password.rbegin(), password.rend(),
                  [&](char byte) { add(static_cast<unsigned char>(byte)); });
    add(static_cast<unsigned>(password.size()));
    return static_cast<std::uint16_t>(verifier ^ 0xCE4B);
}

// [MS-OFFCRYPTO] 2.3.7: "method 1"
RecordCipher MakeXor(std::string_view header, std::string_view passwordText)
{
    constexpr std::string_view kPadding(
        "\xBB\xFF\xFF\xBA\xFF\xFF\xB9\x80\x00\xBE\x0F\x00\xBF\x0F\x00", 15);
    constexpr std::size_t kArraySize = 16;
    const std::string password = XorPassword(passwordText);
    const std::uint16_t key = XorKey(password);
    const bool isKey = ReadU16(header, 0) == key;
    const bool isVerifier = ReadU16(header, 2) == XorVerifier(password);
    if (password.empty() || !isKey || !isVerifier)
        return {};
    const std::string filled = password + std::string(kPadding);
    std::array<std::uint8_t, kArraySize> array{};
    for (std::size_t i = 0; i < array.size(); ++i) {
        const auto half = static_cast<std::uint8_t>(i % 2 == 0 ? key & 0xFF : key >> 8);
        array[i] =
            std::rotr(static_cast<std::uint8_t>(static_cast<std::uint8_t>(filled[i]) ^ half), 1);
    }
    return [array](std::string& stream, std::size_t begin, std::size_t end, std::size_t dataSize) {
        for (std::size_t at = begin; at < end; ++at) {
            const auto byte = static_cast<std::uint8_t>(static_cast<std::uint8_t>(stream[at]) ^
                                                        array[(at + dataSize) % kArraySize]);
            stream[at] = static_cast<char>(std::rotr(byte, 5));
        }
    };
}

} // namespace

RecordCipher MakeRecordCipher(std::string_view filePass, std::string_view password)
{
    const unsigned method = ReadU16(filePass, 0);
    const std::string_view header = filePass.substr(2);
    if (method == kXor)
        return MakeXor(header, password);
    if (method != kRc4)
        return {};
    const unsigned major = ReadU16(header, 0);
    const unsigned minor = ReadU16(header, 2);
    if (major == 1 && minor == 1)
        return MakeRc4(header, password);
    if (major >= 2 && major <= 4 && minor == 2)
        return MakeCryptoApiRc4(header, password);
    return {};
}

} // namespace orrery::xls
