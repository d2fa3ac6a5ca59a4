"""Dates, times and the types that count days or seconds from an epoch.

date: days since 1970-01-01; time: seconds since midnight; dateTime: seconds since 1970-01-01T00:00:00. The calendar is
the Gregorian one, extended to all years; a day has 86400 seconds. A counting type counts from the first day of its year,
and its number stands as it is wherever a number is asked for.

Decision: an epoch of year 0 is the day 0000-01-01 of the extended calendar, 719528 days before 1970.
Decision: a time and a dateTime may be written with a fraction of a second of any length, but without a time zone; as a text
they have up to six decimals, the nearest ones, and a time is never written as the end of its day.
Decision: a year before 0 is written with a sign in front of four digits.
Decision: functions of dates give whole days and seconds of counts with a fraction; a year of more than 9 digits and, to
formatDatetime, a moment more than 10**15 seconds away from 1970 are outside the domain.
Decision: formatDatetime knows the conversions of strftime in C, but for those of time zones; others are outside the domain.
Decision: seconds below 0 and from 86400 on are no time of a day: casts of them to a time, dateSecondsSinceMidnight and
formatDatetime have no value, while numbers and comparisons of timeSeconds take them as they are.
Decision: a dateTime cast to a date or a time keeps that part of it; a date cast to a dateTime is its midnight.
"""
import re

MOMENTS = ("date", "time", "dateTime")
EPOCHS = (0, 1960, 1970, 1980)
COUNTING = tuple(f"dateDaysSince[{year}]" for year in EPOCHS) + ("timeSeconds",) + tuple(
    f"dateTimeSecondsSince[{year}]" for year in EPOCHS)
ALL = MOMENTS + COUNTING
DAY, MICRO = 86400, 10 ** 6
MOST_YEARS, MOST_SECONDS = 10 ** 9 - 1, 10 ** 15
_DATE = r"(\d{1,4})-(\d{1,2})-(\d{1,2})"
_TIME = r"(\d{1,2}):(\d{1,2}):(\d{1,2})(\.\d+)?"
_FORMS = {"date": re.compile(_DATE + r"\Z"), "time": re.compile(_TIME + r"\Z"),
          "dateTime": re.compile(_DATE + "[T ]" + _TIME + r"\Z")}
_LENGTHS = (31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31)


def is_counting(type_):
    return type_ in COUNTING


def is_leap(year):
    return year % 4 == 0 and (year % 100 != 0 or year % 400 == 0)


def month_length(year, month):
    return 29 if month == 2 and is_leap(year) else _LENGTHS[month - 1]


def days(year, month=1, day=1):
    """Days from 1970-01-01 to a day of the extended Gregorian calendar."""
    before = year - 1
    passed = before * 365 + before // 4 - before // 100 + before // 400
    passed += sum(month_length(year, each) for each in range(1, month)) + day - 1
    return passed - 719162


def day_of(count):
    """Year, month and day of a count of days since 1970-01-01."""
    year = 1970 + count // 366 if count >= 0 else 1970 + count // 365 - 1
    while days(year + 1) <= count:
        year += 1
    while days(year) > count:
        year -= 1
    rest, month = count - days(year), 1
    while rest >= month_length(year, month):
        rest -= month_length(year, month)
        month += 1
    return year, month, rest + 1


def read(text, type_):
    """The count of a date, time or dateTime that is written in the form of ISO 8601; ValueError where it is none."""
    from .values import NotOfType
    match = _FORMS[type_].match(text)
    if not match:
        raise NotOfType(text)
    *parts, fraction = match.groups() if type_ != "date" else (*match.groups(), None)
    parts, count = [int(part) for part in parts], 0
    if type_ != "time":
        year, month, day = parts[:3]
        if not 1 <= month <= 12 or not 1 <= day <= month_length(year, month):
            raise NotOfType(text)
        count = days(year, month, day)
    if type_ == "date":
        return count
    hour, minute, second = parts[-3:]
    if hour > 23 or minute > 59 or second > 59:
        raise NotOfType(text)
    count = count * DAY + hour * 3600 + minute * 60 + second
    if fraction is None or float(fraction) == 0:
        return count
    if type_ == "time" and count + float(fraction) >= DAY:
        raise NotOfType(text)
    return count + float(fraction)


