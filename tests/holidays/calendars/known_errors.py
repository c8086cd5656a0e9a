"""Where the programs that the calendars are compared with are known to be wrong, and why.

Each entry is a first day of a month and the reason. An entry without a difference fails the
comparison, so that the lists stay true. Times are those of the calendar's zone.
"""

# ICU 72: its sun and moon are up to a quarter of an hour off, which decides near
# midnight. A leap month lacks a term because the next month's new moon is on the day of that term.
ICU = {
    "chinese": {
        "1917-03-23": "leap month 2: the sun reaches 30 degrees on 21 April at 0:03",
        "1917-04-21": "the month after it",
        "1922-06-25": "leap month 5: the sun reaches 120 degrees on 24 July at 0:06",
        "1922-07-24": "the month after it",
        "1954-02-03": "new moon at 23:55",
        "1955-02-22": "new moon at 23:54",
        "1987-07-26": "leap month 6: the sun reaches 150 degrees on 24 August at 0:10",
        "1987-08-24": "the month after it",
        "1999-01-17": "new moon at 23:46",
        "2012-08-17": "new moon at 23:54",
        "2018-11-08": "new moon at 0:02",
        "2027-02-06": "new moon at 23:56",
        "2030-02-03": "new moon at 0:07",
        "2057-09-28": "new moon seconds from midnight; Hong Kong has published this day",
        "2070-03-12": "new moon at 23:52",
    },
    "korean": {
        "2017-02-26": "new moon at 23:58",
        "2051-08-07": "new moon at 0:04",
        "2051-11-03": "new moon at 23:59",
        "2097-01-13": "new moon at 23:59",
    },
    # The first new moon of 5807 is on Sunday at 17 h and 87 parts of its day, before the hour that
    # moves the year on; as a year begins on no Sunday, it begins on Monday, 1 October 2046. ICU
    # has 2 October, and the months of 5806 from Kislev on a day late.
    "hebrew": {day: "5807 begins on 1 October 2046" for day in (
        "2045-11-10", "2045-12-10", "2046-01-08", "2046-02-07", "2046-03-09", "2046-04-07",
        "2046-05-07", "2046-06-05", "2046-07-05", "2046-08-03", "2046-09-02", "2046-10-01",
        "2046-10-31")},
}

# lunardate 0.2.0 has months from an old printed table.
LUNARDATE = {
    "1933-07-23": "new moon at 0:03",
    "1954-11-25": "new moon at 20:30 of that day",
    "1956-12-02": "new moon at 16:13 of that day",
    "1978-09-03": "new moon at 0:09; China's calendar of that year had this day",
}

# Months of the Umm al-Qura calendar that were published a day from what its rule gives, as
# (year, month): by how many days later.
PUBLISHED_AGAINST_RULE = {
    (1427, 6): (1, "the new moon is a minute before sunset"),
    (1446, 6): (-1, "the moon sets some seconds before the sun"),
    (1485, 10): (-1, "the moon sets some seconds before the sun"),
}
