#pragma once

#include "engines/builtin/xls/drawing/art_stream.h"
#include "engines/builtin/xls/records/globals.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The kinds of objects that matter here. [MS-XLS] 2.5.143
enum class ObjectKind : std::uint16_t {
    Group = 0x00,
    Chart = 0x05,
    Button = 0x07,
    Picture = 0x08,
    CheckBox = 0x0B,
    OptionButton = 0x0C,
    EditBox = 0x0D,
    Label = 0x0E,
    DialogBox = 0x0F,
    Spinner = 0x10,
    ScrollBar = 0x11,
    List = 0x12,
    GroupBox = 0x13,
    DropDown = 0x14,
    Note = 0x19,
    Art = 0x1E
};

/// An object of a sheet: what an OBJ record adds to a shape. [MS-XLS] 2.4.181
struct SheetObject {
    ObjectKind kind = ObjectKind::Art;
    std::uint16_t id = 0;
    bool isOwnControl = false; ///< the arrow of a filter or of a list of valid values
    Span chart;                ///< its substream; empty if there is none
};

/// The text of a shape. [MS-XLS] 2.4.329
struct ObjectText {
    struct Run {
        std::uint16_t begin = 0; ///< UTF-16 units
        std::uint16_t font = 0;
    };
    std::uint16_t flags = 0;
    std::uint16_t rotation = 0;
    std::u16string text;
    std::vector<Run> runs;
};

/// The office art of a sheet with the objects and texts that follow its pieces.
struct SheetArt {
    std::string art;
    /// By the offset in the art at which they follow: the end of the shape's record for them.
    std::map<std::size_t, SheetObject> objects;
    std::map<std::size_t, ObjectText> texts;
    bool isWhole = true; ///< false: the records end within the sheet
};

/// Reads the substream whose BOF record is at `begin`, as far as its records can be read; nothing
/// of a chart sheet. Never throws for what it contains.
SheetArt ReadSheetArt(std::string_view stream, std::size_t begin);

/// Bytes of art that is in pieces. Throws Error(DamagedWorkbook) if they are not there.
std::string ArtBytes(const ArtStream& art, std::size_t at, std::size_t size);

} // namespace orrery::xls
