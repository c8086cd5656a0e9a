#pragma once

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>

#include <vector>

namespace orrery::libreoffice {

/// The formats of a sheet's empty columns after the last used one, which rows or columns formatted
/// as a whole give them. LibreOffice loses them when it copies a sheet. Call everything inside
/// Office::Call.
class OuterFormats {
public:
    using Sheet = com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>;

    explicit OuterFormats(const Sheet& model);
    void ApplyTo(const Sheet& copy) const;

private:
    using Format = std::vector<com::sun::star::beans::PropertyValue>;

    /// Rows with the same format from some column to the sheet's last one.
    struct Band {
        com::sun::star::table::CellRangeAddress place;
        Format format;
    };

    std::vector<Band> bands_;
};

} // namespace orrery::libreoffice