def _nearest(number):
    """The whole number that is nearest, the larger of two."""
    return int(number // 1) + (number % 1 >= 0.5)


def write(count, type_):
    """A date, time or dateTime in the form of ISO 8601."""
    day, second = (int(count // 1), 0) if type_ == "date" else divmod(count, DAY) if type_ == "dateTime" else (0, count)
    micro, day = _nearest(second * 1e6), int(day)
    if micro >= DAY * MICRO:
        micro, day = (micro - DAY * MICRO, day + 1) if type_ == "dateTime" else (DAY * MICRO - 1, day)
    year, month, of_month = day_of(day)
    date = "%s%04d-%02d-%02d" % ("-" * (year < 0), abs(year), month, of_month)
    second, micro = divmod(micro, MICRO)
    time = "%02d:%02d:%02d" % (second // 3600, second // 60 % 60, second % 60) + (".%06d" % micro).rstrip("0") * (micro > 0)
    return {"date": date, "time": time, "dateTime": f"{date}T{time}"}[type_]


def _kind(type_):
    """What a type measures, and how many days or seconds its epoch lies from 1970."""
    if type_ in MOMENTS:
        return type_, 0
    if type_ == "timeSeconds":
        return "time", 0
    year = int(type_[type_.index("[") + 1:-1])
    return ("date", days(year)) if type_.startswith("dateDays") else ("dateTime", days(year) * DAY)


def kind(type_):
    """Which of date, time and dateTime a type measures."""
    return _kind(type_)[0]


def convert(count, source, target):
    """A count of one date type as that of another."""
    from .values import NotOfType
    kind, epoch = _kind(source)
    wanted, wanted_epoch = _kind(target)
    count += epoch
    if (kind, wanted) == ("date", "dateTime"):
        count *= DAY
    elif (kind, wanted) == ("dateTime", "date"):
        count //= DAY
    elif (kind, wanted) == ("dateTime", "time"):
        count %= DAY
    elif kind != wanted:
        raise NotOfType(f"{source} as {target}")
    if target == "time" and not 0 <= count < DAY:
        raise NotOfType(f"{count} seconds as {target}")
    return count - wanted_epoch


def common(left, left_type, right, right_type):
    """Two counts of different date types on one scale."""
    for target in ("timeSeconds", "dateTime"):
        try:
            return convert(left, left_type, target), convert(right, right_type, target)
        except ValueError:
            pass
    return left, right


def _first_day(year):
    if abs(year) > MOST_YEARS:
        raise ValueError(year)
    return days(year)


def days_since_year(value, year):
    """dateDaysSinceYear: days from the first of January of a year."""
    return int(convert(value.data, value.type, "date") // 1) - _first_day(year)


def seconds_since_year(value, year):
    """dateSecondsSinceYear: seconds from the first midnight of a year."""
    return int(convert(value.data, value.type, "dateTime") // 1) - _first_day(year) * DAY


def seconds_since_midnight(value):
    """dateSecondsSinceMidnight: seconds of the day that have passed."""
    return int(convert(value.data, value.type, "time") // 1)


_MONTHS = ("January February March April May June July August September October November December").split()
_WEEKDAYS = "Monday Tuesday Wednesday Thursday Friday Saturday Sunday".split()
_JOINED = {"c": "%a %b %e %H:%M:%S %Y", "D": "%m/%d/%y", "F": "%Y-%m-%d", "h": "%b", "r": "%I:%M:%S %p", "R": "%H:%M",
           "T": "%H:%M:%S", "x": "%m/%d/%y", "X": "%H:%M:%S"}


def _fields(value):
    """The conversions of a pattern and what they give for a moment, in the C locale."""
    count = convert(value.data, value.type, "time" if value.type in ("time", "timeSeconds") else "dateTime")
    if not abs(count) <= MOST_SECONDS:
        raise ValueError(count)
    day, second = divmod(int(count // 1), DAY)
    year, month, date = day_of(day)
    hour, minute = second // 3600, second // 60 % 60
    weekday, of_year = (day + 3) % 7, day - days(year)
    half = hour % 12 or 12
    thursday = day - weekday + 3
    week_year = day_of(thursday)[0]
    return {"Y": "%04d" % year, "y": "%02d" % (year % 100), "C": "%02d" % (year // 100), "m": "%02d" % month,
            "d": "%02d" % date, "e": "%2d" % date, "H": "%02d" % hour, "I": "%02d" % half, "M": "%02d" % minute,
            "S": "%02d" % (second % 60), "p": "AM" if hour < 12 else "PM", "j": "%03d" % (of_year + 1),
            "B": _MONTHS[month - 1], "b": _MONTHS[month - 1][:3], "A": _WEEKDAYS[weekday], "a": _WEEKDAYS[weekday][:3],
            "u": str(weekday + 1), "w": str((weekday + 1) % 7), "%": "%", "n": "\n", "t": "\t",
            "U": "%02d" % ((of_year + 7 - (weekday + 1) % 7) // 7), "W": "%02d" % ((of_year + 7 - weekday) // 7),
            "G": "%04d" % week_year, "g": "%02d" % (week_year % 100), "V": "%02d" % ((thursday - days(week_year)) // 7 + 1)}


def format_datetime(value, pattern):
    """formatDatetime: the pattern of strftime, in the C locale."""
    fields = _fields(value)

    def field(match):
        if match.group(1) not in fields:
            raise ValueError(match.group(0))
        return fields[match.group(1)]
    joined = re.sub("(?s:%[EO]?(.))", lambda match: _JOINED.get(match.group(1), match.group(0)), pattern)
    return re.sub("(?s:%[EO]?(.))", field, joined)
