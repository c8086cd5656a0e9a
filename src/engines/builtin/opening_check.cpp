#include "engines/builtin/opening_check.h"

#include "book/error.h"
#include "engines/builtin/common/error_path.h"
#include "engines/builtin/package_password.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/records/encryption.h"
#include "engines/builtin/zip/archive.h"
#include "engines/common/file_kind.h"
#include "util/error.h"
#include "util/file_read.h"

#include <string>

namespace orrery::builtin {
namespace {

using book::ErrorKind;
using engines::FileKind;
using util::Error;

/// Whether a compound file asks for a password, as a workbook or as an encrypted package.
bool AsksForPassword(const xls::CompoundFile& file)
{
    if (file.Find("EncryptedPackage")) {
        const auto info = file.Find("EncryptionInfo");
        return !info || !OpensPackage(file.ReadStream(*info), xls::kDefaultPassword);
    }
    const auto workbook = file.Find("Workbook");
    return workbook && !xls::Decrypt(file.ReadStream(*workbook));
}

void CheckContent(const std::filesystem::path& path, FileKind kind)
{
    if (kind == FileKind::Compound) {
        const xls::CompoundFile file(util::ReadFile(path).value_or(std::string()),
                                     xls::EncryptedPackage::Accept);
        if (AsksForPassword(file))
            throw Error(ErrorKind::PasswordProtected);
    }
    else if (kind == FileKind::Other) {
        const zip::Reader container(path); // refuses one with encrypted parts
    }
}

} // namespace

void CheckBeforeOpening(const std::filesystem::path& path)
{
    const FileKind kind = engines::DetectFileKind(path);
    try {
        WithErrorPath(path, [&] { CheckContent(path, kind); });
    }
    catch (const Error& error) {
        if (error.Kind() == ErrorKind::PasswordProtected)
            throw;
    }
}

} // namespace orrery::builtin
