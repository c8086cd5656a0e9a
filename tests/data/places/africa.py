"""Africa: days by law, and where another source has others. __init__.py says how they are written."""

LAW_DAYS = [
    ("Egypt", "2002-01-07", None, "a holiday since 2003"),
    ("Egypt", "2006-12-30", "عيد الأضحى المبارك", "as announced"),
    ("Egypt", "2015-09-23", "وقفة عيد الأضحى المبارك", "as announced"),
    ("Egypt", "2020-10-08", "عيد القوات المسلحة", "the prime minister's decision"),
    ("Egypt", "2024-07-11", "رأس السنة الهجرية", "the prime minister's decision"),
    ("Egypt", "2025-04-24", "عيد تحرير سيناء", "decision 1379 of 2025"),
    ("Egypt", "2026-01-25", None, "the prime minister's decision for 29 January"),
    ("Egypt", "2025-03-31", "عيد الفطر المبارك", "دار الإفتاء"),
    ("Egypt", "2025-04-01", "عيد الفطر المبارك", "قرار 49 لسنة 2009: two days"),
    ("Egypt", "2026-03-22", "عيد الفطر المبارك", "the presidency's list for 2026"),
    ("SouthAfrica", "2026-08-10", "National Women's Day (public holiday)", "Act 36 of 1994 s 2"),
    ("SouthAfrica", "2022-12-27", "Public holiday", "proclamation under s 2A"),
    ("SouthAfrica", "2024-05-29", "Election Day", "proclamation under s 2A"),
]

DIFFERENCES = {
    ("Egypt", ""): "the source has other lengths of the feasts and no moves; see the days by law",
}
