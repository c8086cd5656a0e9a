"""The heavy workbooks by name, with the size in which each has to be done quickly."""

from dataclasses import dataclass, field

import heavy_xls
import heavy_xlsx
import parameters


@dataclass(frozen=True)
class Heavy:
    name: str
    make: object   # count -> bytes
    count: int
    suffix: str = ".xlsx"

    def case(self, share=1):
        """The workbook with that share of the count, ready to be judged."""
        count = max(1, int(self.count * share))
        return HeavyCase(f"{self.name}-{count}{self.suffix}", self.make(count),
                         parameters.text("Model", parameters.PLAIN), [(self.name, str(count))])


@dataclass
class HeavyCase:
    file_name: str
    data: bytes
    parameters: str
    mutations: list = field(default_factory=list)

    def told(self):
        return self.file_name


def _xlsx(function, count):
    return Heavy(function.__name__.replace("_", "-"),
                 lambda size: heavy_xlsx.to_bytes(function(size)), count)


ALL = (
    _xlsx(heavy_xlsx.hyperlinks, 65_000),
    _xlsx(heavy_xlsx.parts_of_one_sheet, 3_000),
    _xlsx(heavy_xlsx.tables_of_one_name, 1_500),
    _xlsx(heavy_xlsx.tables_of_one_stem, 1_500),
    _xlsx(heavy_xlsx.names_and_tables, 20_000),
    _xlsx(heavy_xlsx.slicers, 3_000),
    _xlsx(heavy_xlsx.relationships, 100_000),
    _xlsx(heavy_xlsx.sheets_that_read_the_next, 1_200),
    _xlsx(heavy_xlsx.namespaces, 100_000),
    _xlsx(heavy_xlsx.blanks, 2_000_000),
    _xlsx(heavy_xlsx.blanks_in_a_tag, 2_000_000),
    Heavy("packed-blanks", heavy_xlsx.packed_blanks, 2_000_000),
    _xlsx(heavy_xlsx.chain, 20_000),
    _xlsx(heavy_xlsx.spellings, 20_000),
    _xlsx(heavy_xlsx.ring_of_spellings, 20_000),
    Heavy("objects", heavy_xls.objects, 8_000, ".xls"),
    Heavy("embedded-objects", heavy_xls.embedded_objects, 8_000, ".xls"),
)


def make(argument):
    """The case of (name, share)."""
    name, share = argument
    return next(heavy for heavy in ALL if heavy.name == name).case(share)
