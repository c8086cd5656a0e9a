#pragma once

#include "engines/libreoffice/plugin/office.h"

#include <com/sun/star/frame/XModel2.hpp>

#include <filesystem>
#include <string>

namespace orrery::libreoffice {

/// The filters that read and write .xls and .xlt.
inline constexpr const char* kBinaryFilter = "MS Excel 97";
inline constexpr const char* kBinaryTemplateFilter = "MS Excel 97 Vorlage/Template";

/// Loads a workbook without showing it. Throws Error (FileNotFound, FileNotReadable, NotAWorkbook,
/// BinaryWorkbook, OldBinaryFormat, and what calls throw).
Reference<css::frame::XModel2> OpenDocument(Office& office, const std::filesystem::path& path,
                                            LoadMode mode);

/// Writes it through the filter; an existing target stays untouched until the new one is complete.
/// Throws Error (FileNotWritable, DiskFull, and what calls throw).
void StoreDocument(Office& office, const Reference<css::frame::XModel2>& document,
                   const std::string& filter, const std::filesystem::path& target);

/// The name of the filter that read the document. Call it inside Office::Call.
std::string FilterOf(const Reference<css::frame::XModel2>& document);

} // namespace orrery::libreoffice
