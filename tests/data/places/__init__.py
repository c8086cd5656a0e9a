"""What the days of the holiday files are held against, a module for each part of the world.

LAW_DAYS: days that a law, a proclamation or a gazette gives: file, day, name in it, source. A name
that ends with "..." is the beginning; None says that the day is no holiday.

DIFFERENCES: days that only one of the file and date-holidays has, by file and name, with the reason;
"" is any day of that country.
"""

from importlib import import_module
from pkgutil import iter_modules

_PARTS = [import_module(f"{__name__}.{part.name}") for part in iter_modules(__path__)]

LAW_DAYS = [entry for part in _PARTS for entry in part.LAW_DAYS]
DIFFERENCES = {key: reason for part in _PARTS for key, reason in part.DIFFERENCES.items()}
