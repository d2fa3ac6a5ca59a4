"""Three-valued logic: True, False and None for unknown.

Truth tables as the standard prints them for compound predicates, which its functions "and", "or" and "not" share: a false
argument decides "and", a true one "or", whatever the others are.
"""


def all_of(values):
    """and"""
    values = list(values)
    if any(value is False for value in values):
        return False
    return None if None in values else True


def any_of(values):
    """or"""
    values = list(values)
    if any(value is True for value in values):
        return True
    return None if None in values else False


def odd_number_of(values):
    """xor: unknown where any value is"""
    values = list(values)
    return None if None in values else sum(values) % 2 == 1


def negation(value):
    """not"""
    return None if value is None else not value
