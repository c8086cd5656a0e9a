"""Workbooks of the corpus that miss a bar, each with its reasons."""

KNOWN = {
}
