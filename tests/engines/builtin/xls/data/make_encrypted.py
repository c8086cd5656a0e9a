"""Makes the encrypted fixtures: encrypted_libreoffice.xls, a workbook that LibreOffice saves with
the default password, which programs try by themselves, and encrypted_*.stream, the workbook stream
that it saves without a password: plain, and encrypted by every method. The ciphers are implemented
here independently, from [MS-OFFCRYPTO] 2.3.5 to 2.3.7 and [MS-XLS] 2.2.10, with tables as in these
documents.

Needs LibreOffice, python3-uno and python3-xlwt."""
import hashlib
import pathlib
import struct
import subprocess
import tempfile
import time

import uno
import xlwt
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException

FOLDER = pathlib.Path(__file__).parent
PASSWORD = "VelvetSweatshop"
BOF, EOF, FILEPASS, BOUNDSHEET, EXTSST, INDEX, INTERFACEHDR = (
    0x809, 0x0A, 0x2F, 0x85, 0xFF, 0x20B, 0xE1)

# [MS-OFFCRYPTO] 2.3.7.2
INITIAL_CODE = [0xE1F0, 0x1D0F, 0xCC9C, 0x84C0, 0x110C, 0x0E10, 0xF1CE, 0x313E, 0x1872, 0xE139,
                0xD40F, 0x84F9, 0x280C, 0xA96A, 0x4EC3]
XOR_MATRIX = [
    0xAEFC, 0x4DD9, 0x9BB2, 0x2745, 0x4E8A, 0x9D14, 0x2A09, 0x7B61, 0xF6C2, 0xFDA5, 0xEB6B, 0xC6F7,
    0x9DCF, 0x2BBF, 0x4563, 0x8AC6, 0x05AD, 0x0B5A, 0x16B4, 0x2D68, 0x5AD0, 0x0375, 0x06EA, 0x0DD4,
    0x1BA8, 0x3750, 0x6EA0, 0xDD40, 0xD849, 0xA0B3, 0x5147, 0xA28E, 0x553D, 0xAA7A, 0x44D5, 0x6F45,
    0xDE8A, 0xAD35, 0x4A4B, 0x9496, 0x390D, 0x721A, 0xEB23, 0xC667, 0x9CEF, 0x29FF, 0x53FE, 0xA7FC,
    0x5FD9, 0x47D3, 0x8FA6, 0x0F6D, 0x1EDA, 0x3DB4, 0x7B68, 0xF6D0, 0xB861, 0x60E3, 0xC1C6, 0x93AD,
    0x377B, 0x6EF6, 0xDDEC, 0x45A0, 0x8B40, 0x06A1, 0x0D42, 0x1A84, 0x3508, 0x6A10, 0xAA51, 0x4483,
    0x8906, 0x022D, 0x045A, 0x08B4, 0x1168, 0x76B4, 0xED68, 0xCAF1, 0x85C3, 0x1BA7, 0x374E, 0x6E9C,
    0x3730, 0x6E60, 0xDCC0, 0xA9A1, 0x4363, 0x86C6, 0x1DAD, 0x3331, 0x6662, 0xCCC4, 0x89A9, 0x0373,
    0x06E6, 0x0DCC, 0x1021, 0x2042, 0x4084, 0x8108, 0x1231, 0x2462, 0x48C4]
PADDING = [0xBB, 0xFF, 0xFF, 0xBA, 0xFF, 0xFF, 0xB9, 0x80, 0x00, 0xBE, 0x0F, 0x00, 0xBF, 0x0F, 0x00]


def records(stream):
    at = 0
    while at + 4 <= len(stream):
        kind, size = struct.unpack_from("<HH", stream, at)
        yield at, kind, stream[at + 4:at + 4 + size]
        at += 4 + size


