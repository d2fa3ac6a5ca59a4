"""Random numbers, texts, moments and cells of a seed."""
import random

WORDS = ["a", "b", "ab", "abc", "B", "x y", "long word here", "A-1", "2nd", "no", "yes"]
LETTERS = ["grün", "Zürich", "ÀÉÎ", "straße", "Жук", "ñandú", "πΣ"]


class Draw(random.Random):
    """A source of chance with the shapes that documents are made of."""

    def number(self):
        """A number of few binary digits, whose sums and products are exact."""
        return self.randint(-800, 800) / self.choice((1, 1, 2, 4, 8))

    def odd_number(self):
        """A number with all its digits, small and large ones."""
        return self.choice((-1, 1)) * self.random() * 10.0 ** self.randint(-6, 6)

    def coefficient(self):
        return self.randint(-40, 40) / 8

    def word(self):
        return self.choice(WORDS)

    def letters(self):
        return self.choice(WORDS + LETTERS)

    def date(self):
        return f"{self.randint(1890, 2060):04d}-{self.randint(1, 12):02d}-{self.randint(1, 28):02d}"

    def time(self):
        return f"{self.randint(0, 23):02d}:{self.randint(0, 59):02d}:{self.randint(0, 59):02d}{self.fraction()}"

    def fraction(self):
        """Of a second, as it is written; most have none."""
        return self.choice(("", "", "", ".5", ".125", ".1", ".999999", ".000001", f".{self.randint(0, 999999):06d}"))

    def of_type(self, type_):
        """A cell of a data type."""
        if type_ == "integer":
            return str(self.randint(-60, 60))
        if type_ in ("double", "float"):
            return write(self.number())
        if type_ == "boolean":
            return self.choice(("true", "false"))
        if type_ == "date":
            return self.date()
        if type_ == "time":
            return self.time()
        if type_ == "dateTime":
            return f"{self.date()}T{self.time()}"
        if type_ == "string":
            return self.word()
        if type_ == "timeSeconds":
            return str(self.randint(0, 86399))
        return str(self.randint(-9000, 20000) * (1 if "Days" in type_ else 7919))

    def holed(self, cell, share=0.25):
        """A cell, or an empty one in its place."""
        return "" if self.random() < share else cell


def write(number):
    """A number as documents and cells write it."""
    return str(int(number)) if float(number).is_integer() and abs(number) < 1e15 else repr(float(number))
