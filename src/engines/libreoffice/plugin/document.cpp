#include "engines/libreoffice/plugin/document.h"

#include "book/error.h"
#include "engines/common/file_kind.h"
#include "engines/libreoffice/plugin/questions.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/program_output.h"

#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/io/IOException.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <rtl/ref.hxx>

#include <cstdint>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

namespace orrery::libreoffice {
namespace {

namespace fs = std::filesystem;
using book::ErrorKind;
using css::uno::UNO_QUERY_THROW;

/// LibreOffice reads almost any file. Nothing if this one can be a template.
std::optional<ErrorKind> ReasonToRefuse(const Reference<css::lang::XComponent>& document)
{
    static const std::map<std::string, std::optional<ErrorKind>> kFilters = {
        {"Calc MS Excel 2007 XML", std::nullopt},
        {"Calc MS Excel 2007 XML Template", std::nullopt},
        {"Calc MS Excel 2007 VBA XML", std::nullopt},
        {kBinaryFilter, std::nullopt},
        {kBinaryTemplateFilter, std::nullopt},
        {"Calc MS Excel 2007 Binary", ErrorKind::BinaryWorkbook},
        {"MS Excel 95", ErrorKind::OldBinaryFormat},
        {"MS Excel 5.0/95", ErrorKind::OldBinaryFormat},
        {"MS Excel 4.0", ErrorKind::OldBinaryFormat}};
    const Reference<css::sheet::XSpreadsheetDocument> sheets(document, css::uno::UNO_QUERY);
    if (!sheets.is())
        return ErrorKind::NotAWorkbook;
    const Reference<css::frame::XModel2> model(document, UNO_QUERY_THROW);
    const auto filter = kFilters.find(FilterOf(model));
    return filter == kFilters.end() ? ErrorKind::NotAWorkbook : filter->second;
}

[[noreturn]] void ThrowNotStored(const fs::path& target, const fs::path& written)
{
    constexpr std::uintmax_t kLittle = 65536; // less than a workbook needs
    std::error_code failure;
    const auto space = fs::space(written.parent_path(), failure);
    const bool isFull = !failure && space.available < kLittle;
    throw Error(isFull ? util::ErrorKind::DiskFull : util::ErrorKind::FileNotWritable,
                util::FromPath(target), isFull ? "" : "LibreOffice could not store it");
}

} // namespace

void StoreDocument(Office& office, const Reference<css::frame::XModel2>& document,
                   const std::string& filter, const fs::path& target)
{
    util::FileReplacement replacement(target);
    // Not beside the target: an instance that dies leaves temporary files beside its output.
    const util::ProgramOutput stored(office.Folder() / "stored");
    office.Call([&] {
        const Reference<css::frame::XStorable> storable(document, UNO_QUERY_THROW);
        try {
            storable->storeToURL(ToUrl(stored.Path()),
                                 Arguments({{"FilterName", Any(ToUno(filter))}}));
        }
        catch (const css::io::IOException&) { // its message is a number
            ThrowNotStored(target, stored.Path());
        }
    });
    replacement.CopyFrom(stored.Path());
    replacement.Commit();
}

std::string FilterOf(const Reference<css::frame::XModel2>& document)
{
    for (const auto& argument : document->getArgs()) {
        rtl::OUString filter;
        if (argument.Name == "FilterName" && (argument.Value >>= filter))
            return FromUno(filter);
    }
    return {};
}

Reference<css::frame::XModel2> OpenDocument(Office& office, const std::filesystem::path& path,
                                            LoadMode mode)
{
    const std::string name = util::FromPath(path);
    if (engines::DetectFileKind(path) == engines::FileKind::OldSheet)
        throw Error(ErrorKind::OldBinaryFormat, name);
    const rtl::Reference<Questions> questions(new Questions);
    const auto document = office.Load(path, mode, questions.get());
    if (!document.is())
        throw questions->WasPasswordWanted()
            ? Error(ErrorKind::PasswordProtected, name)
            : Error(ErrorKind::NotAWorkbook, name, "LibreOffice cannot read it");
    if (const auto reason = office.Call([&] { return ReasonToRefuse(document); })) {
        office.Discard(document);
        throw Error(*reason, name);
    }
    return office.Call([&] { return Reference<css::frame::XModel2>(document, UNO_QUERY_THROW); });
}

} // namespace orrery::libreoffice
