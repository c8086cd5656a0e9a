"""The sun and the moon by ephem (libastro), and calendars that are made from them."""

import datetime
import math

import ephem

START = datetime.date(1970, 1, 1)
_JULIAN_DAY_0 = 2415020.0  # of ephem's dates
_NEXT_PHASE = (ephem.next_new_moon, ephem.next_first_quarter_moon, ephem.next_full_moon,
               ephem.next_last_quarter_moon)
_HOUR = 3600


def china(day):
    if day < datetime.date(1912, 1, 1) or day >= datetime.date(1929, 1, 1):
        return 8 * _HOUR
    return 7 * _HOUR + 45 * 60 + 40


def korea(day):
    if day < datetime.date(1912, 1, 1):
        return 8 * _HOUR
    if datetime.date(1954, 3, 21) <= day < datetime.date(1961, 8, 10):
        return 8.5 * _HOUR
    return 9 * _HOUR


def vietnam(day):
    return china(day) if day < datetime.date(1968, 1, 1) else 7 * _HOUR


def greenwich(_day):
    return 0


def japan(_day):
    return 9 * _HOUR


def from_julian_day(moment):
    return ephem.Date(moment - _JULIAN_DAY_0)


def local_date(moment, zone):
    """The date at one of ephem's moments."""
    day = ephem.Date(moment).datetime().date()
    return (ephem.Date(moment).datetime() + datetime.timedelta(seconds=zone(day))).date()


def seconds_from_midnight(moment, zone):
    local = ephem.Date(moment + zone(ephem.Date(moment).datetime().date()) / 86400)
    part = (local - 0.5) % 1  # ephem's days begin at noon
    return 86400 * min(part, 1 - part)


def start_of(day, zone):
    return ephem.Date(ephem.Date(day) - zone(day) / 86400)


def phase_near(moment, phase):
    """The phase [0:3] within three days of a moment."""
    return _NEXT_PHASE[phase](ephem.Date(moment - 3))


def sun_longitude(moment):
    """The sun's apparent longitude in degrees."""
    sun = ephem.Sun()
    sun.compute(moment, epoch=moment)
    place = ephem.Ecliptic(ephem.Equatorial(sun.g_ra, sun.g_dec, epoch=moment), epoch=moment)
    return math.degrees(place.lon)


def lunisolar_months(zone, first_year, last_year):
    """The months of the Chinese rules in a zone: {(year, month, leap): first day}."""
    starts = []
    moment = ephem.Date((first_year - 2, 12, 1))
    while moment < ephem.Date((last_year + 2, 3, 1)):
        moment = ephem.next_new_moon(ephem.Date(moment + 1))
        starts.append(local_date(moment, zone))
    twelfths = [int(sun_longitude(start_of(day, zone)) // 30) for day in starts]
    has_term = [before != after for before, after in zip(twelfths, twelfths[1:])]
    solstices = [place for place in range(len(has_term))
                 if twelfths[place] < 9 <= twelfths[place + 1]]
    months = {}
    for this, following in zip(solstices, solstices[1:]):
        year, number, leap_done = starts[this].year, 11, following - this < 13
        for place in range(this, following):
            leap = not leap_done and place > this and not has_term[place]
            leap_done |= leap
            if place > this and not leap:
                number = number % 12 + 1
                year += number == 1
            months[year, number, int(leap)] = starts[place]
    return months


def _mecca_sets(body, day):
    mecca = ephem.Observer()
    mecca.lat, mecca.lon, mecca.pressure = "21.4225", "39.8262", 1010
    mecca.date = ephem.Date(ephem.Date(day) + 5 / 24)  # 8:00 there
    return mecca.next_setting(body)


def umm_al_qura_start(near):
    """The first day of the month near a date by the rule since 1423: the day after the first
    evening with the new moon before sunset and the moon setting after the sun in Mecca."""
    new_moon = ephem.previous_new_moon(ephem.Date(near + datetime.timedelta(days=6)))
    day = local_date(new_moon, lambda _day: 3 * _HOUR)
    while True:
        sunset = _mecca_sets(ephem.Sun(), day)
        if new_moon < sunset < _mecca_sets(ephem.Moon(), day) < sunset + 0.5:
            return day + datetime.timedelta(days=1)
        day += datetime.timedelta(days=1)
