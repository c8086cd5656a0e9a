"""Mutations that change the text of one part at one place."""

import functools

from xlsx_book import set_text


def one_change(kinds, choose):
    """A decorator for such a mutation. `choose(book, random)` gives (entry, text, place) or None,
    where the place is an element, an attribute, or None for the whole part. What is decorated
    takes (text, place, random), without the place where it is None, and gives the new text, or
    None to change nothing."""
    def decorate(function):
        @functools.wraps(function)
        def change(book, random):
            chosen = choose(book, random)
            if chosen is None:
                return None
            entry, text, place = chosen
            new = function(text, random) if place is None else function(text, place, random)
            if new is None:
                return None
            set_text(entry, new)
            told = text[place.start:place.end][:60].strip() if place else ""
            return f"{entry.text_name} {told}".strip()

        return kinds(change)

    return decorate
