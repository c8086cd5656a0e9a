#pragma once

#include "book/date_system.h"
#include "book/look/cell.h"
#include "look/number_format/formatted_value.h"
#include "look/number_format/general_number.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace orrery::look {

struct FormatCode;

/// Windows' language identifier of English as in the United States.
inline constexpr std::uint16_t kEnglishOfUnitedStates = 0x0409;

/// A number format code, "0.00;[Red]-0.00". ECMA-376 18.8.31
/// A damaged code, or one longer than 65,536 bytes, is "General". Copies share the code.
class NumberFormat {
public:
    /// `language` is that of the names of months and days where the code gives none: a Windows
    /// language identifier. Decimal signs are "." and "," always.
    explicit NumberFormat(std::string_view code, std::uint16_t language = kEnglishOfUnitedStates);

    /// Nothing gives no text. Never throws for a value.
    FormattedValue Format(const book::CellContent& content, book::DateSystem dates) const;

    /// The first section shows a date or a time.
    bool IsDate() const;
    /// "General", or a damaged code.
    bool IsGeneral() const;
    /// "@": what is typed stays text.
    bool IsText() const;

private:
    std::shared_ptr<const FormatCode> code_;
    std::uint16_t language_;
};

} // namespace orrery::look
