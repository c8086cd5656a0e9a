"""What a test does without the workbooks of the corpus: says so, and fails where it has to have them."""

import os

_SKIPPED = 77  # tells the test program that nothing was judged


def corpus_is_required():
    return bool(os.environ.get("CI") or os.environ.get("ORRERY_REQUIRE_CORPUS"))


def without_corpus(folder):
    """The exit code of a test that does not find the corpus in the folder."""
    required = corpus_is_required()
    print(f"{'FAILED' if required else 'SKIPPED'}: there are no workbooks in {folder}")
    return 1 if required else _SKIPPED
