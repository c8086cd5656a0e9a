#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::xls {

/// The properties of a shape that matter here. [MS-ODRAW] 2.3
enum class ShapeProperty : std::uint16_t {
    Rotation = 0x0004,
    TextLeft = 0x0081,
    TextTop = 0x0082,
    TextRight = 0x0083,
    TextBottom = 0x0084,
    WrapText = 0x0085,
    ArtText = 0x00C0, // the text of WordArt
    ArtTextSize = 0x00C3,
    ArtTextFont = 0x00C5,
    ArtTextFlags = 0x00FF,
    CropTop = 0x0100,
    CropBottom = 0x0101,
    CropLeft = 0x0102,
    CropRight = 0x0103,
    Picture = 0x0104,
    GeometryLeft = 0x0140,
    GeometryTop = 0x0141,
    GeometryRight = 0x0142,
    GeometryBottom = 0x0143,
    ShapePath = 0x0144,
    Vertices = 0x0145,
    Segments = 0x0146,
    Adjustment = 0x0147, // and the nine after it
    FillKind = 0x0180,
    FillColor = 0x0181,
    FillOpacity = 0x0182,
    FillBackColor = 0x0183,
    FillAngle = 0x018B,
    FillFocus = 0x018C,
    FillStops = 0x0197,
    FillFlags = 0x01BF,
    LineColor = 0x01C0,
    LineBackColor = 0x01C2,
    LineWidth = 0x01CB,
    LineStyle = 0x01CD,
    LineDashes = 0x01CE,
    LineStartArrow = 0x01D0,
    LineEndArrow = 0x01D1,
    LineFlags = 0x01FF,
    Name = 0x0380,
    GroupFlags = 0x03BF
};

/// The properties of a shape by their ids. [MS-ODRAW] 2.2.7, 2.2.9
class ShapeProperties {
public:
    /// Adds those of a record with `count` entries; what does not fit is left out. `data` must
    /// outlive this object.
    void Add(std::string_view data, std::size_t count);
    /// Where properties come from that are not here; it must outlive this object.
    void SetDefaults(const ShapeProperties* defaults) { defaults_ = defaults; }

    std::optional<std::uint32_t> Find(ShapeProperty property) const;
    std::uint32_t Value(ShapeProperty property, std::uint32_t fallback) const
    {
        return Find(property).value_or(fallback);
    }
    std::int32_t Signed(ShapeProperty property, std::int32_t fallback) const;
    /// A number with 16 bits behind the point.
    double Fixed(ShapeProperty property, double fallback) const;
    /// A property of bits: whether bit `bit` is set, if the property says so.
    bool Flag(ShapeProperty property, unsigned bit, bool fallback) const;
    /// The data of a property that has more than a number; empty if there is none.
    std::string_view Data(ShapeProperty property) const;
    /// The data as text of UTF-16 units, up to a zero.
    std::string Text(ShapeProperty property) const;
    /// One of the ten adjustments of the geometry, from 0.
    std::optional<std::int32_t> Adjustment(unsigned index) const;

private:
    struct Entry {
        std::uint32_t value = 0;
        std::string_view data;
    };
    const Entry* FindEntry(std::uint16_t id) const;

    std::map<std::uint16_t, Entry> entries_;
    const ShapeProperties* defaults_ = nullptr;
};

} // namespace orrery::xls
