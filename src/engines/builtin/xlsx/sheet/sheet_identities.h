#pragma once

#include "engines/builtin/xml/scanner.h"

#include <string>
#include <vector>

namespace orrery::xlsx {

/// Where a sheet's text, outside its cells, has values that a copy may not have as well.
struct SheetIdentities {
    /// A range of the sheet to which an add-in is bound. [MS-XLSX] 2.6.90
    struct Binding {
        std::string id;           ///< decoded; the add-in's part has it, too
        xml::TextRange value;     ///< the id as written
        xml::TextRange element;   ///< the whole entry
        xml::TextRange extension; ///< the extension that lists it; ends at 0 if there is none
    };
    std::vector<xml::TextRange> uids;   ///< values of "xr:uid": of the sheet, its filter, its links
    std::vector<xml::TextRange> shapes; ///< numbers of the shapes of controls and objects
    std::string drawing;                ///< the relationship to the VML drawing with these shapes
    std::vector<Binding> bindings;
};

/// Adds what the start tag has at which the scanner is, except bindings.
void AddIdentities(const xml::Scanner& element, SheetIdentities& found);
/// Reads the element at whose start tag the scanner is to its end, and adds what is in it.
void ReadIdentities(xml::Scanner& scanner, SheetIdentities& found);

} // namespace orrery::xlsx
