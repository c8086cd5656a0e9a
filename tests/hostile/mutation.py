"""A kind of mutation: a function that changes a workbook, and what it is called."""

from dataclasses import dataclass


@dataclass(frozen=True)
class Mutation:
    """`change(book, random)` changes the book and says at what place ("xl/workbook.xml"), or gives
    None where the book has nothing of the kind, and is left unchanged."""

    name: str
    change: object


class Kinds:
    """The mutations of one module, by name, in the order of their definition."""

    def __init__(self):
        self.all = []

    def __call__(self, function):
        self.all.append(Mutation(function.__name__.strip("_").replace("_", "-"), function))
        return function


def numbers(random):
    """A number that programs go wrong with, as text."""
    return random.choice(("0", "-1", "1", "00", "255", "256", "16384", "16385", "65535", "65536",
                          "1048576", "1048577", "2147483647", "2147483648", "4294967295",
                          "4294967296", "-2147483648", "9223372036854775807",
                          "18446744073709551616", "99999999999999999999", "1e308", "1e999", "NaN",
                          "-0", "0x10", " 7 ", "+3", "3.5", ""))
