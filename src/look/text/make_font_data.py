"""Writes the advance widths of open fonts as a C++ source.

make_font_data.py OUTPUT FOLDER...: looks for the fonts below the folders, by their file names.
"""
import pathlib
import struct
import sys
import unicodedata

# One name for each family and the files of its styles: regular, bold, italic, bold and italic. The slanted
# DejaVu Sans is as wide as the upright one, and a package of its own has the slanted DejaVu Serif.
FAMILIES = {
    "Carlito": ("Carlito-Regular", "Carlito-Bold", "Carlito-Italic", "Carlito-BoldItalic"),
    "Caladea": ("Caladea-Regular", "Caladea-Bold", "Caladea-Italic", "Caladea-BoldItalic"),
    "LiberationSans": ("LiberationSans-Regular", "LiberationSans-Bold", "LiberationSans-Italic",
                       "LiberationSans-BoldItalic"),
    "LiberationSansNarrow": ("LiberationSansNarrow-Regular", "LiberationSansNarrow-Bold",
                             "LiberationSansNarrow-Italic", "LiberationSansNarrow-BoldItalic"),
    "LiberationSerif": ("LiberationSerif-Regular", "LiberationSerif-Bold", "LiberationSerif-Italic",
                        "LiberationSerif-BoldItalic"),
    "LiberationMono": ("LiberationMono-Regular", "LiberationMono-Bold", "LiberationMono-Italic",
                       "LiberationMono-BoldItalic"),
    "DejaVuSans": ("DejaVuSans", "DejaVuSans-Bold", "DejaVuSans", "DejaVuSans-Bold"),
    "DejaVuSerif": ("DejaVuSerif", "DejaVuSerif-Bold", "DejaVuSerif", "DejaVuSerif-Bold"),
    "DejaVuSansMono": ("DejaVuSansMono", "DejaVuSansMono-Bold", "DejaVuSansMono", "DejaVuSansMono-Bold"),
}

# Latin, Greek, Cyrillic, Armenian, Hebrew, Arabic, Georgian, punctuation, symbols, ligatures.
BLOCKS = ((0x20, 0x24F), (0x2B0, 0x2FF), (0x370, 0x6FF), (0x10A0, 0x10FF), (0x1E00, 0x1FFF), (0x2010, 0x2027),
          (0x2030, 0x205E), (0x2070, 0x20BF), (0x2100, 0x23FF), (0x2500, 0x27BF), (0xFB00, 0xFB06))


class Font:
    """The tables of a TrueType font that tell widths and heights."""

    def __init__(self, path):
        self.data = path.read_bytes()
        count = self.number("H", 4)
        self.tables = {}
        for at in range(12, 12 + 16 * count, 16):
            self.tables[self.data[at:at + 4]] = struct.unpack_from(">I", self.data, at + 8)[0]
        head, hhea = self.tables[b"head"], self.tables[b"hhea"]
        self.units_per_em = self.number("H", head + 18)
        self.ascent, self.descent = struct.unpack_from(">hh", self.data, hhea + 4)
        os2 = self.tables[b"OS/2"]
        self.top, self.bottom = struct.unpack_from(">HH", self.data, os2 + 74)
        self.metrics = self.number("H", hhea + 34)
        self.glyphs = self.read_characters()

    def number(self, form, at):
        return struct.unpack_from(">" + form, self.data, at)[0]

    def read_characters(self):
        """Glyphs by character, from the subtable of the basic plane (format 4)."""
        cmap = self.tables[b"cmap"]
        for at in range(cmap + 4, cmap + 4 + 8 * self.number("H", cmap + 2), 8):
            platform, encoding, offset = struct.unpack_from(">HHI", self.data, at)
            start = cmap + offset
            if (platform, encoding) in ((3, 1), (0, 3)) and self.number("H", start) == 4:
                return self.read_segments(start)
        raise ValueError("a font without a table of characters")

    def read_segments(self, start):
        doubled = self.number("H", start + 6)
        ends = start + 14
        starts = ends + doubled + 2
        deltas = starts + doubled
        offsets = deltas + doubled
        glyphs = {}
        for i in range(0, doubled, 2):
            first, last = self.number("H", starts + i), self.number("H", ends + i)
            delta, offset = self.number("H", deltas + i), self.number("H", offsets + i)
            for character in range(first, min(last, 0xFFFE) + 1):
                glyph = character
                if offset:
                    glyph = self.number("H", offsets + i + offset + 2 * (character - first))
                    if glyph == 0:
                        continue
                glyph = (glyph + delta) & 0xFFFF
                if glyph:
                    glyphs[character] = glyph
        return glyphs

    def advance(self, character):
        glyph = min(self.glyphs[character], self.metrics - 1)
        return self.number("H", self.tables[b"hmtx"] + 4 * glyph)


