#pragma once

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>

#include <vector>

namespace orrery::libreoffice {

/// The formats of a sheet's empty columns behind the last one in use, where rows, or all columns,
/// are formatted as a whole. LibreOffice copies a sheet without them. All is to be called inside
/// Office::Call.
class OuterFormats {
public:
    using Sheet = com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>;

    explicit OuterFormats(const Sheet& model);
    void ApplyTo(const Sheet& copy) const;

private:
    using Format = std::vector<com::sun::star::beans::PropertyValue>;

    /// Rows that are formatted alike from some column to the sheet's last.
    struct Band {
        com::sun::star::table::CellRangeAddress place;
        Format format;
    };

    std::vector<Band> bands_;
};

} // namespace orrery::libreoffice
