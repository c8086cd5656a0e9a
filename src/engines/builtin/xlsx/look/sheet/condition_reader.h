#pragma once

#include "engines/builtin/xlsx/look/cells/sheet_context.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::xlsx {

/// Reads the conditional formats of a sheet. Bars of the first form are completed by what the
/// extension list tells of them.
class ConditionReader {
public:
    explicit ConditionReader(SheetContext& context) : context_(context) {}

    /// Reads a <conditionalFormatting> to its end. ECMA-376 18.3.1.18
    void Read(xml::Scanner& scanner);
    /// Reads an <x14:conditionalFormattings> to its end. [MS-XLSX] 2.6.8
    void ReadExtensions(xml::Scanner& scanner);

private:
    /// Where a rule is: the format and the position in it.
    using Place = std::pair<std::size_t, std::size_t>;

    void ReadFormat(xml::Scanner& scanner, bool isExtension);
    void ReadRule(xml::Scanner& scanner, bool isExtension, book::ConditionalFormat& format);
    bool ReadRuleAttributes(const xml::Scanner& scanner, book::ConditionalRule& rule) const;
    void ReadRuleElement(xml::Scanner& scanner, bool isExtension, book::ConditionalRule& rule,
                         std::string& id);
    bool Complete(const std::string& id, book::ConditionalRule& rule);
    std::vector<book::CellRange> ParseRanges(std::string_view text);

    SheetContext& context_;
    std::size_t rules_ = 0;
    std::size_t ranges_ = 0;
    std::map<std::string, Place, std::less<>> byId_; // of rules that the extension list completes
};

} // namespace orrery::xlsx