def joined_widths(font):
    """Arabic letters are narrower within words: the mean of the forms that a letter has there."""
    forms = {}
    for character in range(0xFE70, 0xFEFD):
        shape, _, letter = unicodedata.decomposition(chr(character)).partition(" ")
        if shape in ("<initial>", "<medial>", "<final>") and character in font.glyphs and " " not in letter:
            forms.setdefault(int(letter, 16), []).append(font.advance(character))
    return {letter: round(sum(widths) / len(widths)) for letter, widths in forms.items()}


def runs_of(font):
    """[(first character, [widths])]: characters that follow each other."""
    joined = joined_widths(font)
    runs = []
    for first, last in BLOCKS:
        for character in range(first, last + 1):
            if character not in font.glyphs:
                continue
            if not runs or runs[-1][0] + len(runs[-1][1]) != character:
                runs.append((character, []))
            runs[-1][1].append(joined.get(character, font.advance(character)))
    return runs


def numbers(values):
    lines, line = [], "   "
    for value in values:
        word = f" {value},"
        if len(line) + len(word) > 100:
            lines.append(line)
            line = "   "
        line += word
    return "\n".join(lines + [line])


def write_face(out, name, font):
    runs = runs_of(font)
    widths, entries = [], []
    for first, run in runs:
        entries.append(f"    {{0x{first:X}, {len(run)}, {len(widths)}}},")
        widths += run
    out.append(f"constexpr std::array<std::uint16_t, {len(widths)}> k{name}Widths = {{\n{numbers(widths)}\n}};")
    out.append(f"constexpr std::array<FontRun, {len(entries)}> k{name}Runs = {{{{\n" + "\n".join(entries) + "\n}};")
    out.append(f"constexpr FontFace k{name}{{{font.units_per_em}, {font.ascent}, {-font.descent}, {font.top}, {font.bottom}, "
               f"k{name}Runs, k{name}Widths}};")


def find(stem, folders):
    for folder in folders:
        for path in sorted(pathlib.Path(folder).rglob(stem + ".ttf")):
            return path
    sys.exit(f"{stem}.ttf is not below {', '.join(folders)}: install the packages fonts-crosextra-carlito, "
             "fonts-crosextra-caladea, fonts-liberation and fonts-dejavu-core, or set ORRERY_FONTS")


def main(output, *folders):
    out = ['#include "look/text/font_data.h"\n\nnamespace orrery::look {\nnamespace {']
    written = {}
    for files in FAMILIES.values():
        for stem in files:
            if stem not in written:
                written[stem] = "Face" + stem.replace("-", "")
                write_face(out, written[stem], Font(find(stem, folders)))
    out.append("} // namespace\n\nconst std::array<FontFamily, 9> kFontFamilies = {{")
    for files in FAMILIES.values():
        out.append("    {{" + ", ".join("&k" + written[stem] for stem in files) + "}},")
    out.append("}};\n\n} // namespace orrery::look\n")
    pathlib.Path(output).write_text("\n".join(out), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
