#include "engines/builtin/opening_check.h"

#include "book/error.h"
#include "engines/builtin/common/error_path.h"
#include "engines/builtin/package_password.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/records/encryption.h"
#include "engines/builtin/xlsx/package/package.h"
#include "engines/common/file_kind.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/paths.h"
#include "util/text.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace orrery::builtin {
namespace {

using book::ErrorKind;
using engines::FileKind;
using util::Error;

/// The extensions of workbooks and the types of their main parts.
constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kExtensions = {{
    {".xls", ""},
    {".xlt", ""},
    {".xlsb", ""},
    {".xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"},
    {".xltx", "application/vnd.openxmlformats-officedocument.spreadsheetml.template.main+xml"},
    {".xlsm", "application/vnd.ms-excel.sheet.macroEnabled.main+xml"},
    {".xltm", "application/vnd.ms-excel.template.macroEnabled.main+xml"},
    {".xlam", "application/vnd.ms-excel.addin.macroEnabled.main+xml"},
}};

/// The extension of a workbook's path in lower case, ".xls" also for a template of that format;
/// empty if it is not that of a workbook.
std::string_view ExtensionOf(const std::filesystem::path& path)
{
    const std::string extension = util::FromPath(path.extension());
    for (const auto& [known, type] : kExtensions) {
        if (util::EqualIgnoringCase(known, extension))
            return known == ".xlt" ? ".xls" : known;
    }
    return {};
}

// The extension for what a workbook is; empty if that is unknown.

std::string_view FindPackageExtension(const std::filesystem::path& path)
{
    try {
        const xlsx::Package package(path); // refuses one with encrypted parts
        const std::string type = package.TypeOf(package.MainPart());
        for (const auto& [extension, known] : kExtensions) {
            if (!known.empty() && known == type)
                return extension;
        }
        return {};
    }
    catch (const Error& error) {
        if (error.Kind() == ErrorKind::BinaryWorkbook)
            return ".xlsb";
        throw;
    }
}

/// An encrypted package is a workbook in XML; nobody knows which kind. `extension` is that of its
/// path.
std::string_view FindEncryptedExtension(const xls::CompoundFile& file, std::string_view extension)
{
    const auto info = file.Find("EncryptionInfo");
    if (!info || !OpensPackage(file.ReadStream(*info), xls::kDefaultPassword))
        throw Error(ErrorKind::PasswordProtected);
    return extension == ".xls" ? ".xlsx" : extension;
}

/// `extension` is that of the workbook's path.
std::string_view FindCompoundExtension(std::string bytes, std::string_view extension)
{
    const xls::CompoundFile file(std::move(bytes), xls::EncryptedPackage::Accept);
    if (file.Find("EncryptedPackage"))
        return FindEncryptedExtension(file, extension);
    auto workbook = file.Find("Workbook");
    if (!workbook)
        workbook = file.Find("Book"); // of earlier versions
    if (!workbook)
        throw Error(ErrorKind::NotAWorkbook);
    if (xls::NeedsPassword(file.ReadStream(*workbook)))
        throw Error(ErrorKind::PasswordProtected);
    return ".xls";
}

std::string_view FindOldSheetExtension(std::string_view bytes)
{
    if (xls::NeedsPassword(bytes))
        throw Error(ErrorKind::PasswordProtected);
    return ".xls";
}

/// `extension` is that of the path.
std::string_view FindExtension(const std::filesystem::path& path, FileKind kind,
                               std::string_view extension)
{
    const auto bytes = [&path] { return util::ReadFile(path).value_or(std::string()); };
    switch (kind) {
    case FileKind::Compound:
        return FindCompoundExtension(bytes(), extension);
    case FileKind::OldSheet:
        return FindOldSheetExtension(bytes());
    case FileKind::Other:
        break;
    }
    return FindPackageExtension(path);
}

bool IsPassedOn(const util::AnyErrorKind& kind, std::string_view extension)
{
    return kind == ErrorKind::PasswordProtected || kind == ErrorKind::WrongExtension ||
           (kind == ErrorKind::NotAWorkbook && !extension.empty());
}

} // namespace

void CheckBeforeOpening(const std::filesystem::path& path)
{
    const FileKind kind = engines::DetectFileKind(path);
    const std::string_view extension = ExtensionOf(path);
    try {
        WithErrorPath(path, [&] {
            const std::string_view fitting = FindExtension(path, kind, extension);
            if (!extension.empty() && !fitting.empty() && extension != fitting)
                throw Error(ErrorKind::WrongExtension, {}, std::string(fitting));
        });
    }
    catch (const Error& error) {
        if (IsPassedOn(error.Kind(), extension))
            throw;
    }
}

} // namespace orrery::builtin
