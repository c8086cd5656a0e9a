"""The macros of a workbook of which a sheet was copied: each copy has a module with the code of its
model's, and nothing else changed."""


def macro_failures(old, new, model, names):
    """`old` and `new` are projects, `model` the module of the copied sheet, `names` the copies' code
    names."""
    for problem in new.problems:
        if problem not in old.problems:
            yield f"macros: {problem}"
    if new.is_compiled:
        yield "macros: something compiled is left"
    if new.outside_of_modules() != old.outside_of_modules():
        yield "macros: the project changed"
    for name in names:
        copy = new.module(name or "")
        if copy is None or old.module(name) is not None:
            yield f"macros: no module of its own for {name}"
        elif copy.code != model.code or not copy.is_document:
            yield f"macros: {name} has other code than {model.name}"
        elif copy.bytes not in new.documents:
            yield f"macros: {name} is no document's"
    kept = [each for each in new.modules if each.name not in names]
    if [(each.name, each.source) for each in kept] != [
            (each.name, each.source) for each in old.modules]:
        yield "macros: the modules of the template changed"
