"""Cases: a seed gives a workbook, one to four mutations of it, and a parameter file."""

import os
import random
from dataclasses import dataclass

import parameters
import xls_content_mutations
import xls_file_mutations
import xls_record_mutations
import xlsx_part_mutations
import xlsx_sheet_mutations
import xlsx_xml_mutations
import xlsx_zip_mutations
from xls_writer import XlsBook
from xlsx_book import XlsxBook

# A later stage builds upon what an earlier one made: content, then parts or records, then the file.
# The number says how often a stage is chosen.
_STAGES = {
    ".xlsx": ((XlsxBook, ((35, xlsx_sheet_mutations), (30, xlsx_xml_mutations),
                          (20, xlsx_part_mutations), (15, xlsx_zip_mutations)))),
    ".xls": ((XlsBook, ((40, xls_content_mutations), (40, xls_record_mutations),
                        (20, xls_file_mutations)))),
}
_TRIES = 40  # of finding a mutation that the workbook has something for
_LARGEST = 200_000  # bytes of a template; larger ones show nothing more and take longer


@dataclass
class Case:
    seed: int
    template: str      # path of the workbook that was mutated
    suffix: str
    mutations: list    # (name, place) of each
    data: bytes
    parameters: str

    @property
    def name(self):
        return f"{self.seed}-{'-'.join(name for name, _ in self.mutations)}"[:100]

    @property
    def file_name(self):
        return self.name + self.suffix

    def told(self):
        """What was done, in one line."""
        done = "; ".join(f"{name} ({place})" for name, place in self.mutations)
        return f"{os.path.basename(self.template)}: {done}"


def kinds(suffix):
    """The names of all mutations of a format, by stage."""
    return {(module.__name__, mutation.name): mutation
            for _, module in _STAGES[suffix][1] for mutation in module.KINDS.all}


def templates(corpus, own):
    """The workbooks that cases are made from, by suffix: those of the corpus, or the project's own
    (`own`) where it is absent. A workbook that the mutations cannot read is none of them."""
    found = {".xlsx": [], ".xls": []}
    for suffix, paths in found.items():
        folder = os.path.join(corpus, suffix[1:])
        names = [os.path.join(folder, name) for name in os.listdir(folder)] \
            if os.path.isdir(folder) else own
        paths += sorted(path for path in names
                        if path.endswith(suffix) and os.path.getsize(path) <= _LARGEST)
    return found


def _choose(random_, modules):
    """One to four mutations in the order of their stages."""
    count = random_.choices((1, 2, 3, 4), (50, 25, 15, 10))[0]
    weights = [weight for weight, _ in modules]
    stages = sorted(random_.choices(range(len(modules)), weights, k=count))
    return [(stage, modules[stage][1].KINDS.all) for stage in stages]


def _mutate(book, random_, chosen):
    done = []
    for _, mutations in chosen:
        for _ in range(_TRIES):
            mutation = random_.choice(mutations)
            place = mutation.change(book, random_)
            if place is not None:
                done.append((mutation.name, place))
                break
    return done


def make(seed, found):
    """The case of a seed; `found` is what `templates` gave."""
    random_ = random.Random(seed)
    suffix = random_.choices((".xlsx", ".xls"), (60, 40))[0]
    path = random_.choice(found[suffix])
    reader, modules = _STAGES[suffix]
    book = reader(path)
    names = parameters.sheet_names(path)
    done = _mutate(book, random_, _choose(random_, modules))
    return Case(seed, path, suffix, done, book.to_bytes(),
                parameters.chosen(names, random_))


def apply(path, mutation, seed):
    """The bytes of a workbook after one mutation, or None where it has nothing for it."""
    suffix = os.path.splitext(path)[1]
    book = _STAGES[suffix][0](path)
    return book.to_bytes() if mutation.change(book, random.Random(seed)) is not None else None
