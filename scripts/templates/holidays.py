"""The holidays that the shipped templates carry."""

from .parameters import Holiday

UNITED_STATES = (
    Holiday(101, "", "New Year's Day"),
    Holiday(103, "Monday", "Birthday of Martin Luther King, Jr."),
    Holiday(203, "Monday", "Washington's Birthday"),
    Holiday(505, "Monday", "Memorial Day"),
    Holiday(619, "", "Juneteenth National Independence Day"),
    Holiday(704, "", "Independence Day"),
    Holiday(901, "Monday", "Labor Day"),
    Holiday(1002, "Monday", "Columbus Day"),
    Holiday(1111, "", "Veterans Day"),
    Holiday(1104, "Thursday", "Thanksgiving Day"),
    Holiday(1225, "", "Christmas Day"),
)

INTERNATIONAL = (
    Holiday(101, "", "New Year's Day"),
    Holiday(-2, "Easter", "Good Friday"),
    Holiday(0, "Easter", "Easter Sunday"),
    Holiday(1, "Easter", "Easter Monday"),
    Holiday(501, "", "May Day"),
    Holiday(39, "Easter", "Ascension Day"),
    Holiday(49, "Easter", "Whit Sunday"),
    Holiday(50, "Easter", "Whit Monday"),
    Holiday(1225, "", "Christmas Day"),
    Holiday(1226, "", "Boxing Day"),
)

FAMILY = INTERNATIONAL + (
    Holiday(214, "", "Valentine's Day"),
    Holiday(502, "Sunday", "Mother's Day"),
    Holiday(603, "Sunday", "Father's Day"),
    Holiday(1031, "", "Halloween"),
    Holiday(1231, "", "New Year's Eve"),
)
