#include "engines/builtin/package_password.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/digest.h"
#include "engines/builtin/xml/scanner.h"
#include "util/numbers.h"

#include <algorithm>
#include <cstdint>
#include <mbedtls/aes.h>
#include <mbedtls/base64.h>
#include <optional>
#include <string>

namespace orrery::builtin {
namespace {

using xls::Digest;
using xls::ReadU16;
using xls::ReadU32;
using xls::Slice;

constexpr std::size_t kBlock = 16; ///< bytes of AES

const unsigned char* Bytes(std::string_view text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

unsigned char* Bytes(std::string& text)
{
    return reinterpret_cast<unsigned char*>(text.data());
}

/// Decrypts with AES. The key has 16, 24 or 32 bytes.
class Decryption {
public:
    explicit Decryption(std::string_view key)
    {
        mbedtls_aes_init(&context_);
        mbedtls_aes_setkey_dec(&context_, Bytes(key), static_cast<unsigned>(8 * key.size()));
    }
    ~Decryption() { mbedtls_aes_free(&context_); }
    Decryption(const Decryption&) = delete;
    Decryption& operator=(const Decryption&) = delete;

    /// Each block for itself.
    std::string Apart(std::string_view bytes)
    {
        std::string plain(bytes.size() / kBlock * kBlock, '\0');
        for (std::size_t at = 0; at < plain.size(); at += kBlock)
            mbedtls_aes_crypt_ecb(&context_, MBEDTLS_AES_DECRYPT, Bytes(bytes) + at,
                                  Bytes(plain) + at);
        return plain;
    }
    /// In a chain that begins with a block.
    std::string Chained(std::string_view bytes, std::string first)
    {
        std::string plain(bytes.size() / kBlock * kBlock, '\0');
        mbedtls_aes_crypt_cbc(&context_, MBEDTLS_AES_DECRYPT, plain.size(), Bytes(first),
                              Bytes(bytes), Bytes(plain));
        return plain;
    }

private:
    mbedtls_aes_context context_;
};

bool IsKeySize(std::size_t bytes)
{
    return bytes == 16 || bytes == 24 || bytes == 32;
}

/// The digest of the password with a salt, made again so many times.
std::string SpunDigest(mbedtls_md_type_t type, std::string_view salt, std::string_view password,
                       std::uint32_t times)
{
    std::string digest = Digest(type, std::string(salt) + xls::Utf16Bytes(password));
    for (std::uint32_t i = 0; i < times; ++i)
        digest = Digest(type, xls::NumberBytes(i).append(digest));
    return digest;
}

// [MS-OFFCRYPTO] 2.3.4.7
std::string StandardKey(const std::string& digest, std::size_t size)
{
    constexpr std::size_t kDigestBlock = 64;
    std::string key;
    for (const char fill : {'\x36', '\x5C'}) {
        std::string buffer(kDigestBlock, fill);
        for (std::size_t i = 0; i < digest.size(); ++i)
            buffer[i] = static_cast<char>(buffer[i] ^ digest[i]);
        key += Digest(MBEDTLS_MD_SHA1, buffer);
    }
    return key.substr(0, size);
}

// [MS-OFFCRYPTO] 2.3.4.9: AES and SHA-1
bool OpensStandard(std::string_view info, std::string_view password)
{
    constexpr std::uint32_t kHashSha1 = 0x8004;
    constexpr std::uint32_t kTimes = 50000;
    constexpr std::size_t kVerifier = 16;
    constexpr std::size_t kVerifierDigest = 32; // as it is encrypted
    const std::size_t headerSize = ReadU32(info, 8);
    const std::string_view header = Slice(info, 12, headerSize);
    const std::string_view verifier = info.substr(12 + headerSize);
    const std::size_t keySize = ReadU32(header, 16) / 8;
    if (ReadU32(header, 12) != kHashSha1 || !IsKeySize(keySize) || ReadU32(verifier, 0) != kBlock)
        return false;
    const std::string digest =
        SpunDigest(MBEDTLS_MD_SHA1, Slice(verifier, 4, kBlock), password, kTimes);
    Decryption decryption(
        StandardKey(Digest(MBEDTLS_MD_SHA1, digest + xls::NumberBytes(0)), keySize));
    const std::string plain = decryption.Apart(Slice(verifier, 4 + kBlock, kVerifier));
    const std::string stored =
        decryption.Apart(Slice(verifier, 8 + kBlock + kVerifier, kVerifierDigest));
    return stored.starts_with(Digest(MBEDTLS_MD_SHA1, plain));
}

/// The attributes of a password in the XML that describes an encryption.
class PasswordElement {
public:
    explicit PasswordElement(const xml::Scanner& scanner) : scanner_(scanner) {}

    std::string Text(std::string_view name) const
    {
        return scanner_.AttributeText(name).value_or(std::string());
    }
    /// 0 for anything but a whole number up to `most`.
    std::uint32_t Number(std::string_view name, std::uint32_t most) const
    {
        const auto number = util::ReadNumber(Text(name));
        return number && *number >= 0 && *number <= most ? static_cast<std::uint32_t>(*number) : 0;
    }
    std::string Base64(std::string_view name) const
    {
        const std::string text = Text(name);
        std::string bytes(text.size(), '\0');
        std::size_t size = 0;
        if (mbedtls_base64_decode(Bytes(bytes), bytes.size(), &size, Bytes(std::string_view(text)),
                                  text.size()) != 0)
            return {};
        return bytes.substr(0, size);
    }

private:
    const xml::Scanner& scanner_;
};

/// As many bytes as needed; 0x36 where there are too few. [MS-OFFCRYPTO] 2.3.4.11
std::string Fitted(std::string bytes, std::size_t size)
{
    bytes.resize(size, '\x36');
    return bytes;
}

// [MS-OFFCRYPTO] 2.3.4.13: AES in a chain
bool OpensElement(const PasswordElement& element, std::string_view password)
{
    constexpr std::string_view kInput("\xFE\xA7\xD2\x76\x3B\x4B\x9E\x79", 8);
    constexpr std::string_view kValue("\xD7\xAA\x0F\x6D\x30\x61\x34\x4E", 8);
    constexpr std::uint32_t kMostTimes = 1'000'000; // programs write 100,000; more takes too long
    const mbedtls_md_info_t* const method =
        mbedtls_md_info_from_string(element.Text("hashAlgorithm").c_str());
    const std::size_t keySize = element.Number("keyBits", 256) / 8;
    if (method == nullptr || element.Text("cipherAlgorithm") != "AES" ||
        element.Text("cipherChaining") != "ChainingModeCBC" || !IsKeySize(keySize))
        return false;
    const mbedtls_md_type_t type = mbedtls_md_get_type(method);
    const std::string salt = element.Base64("saltValue");
    const std::string digest =
        SpunDigest(type, salt, password, element.Number("spinCount", kMostTimes));
    const auto decrypted = [&](std::string_view purpose, std::string_view name) {
        const std::string key = Digest(type, digest + std::string(purpose));
        return Decryption(Fitted(key, keySize)).Chained(element.Base64(name), Fitted(salt, kBlock));
    };
    const std::string input =
        decrypted(kInput, "encryptedVerifierHashInput").substr(0, salt.size());
    const std::string value = decrypted(kValue, "encryptedVerifierHashValue");
    return !input.empty() && value.starts_with(Digest(type, input));
}

bool OpensAgile(std::string_view xml, std::string_view password)
{
    constexpr std::string_view kPassword =
        "http://schemas.microsoft.com/office/2006/keyEncryptor/password";
    xml::Scanner scanner(xml, "EncryptionInfo");
    for (auto token = scanner.Next(); token != xml::Scanner::Token::End; token = scanner.Next()) {
        if (token == xml::Scanner::Token::StartTag && scanner.LocalName() == "encryptedKey" &&
            scanner.NamespaceUri() == kPassword)
            return OpensElement(PasswordElement(scanner), password);
    }
    return false;
}

} // namespace

bool OpensPackage(std::string_view info, std::string_view password)
{
    const unsigned major = ReadU16(info, 0);
    const unsigned minor = ReadU16(info, 2);
    if (major >= 2 && major <= 4 && minor == 2)
        return OpensStandard(info, password);
    if (major == 4 && minor == 4)
        return OpensAgile(info.substr(std::min<std::size_t>(8, info.size())), password);
    return false;
}

} // namespace orrery::builtin
