"""The taste of one person: fonts, colours, lines. Every template has one for all of its sheets."""

import dataclasses

from .sheet import Style

FONTS = ("Calibri",) * 9 + ("Arial",) * 7 + (
    "Verdana", "Tahoma", "Times New Roman", "Cambria", "Century Gothic", "Comic Sans MS", "Segoe UI",
    "Liberation Sans", "Georgia", "Trebuchet MS", "Arial Narrow", "Courier New")
EAST_ASIAN = {"日本語": ("MS PGothic", "MS Gothic", "Meiryo"), "中文": ("SimSun", "Microsoft YaHei"),
              "한국어": ("Malgun Gothic", "Gulim")}
FANCY = ("Cambria", "Georgia", "Brush Script MT", "Impact", "Arial Black", "Century Gothic")

# Ink, accent, fill of headings, ink on them, fill of weekends, lines, fills of odd and even weeks.
COLORS = (
    ("000000", "C00000", "D9D9D9", "000000", "F2F2F2", "000000", ("FFFFFF", "F2F2F2")),
    ("000000", "FF0000", "FFFFFF", "000000", "FFFFFF", "000000", ("FFFFFF", "EEEEEE")),
    ("1F3864", "C00000", "4472C4", "FFFFFF", "D9E2F3", "8EAADB", ("FFFFFF", "EDF2F9")),
    ("262626", "E36C0A", "F79646", "FFFFFF", "FDE9D9", "F79646", ("FFFFFF", "FEF4EC")),
    ("375623", "548235", "70AD47", "FFFFFF", "E2EFD9", "A8D08D", ("FFFFFF", "F1F8EC")),
    ("3F3151", "8064A2", "B2A1C7", "000000", "E5DFEC", "8064A2", ("FFFFFF", "F5F2F8")),
    ("17365D", "FF0000", "99CCFF", "000080", "FFFF99", "808080", ("FFFFFF", "CCFFFF")),
    ("000080", "FF0000", "FFFF99", "000080", "CCFFCC", "000000", ("FFFFFF", "FFFFCC")),
    ("404040", "D9534F", "404040", "FFFFFF", "F7F4ED", "BFBFBF", ("FFFFFF", "FAFAFA")),
    ("5B3A29", "A0522D", "EFE3D3", "5B3A29", "F7EFE5", "C8AD8D", ("FFFFFF", "FBF7F1")),
    ("0B5563", "E4572E", "17BEBB", "FFFFFF", "D5F5F4", "17BEBB", ("FFFFFF", "EFFBFB")),
    ("333333", "FF69B4", "FFC0CB", "8B0045", "FFE4EC", "FF99CC", ("FFFFFF", "FFF5F8")),
)
RAINBOW = ("FFE5E5", "FFF2DD", "FFFFDD", "E5F7E5", "DDF3FF", "E8E5FF", "FBE5FA")
SHARE_OF_MONDAY = {"English": 0.3, "日本語": 0.3, "한국어": 0.2, "Português": 0.3, "עברית": 0.1,
                   "العربية": 0.2}
LINES = ("thin",) * 8 + ("hair", "dotted", "medium", "dashed")


@dataclasses.dataclass
class Theme:
    font: str
    title_font: str
    size: float
    ink: str
    accent: str
    heading_fill: str
    heading_ink: str
    weekend_fill: str
    line: tuple
    stripes: tuple
    grid_lines: str      # all, days, weeks, outside, none: where the day grid has lines
    heavy_frame: bool    # a thicker line around grids
    pattern: str         # weeks, days, columns, none: fills that change from week to week and so on
    weekend: str         # fill, ink, both, none: how weekends differ
    weekend_days: str    # both, sunday
    heading: str         # filled, bold, plain, line: how weekday names look
    monday: bool         # weeks begin on Monday

    def text(self, **changes):
        return Style(font=self.font, size=self.size, color=self.ink, down="center").but(**changes)

    def title(self, **changes):
        return Style(font=self.title_font, size=20, bold=True, color=self.ink,
                     down="center").but(**changes)

    def quiet(self, **changes):
        """What stands at the margin: captions, footers, hints."""
        return self.text(size=max(7, self.size - 3), color="7F7F7F").but(**changes)

    def heading_style(self, **changes):
        style = self.text(across="center")
        if self.heading == "filled":
            fill = self.heading_fill if self.heading_fill != "FFFFFF" else None
            style = style.but(fill=fill, color=self.heading_ink, bold=True)
        elif self.heading == "bold":
            style = style.but(bold=True)
        elif self.heading == "line":
            style = style.but(bold=True, color=self.accent, bottom=("medium", self.line[1]))
        return style.but(**changes)

    def weekend_changes(self):
        """What a cell of a weekend day has otherwise."""
        changes = {}
        if self.weekend in ("fill", "both") and self.weekend_fill != "FFFFFF":
            changes["fill"] = self.weekend_fill
        if self.weekend in ("ink", "both"):
            changes["color"] = self.accent
        if self.weekend == "both" and self.heavy_frame:
            changes["bold"] = True
        return changes

    def pattern_fill(self, week, day):
        """The fill that the pattern gives to a day, or None."""
        fill = {"weeks": self.stripes[week % 2], "days": self.stripes[(week + day) % 2],
                "columns": RAINBOW[day], "none": "FFFFFF"}[self.pattern]
        return None if fill == "FFFFFF" else fill


def pick(rng, language):
    font = rng.choice(EAST_ASIAN[language] if language in EAST_ASIAN and rng.random() < 0.8 else FONTS)
    ink, accent, fill, on_fill, weekend, line, stripes = rng.choice(COLORS)
    return Theme(
        font=font, title_font=rng.choice(FANCY) if rng.random() < 0.25 else font,
        size=rng.choice((8, 9, 10, 10, 11, 11, 11, 12)), ink=ink, accent=accent, heading_fill=fill,
        heading_ink=on_fill, weekend_fill=weekend, line=(rng.choice(LINES), line), stripes=stripes,
        grid_lines=rng.choices(("all", "days", "weeks", "outside", "none"), (15, 50, 12, 8, 15))[0],
        heavy_frame=rng.random() < 0.35,
        pattern=rng.choices(("weeks", "days", "columns", "none"), (11, 4, 4, 81))[0],
        weekend=rng.choices(("fill", "ink", "both", "none"), (30, 20, 15, 35))[0],
        weekend_days="both" if rng.random() < 0.75 else "sunday",
        heading=rng.choices(("filled", "bold", "plain", "line"), (55, 25, 10, 10))[0],
        monday=rng.random() < SHARE_OF_MONDAY.get(language, 0.85))