def with_filepass(stream, info):
    """The stream with a FILEPASS record after its first record; nothing is encrypted."""
    first = 4 + struct.unpack_from("<H", stream, 2)[0]
    added = struct.pack("<HH", FILEPASS, len(info)) + info
    out = bytearray(stream)
    for at, kind, data in records(stream):
        places = {BOUNDSHEET: [0], INDEX: range(12, len(data) - 3, 4),
                  EXTSST: range(2, len(data) - 3, 8)}.get(kind, [])
        for place in places:
            offset = struct.unpack_from("<I", data, place)[0]
            if offset >= first:
                struct.pack_into("<I", out, at + 4 + place, offset + len(added))
    return bytes(out[:first]) + added + bytes(out[first:])


def encrypted(stream, info, encrypt_byte):
    """`encrypt_byte(byte, position, size of the record's data)`"""
    plain = with_filepass(stream, info)
    out = bytearray(plain)
    for at, kind, data in records(plain):
        if kind in (BOF, FILEPASS, INTERFACEHDR):
            continue
        for i in range(4 if kind == BOUNDSHEET else 0, len(data)):
            out[at + 4 + i] = encrypt_byte(data[i], at + 4 + i, len(data))
    return bytes(out)


def with_xor(stream, password):
    text = password.encode("latin-1")[:15]
    key = INITIAL_CODE[len(text) - 1]
    element = len(XOR_MATRIX) - 1
    for byte in reversed(text):
        for _ in range(7):
            if byte & 0x40:
                key ^= XOR_MATRIX[element]
            byte <<= 1
            element -= 1
    verifier = 0
    for byte in reversed(bytes([len(text)]) + text):
        high = 1 if verifier & 0x4000 else 0
        verifier = (high | verifier * 2 & 0x7FFF) ^ byte
    verifier ^= 0xCE4B

    def rotated(byte, half):
        byte ^= half
        return (byte >> 1 | byte << 7) & 0xFF

    array = [0] * 16
    index = len(text)
    if index % 2:
        array[index] = rotated(PADDING[0], key >> 8)
        index -= 1
        array[index] = rotated(text[-1], key & 0xFF)
    while index > 0:
        index -= 1
        array[index] = rotated(text[index], key >> 8)
        index -= 1
        array[index] = rotated(text[index], key & 0xFF)
    index, pad = 15, 15 - len(text)
    while pad > 0:
        array[index] = rotated(PADDING[pad], key >> 8)
        index, pad = index - 1, pad - 1
        array[index] = rotated(PADDING[pad], key & 0xFF)
        index, pad = index - 1, pad - 1

    def encrypt_byte(byte, at, size):
        return (byte << 5 | byte >> 3) & 0xFF ^ array[(at + size) % 16]

    return encrypted(stream, struct.pack("<HHH", 0, key, verifier), encrypt_byte)


def rc4(key, count):
    state = list(range(256))
    j = 0
    for i in range(256):
        j = (j + state[i] + key[i % len(key)]) % 256
        state[i], state[j] = state[j], state[i]
    out = bytearray()
    i = j = 0
    for _ in range(count):
        i = (i + 1) % 256
        j = (j + state[i]) % 256
        state[i], state[j] = state[j], state[i]
        out.append(state[(state[i] + state[j]) % 256])
    return bytes(out)


def xored(left, right):
    return bytes(a ^ b for a, b in zip(left, right))


