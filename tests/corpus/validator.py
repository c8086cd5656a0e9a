"""Errors that the Open XML validator finds, and which of them are new."""

import glob
import json
import os
import re
import subprocess
from collections import Counter

LIMIT = 1000  # the validator stops there


_HERE = os.path.dirname(os.path.abspath(__file__))


def _installed():
    return glob.glob(os.path.join(_HERE, "node_modules", "@xarsh", "ooxml-validator-*",
                                  "ooxml-validator"))


def install():
    """Has the package manager fetch the validator where it is missing."""
    if not os.environ.get("OOXML_VALIDATOR_CLI") and not _installed():
        subprocess.run(["npm", "install", "--no-save", "--no-audit", "--no-fund"], cwd=_HERE,
                       check=True)


def program():
    """The validator's own program, as the package manager laid it out."""
    return os.environ.get("OOXML_VALIDATOR_CLI") or _installed()[0]


def errors(path, seconds=120):
    """The validator's findings as (part, kind of error)."""
    done = subprocess.run([program(), path], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          timeout=seconds, check=False, text=True)
    if done.returncode != 0:
        raise RuntimeError(f"the validator ended with {done.returncode}: {done.stderr[:200]}")
    return [((error["path"] or "").lstrip("/"), _kind(error))
            for error in json.loads(done.stdout)["errors"]]


def _kind(error):
    """An error without what differs between a sheet and its copy: part names and ids."""
    text = error["description"] or ""
    text = re.sub(r"/[\w./\[\]-]+\.(?:xml|vml|bin|rels|png|jpe?g|emf|wmf|gif)", "PART", text)
    text = re.sub(r"\brId\d+\b|\bR[0-9a-f]{16}\b", "RID", text)
    return f"{error['errorType']} {error['id']}: {text}"


def new_errors(before_path, after_path, before, after, plan):
    """Errors of the output that the input does not have. An error of the model's own parts, or
    of its entries in the workbook part, may stand in each copy as well."""
    new = errors(after_path)
    old = errors(before_path) if new else []
    owned = {part.lower() for part in [before.workbook, *before.closure(plan.model.part)]}
    allowed, found = Counter(), Counter()
    for part, kind in old:
        allowed[before.content_type(part), kind] += \
            len(plan.sheets) if part.lower() in owned else 1
    for part, kind in new:
        found[after.content_type(part), kind] += 1
    for key, count in sorted(found.items()):
        if not allowed[key]:
            yield f"the validator finds {count} new: {key[1]} in {_parts(new, key[1])}"
        elif count > allowed[key] and len(old) < LIMIT:
            yield f"the validator finds {count}, {allowed[key]} would be old: {key[1]}"


def _parts(found, kind):
    return sorted({part for part, other in found if other == kind})[:3]
