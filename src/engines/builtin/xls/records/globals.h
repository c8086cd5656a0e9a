#pragma once

#include "engines/builtin/xls/records/records.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The value that a SUPBOOK record has in place of a path's length if it is the workbook itself.
/// [MS-XLS] 2.4.271
inline constexpr std::uint16_t kOwnBook = 0x0401;

/// A range of bytes of the workbook stream.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;

    bool Empty() const { return begin == end; }
    std::string_view In(std::string_view stream) const { return stream.substr(begin, end - begin); }
};

/// A sheet in the list of the globals. [MS-XLS] 2.4.28
struct SheetEntry {
    std::string Name;
    std::uint32_t Offset = 0; ///< of its BOF record in the stream
    std::uint8_t State = 0;   ///< visible, hidden, very hidden
    std::uint8_t Type = 0;    ///< 0 for worksheets and dialogs
    Span place;               ///< of the record
};

/// A defined name. [MS-XLS] 2.4.150
struct NameEntry {
    std::string
        Key; ///< the folded name, marked if it is built-in, so that equal names have equal keys
    std::uint16_t Sheet = 0; ///< position, from 1, of its own sheet; 0: the workbook
    bool IsMacro = false;    ///< it names a function or procedure, whatever its formula says
    Span place;              ///< of the record and its continuations
};

/// The sheets of this workbook that a formula's reference index ("ixti") stands for, by their
/// positions from 0. [MS-XLS] 2.5.343
struct SheetSpan {
    std::int16_t first = 0;
    std::int16_t last = 0;
    bool IsOnly(std::size_t sheet) const;
    bool Contains(std::size_t sheet) const;
};

/// An entry of EXTERNSHEET.
struct SheetLink {
    std::uint16_t book = 0; ///< position of a SUPBOOK record
    std::int16_t first = 0; ///< negative: not a sheet, or a deleted one
    std::int16_t last = 0;
};

/// The first substream of the workbook stream: everything that belongs to no sheet. Read once,
/// never changed.
class Globals {
public:
    /// Throws Error: OldBinaryFormat for the versions before BIFF8, DamagedWorkbook.
    explicit Globals(std::string_view stream);

    std::string_view Stream() const { return stream_; }
    std::size_t End() const { return end_; } ///< after its EOF record
    const std::vector<SheetEntry>& Sheets() const { return sheets_; }
    const std::vector<NameEntry>& Names() const { return names_; }
    const std::vector<SheetLink>& Links() const { return links_; }
    /// The SUPBOOK record that stands for this workbook, if there is one.
    std::optional<std::size_t> OwnBook() const { return ownBook_; }
    /// The sheets that a formula's index refers to; nothing for other workbooks and deleted sheets.
    std::optional<SheetSpan> OwnSheets(std::uint16_t link) const;
    std::optional<SheetSpan> OwnSheets(const SheetLink& link) const;

    /// The position of the sheet that the first window shows.
    std::size_t ActiveSheet() const { return activeSheet_; }
    bool IsStructureProtected() const { return structureProtected_; }

    // Places of records that change with the sheets.
    const Span& ExternSheetPlace() const { return externSheet_; }
    const Span& StringsPlace() const { return strings_; }               ///< SST, CONTINUE, EXTSST
    const Span& StringsOnly() const { return stringsOnly_; }            ///< without EXTSST
    const Span& DrawingGroupPlace() const { return drawingGroup_; }     ///< with CONTINUE
    const Span& HeaderPicturesPlace() const { return headerPictures_; } ///< HFPICTURE
    const Span& TabIdsPlace() const { return tabIds_; }
    const std::vector<Span>& FormatPlaces() const { return styles_; } ///< XF
    /// Where new names are inserted, and where a first table of shared strings.
    std::size_t NamesEnd() const { return namesEnd_; }
    std::size_t StringsStart() const { return stringsStart_; }

private:
    class Reader;

    std::string_view stream_;
    std::size_t end_ = 0;
    std::vector<SheetEntry> sheets_;
    std::vector<NameEntry> names_;
    std::vector<SheetLink> links_;
    std::optional<std::size_t> ownBook_;
    std::size_t activeSheet_ = 0;
    bool structureProtected_ = false;
    Span externSheet_;
    Span strings_;
    Span stringsOnly_;
    Span drawingGroup_;
    Span headerPictures_;
    Span tabIds_;
    std::vector<Span> styles_;
    std::size_t namesEnd_ = 0;
    std::size_t stringsStart_ = 0;
};

} // namespace orrery::xls
