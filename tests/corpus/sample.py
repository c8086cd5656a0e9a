"""A sample of a corpus: few workbooks that have, between them, every feature of all."""


def sample(rows, least):
    """Of a manifest's rows at least so many, of which some have each feature that any has, each
    problem and each producer. Of what adds as much the smallest file is taken, so that the sample
    is quick to go through. The same rows give the same sample, in the manifest's order."""
    rest = sorted(rows, key=lambda row: (int(row["bytes"]), row["file"]))
    missing = set().union(*(traits(row) for row in rows))
    chosen = []
    while rest and missing:
        best = max(rest, key=lambda row: len(traits(row) & missing))
        chosen.append(best)
        rest.remove(best)
        missing -= traits(best)
    chosen += rest[:max(0, least - len(chosen))]
    files = {row["file"] for row in chosen}
    return [row for row in rows if row["file"] in files]


def traits(row):
    """What a workbook adds to a sample."""
    producer = row["producer"].split("/")[0].rstrip(" .0123456789")
    return {("feature", name) for name in row["features"].split(",") if name} | \
           {("problem", name) for name in row["problems"].split(",") if name} | \
           {("producer", producer)}
