"""Oceania: days by law, and where another source has others. __init__.py says how they are written."""

LAW_DAYS = [
    ("Australia", "2022-09-22", "National Day of Mourning", "the states' proclamations"),
    ("Australia:ACT", "2007-03-19", "Canberra Day", "Holidays Act 1958: third Monday until 2007"),
    ("Australia:ACT", "2018-05-28", "Reconciliation Day", "Holidays Act 1958 s 3 as of 2018"),
    ("Australia:NSW", "2010-04-04", None, "Public Holidays Act 2010 s 4: Easter Sunday since 2011"),
    ("Australia:NSW", "2027-04-26", "Anzac Day (additional holiday)", "the Minister's order"),
    ("Australia:QLD", "2014-10-06", "Labour Day", "Holidays Act 1983 as amended in 2012"),
    ("Australia:QLD", "2016-10-03", "Queen's Birthday", "Holidays Act 1983 as of 2016"),
    ("Australia:SA", "2027-04-26", None, "Public Holidays Act 2023"),
    ("Australia:VIC", "2020-10-23", "Friday before the AFL Grand Final", "Victoria Gazette"),
    ("Australia:WA", "2012-10-01", "Queen's Birthday", "proclamation in the Gazette"),
    ("NewZealand", "2022-06-24", "Matariki", "Te Kāhui o Matariki Public Holiday Act 2022"),
    ("NewZealand", "2027-06-25", "Matariki", "Te Kāhui o Matariki Public Holiday Act 2022"),
    ("NewZealand", "2022-09-26", "Queen Elizabeth II Memorial Day", "Act of that name of 2022"),
    ("NewZealand", "2026-04-27", "Anzac Day (observed)", "Holidays Act 2003 s 45A"),
    ("NewZealand", "2023-01-03", "New Year's Day (observed)", "Holidays Act 2003 s 45"),
    ("NewZealand:AUK", "2027-02-01", "Auckland Anniversary Day", "the Monday nearest 29 January"),
    ("NewZealand:CAN", "2027-11-12", "Canterbury Anniversary Day", "second Friday after a Tuesday"),
    ("NewZealand:HKB", "2027-10-22", "Hawke's Bay Anniversary Day", "the Friday before Labour Day"),
    ("NewZealand:OTA", "2008-03-25", "Otago Anniversary Day", "24 March 2008 is Easter Monday"),
    ("NewZealand:STL", "2011-01-17", "Southland Anniversary Day", "nearest 17 January until 2011"),
    ("NewZealand:STL", "2027-03-30", "Southland Anniversary Day", "Easter Tuesday since 2012"),
]

DIFFERENCES = {
    ("Australia", "Easter Saturday"): "not in every state",
    ("Australia", "Easter Sunday"): "not in every state",
    ("Australia", "Australia Day"): "the source has only the Monday kept in its place",
}