def by_blocks(stream, info, key_of_block):
    size = len(stream) + len(info) + 4
    keys = b"".join(rc4(key_of_block(block), 1024) for block in range(size // 1024 + 1))
    return encrypted(stream, info, lambda byte, at, _: byte ^ keys[at])


SALT = bytes(range(40, 56))
VERIFIER = bytes(range(200, 216))


def with_rc4(stream, password):
    def md5(data):
        return hashlib.md5(data).digest()

    start = md5(password.encode("utf-16-le"))[:5]
    secret = md5((start + SALT) * 16)[:5]

    def key_of_block(block):
        return md5(secret + struct.pack("<I", block))

    proof = xored(VERIFIER + md5(VERIFIER), rc4(key_of_block(0), 32))
    return by_blocks(stream, struct.pack("<HHH", 1, 1, 1) + SALT + proof, key_of_block)


def with_cryptoapi(stream, password, bits):
    def sha1(data):
        return hashlib.sha1(data).digest()

    secret = sha1(SALT + password.encode("utf-16-le"))

    def key_of_block(block):
        key = sha1(secret + struct.pack("<I", block))[:bits // 8]
        return key + bytes(11) if bits == 40 else key

    proof = xored(VERIFIER + sha1(VERIFIER), rc4(key_of_block(0), 36))
    provider = "Microsoft Enhanced Cryptographic Provider v1.0\0".encode("utf-16-le")
    header = struct.pack("<IIIIIIII", 4, 0, 0x6801, 0x8004, bits, 1, 0, 0) + provider
    info = (struct.pack("<HHHII", 1, 2, 2, 4, len(header)) + header + struct.pack("<I", 16) + SALT +
            proof[:16] + struct.pack("<I", 20) + proof[16:])
    return by_blocks(stream, info, key_of_block)


def property_value(name, value):
    made = PropertyValue()
    made.Name, made.Value = name, value
    return made


def save_with_libreoffice(source, targets):
    """Saves a workbook for each (path, password or None)."""
    with tempfile.TemporaryDirectory() as profile:
        office = subprocess.Popen([
            "soffice", "-env:UserInstallation=file://" + profile, "--headless", "--norestore",
            "--accept=pipe,name=make-encrypted;urp;"])
        resolver = uno.getComponentContext().ServiceManager.createInstance(
            "com.sun.star.bridge.UnoUrlResolver")
        for _ in range(120):
            try:
                context = resolver.resolve(
                    "uno:pipe,name=make-encrypted;urp;StarOffice.ComponentContext")
                break
            except NoConnectException:
                time.sleep(0.5)
        desktop = context.ServiceManager.createInstance("com.sun.star.frame.Desktop")
        hidden = property_value("Hidden", True)
        book = desktop.loadComponentFromURL(source.as_uri(), "_blank", 0, (hidden,))
        for path, password in targets:
            filter_name = property_value("FilterName", "MS Excel 97")
            more = (property_value("Password", password),) if password else ()
            book.storeToURL(path.as_uri(), (filter_name,) + more)
        book.close(True)
        desktop.terminate()
        office.wait()


def stream_of(path):
    """The workbook stream, which LibreOffice writes contiguously; zeros follow its last record."""
    whole = path.read_bytes()
    begin = whole.index(struct.pack("<HHHH", BOF, 16, 0x600, 5))
    at, depth = begin, 0
    while True:
        kind, size = struct.unpack_from("<HH", whole, at)
        if depth == 0 and kind != BOF:
            return whole[begin:at]
        depth += {BOF: 1, EOF: -1}.get(kind, 0)
        at += 4 + size


def main():
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder) / "source.xls"
        book = xlwt.Workbook()
        for name in ("Model", "Other"):
            sheet = book.add_sheet(name)
            for row in range(0, 80, 2):
                sheet.write(row, 0, f"{name} text {row}")
                sheet.write(row, 1, row)
                sheet.write(row, 2, xlwt.Formula(f"B{row + 1}*2"))
        book.save(str(source))
        plain = pathlib.Path(folder) / "plain.xls"
        save_with_libreoffice(source, [(plain, None),
                                       (FOLDER / "encrypted_libreoffice.xls", PASSWORD)])
        stream = stream_of(plain)
    (FOLDER / "encrypted_plain.stream").write_bytes(stream)
    for name, made in (("xor", with_xor(stream, PASSWORD)), ("rc4", with_rc4(stream, PASSWORD)),
                       ("cryptoapi_128", with_cryptoapi(stream, PASSWORD, 128)),
                       ("cryptoapi_40", with_cryptoapi(stream, PASSWORD, 40)),
                       ("other_password", with_rc4(stream, "secret"))):
        (FOLDER / f"encrypted_{name}.stream").write_bytes(made)


if __name__ == "__main__":
    main()
