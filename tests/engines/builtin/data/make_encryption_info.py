"""Makes encryption_standard.info and encryption_agile.info, the streams "EncryptionInfo" of packages
that are encrypted with the default password, which programs try by themselves. The derivation of keys
is implemented here independently, from [MS-OFFCRYPTO] 2.3.4.7 to 2.3.4.13; openssl encrypts."""
import base64
import hashlib
import pathlib
import struct
import subprocess

FOLDER = pathlib.Path(__file__).parent
PASSWORD = "VelvetSweatshop"
SALT = bytes(range(16))
VERIFIER = bytes(range(100, 116))
NAME = "Microsoft Enhanced RSA and AES Cryptographic Provider\0".encode("utf-16-le")
AGILE = """<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\r
<encryption xmlns="http://schemas.microsoft.com/office/2006/encryption" \
xmlns:p="http://schemas.microsoft.com/office/2006/keyEncryptor/password">\
<keyData saltSize="16" blockSize="16" keyBits="256" hashSize="64" cipherAlgorithm="AES" \
cipherChaining="ChainingModeCBC" hashAlgorithm="SHA512" saltValue="{salt}"/>\
<keyEncryptors><keyEncryptor uri="http://schemas.microsoft.com/office/2006/keyEncryptor/password">\
<p:encryptedKey spinCount="{spins}" saltSize="16" blockSize="16" keyBits="256" hashSize="64" \
cipherAlgorithm="AES" cipherChaining="ChainingModeCBC" hashAlgorithm="SHA512" saltValue="{salt}" \
encryptedVerifierHashInput="{input}" encryptedVerifierHashValue="{value}" \
encryptedKeyValue="{value}"/></keyEncryptor></keyEncryptors></encryption>"""


def encrypt(mode, key, data, iv=None):
    command = ["openssl", "enc", "-e", f"-aes-{8 * len(key)}-{mode}", "-K", key.hex(), "-nopad"]
    if iv is not None:
        command += ["-iv", iv.hex()]
    return subprocess.run(command, input=data, capture_output=True, check=True).stdout


def spun(algorithm, times):
    digest = hashlib.new(algorithm, SALT + PASSWORD.encode("utf-16-le")).digest()
    for i in range(times):
        digest = hashlib.new(algorithm, struct.pack("<I", i) + digest).digest()
    return digest


def standard():
    digest = hashlib.sha1(spun("sha1", 50000) + struct.pack("<I", 0)).digest()
    halves = [hashlib.sha1(bytes(a ^ b for a, b in zip(digest.ljust(64, b"\0"), bytes([fill]) * 64)))
              .digest() for fill in (0x36, 0x5C)]
    key = b"".join(halves)[:32]
    header = struct.pack("<8I", 0x24, 0, 0x6610, 0x8004, 256, 0x18, 0, 0) + NAME
    hashed = hashlib.sha1(VERIFIER).digest().ljust(32, b"\0")
    return (struct.pack("<HHII", 4, 2, 0x24, len(header)) + header + struct.pack("<I", 16) + SALT +
            encrypt("ecb", key, VERIFIER) + struct.pack("<I", 20) + encrypt("ecb", key, hashed))


def agile():
    spins = 1000
    digest = spun("sha512", spins)

    def encrypted(purpose, data):
        key = hashlib.sha512(digest + bytes.fromhex(purpose)).digest()[:32]
        return base64.b64encode(encrypt("cbc", key, data, SALT)).decode()

    xml = AGILE.format(salt=base64.b64encode(SALT).decode(), spins=spins,
                       input=encrypted("fea7d2763b4b9e79", VERIFIER),
                       value=encrypted("d7aa0f6d3061344e", hashlib.sha512(VERIFIER).digest()))
    return struct.pack("<HHI", 4, 4, 0x40) + xml.encode()


if __name__ == "__main__":
    (FOLDER / "encryption_standard.info").write_bytes(standard())
    (FOLDER / "encryption_agile.info").write_bytes(agile())
