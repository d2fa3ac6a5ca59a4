r"""TextIndex: how often a term stands in a text, after the text was normalised.

The text and the term are cut into tokens at matches of wordSeparatorCharacterRE, and punctuation at the ends of tokens is
taken off. A hit is a run of tokens whose distance to the term, summed over the tokens, is within maxLevenshteinDistance;
with bestHits only the hits of the least distance count. Weights: termFrequency, binary, logarithmic
(log10(1 + count)), augmentedNormalizedTermFrequency ((1 + count / the most frequent token's count) / 2).

Normalisations run in order: each row replaces what its inField matches (the regular expression where its regexField is
true) by its outField, over and over while recursive and something changes.

Decision: a missing text or term gives a missing result; case is folded by lower().
Decision: "$1" in the replacement of a regular expression is its first group, as in "replace".
Decision: a normalisation that isn't a regular expression replaces its text where that stands between blanks, with the
punctuation behind it; one by distance replaces whole runs of tokens.
Decision: a count of 0 weighs 0 in the augmented frequency as in all others.
"""
import math
import re
import string
from .tables import rows_of
from .texts import compiled, expanded
from .values import MISSING, Value, text_of

PUNCTUATION = string.punctuation


def _flag(element, name, default):
    return {"true": True, "1": True, "false": False, "0": False}[element.get(name, default)]


def distance(left, right):
    """Levenshtein's: how many insertions, deletions and exchanges make one text of the other."""
    row = list(range(len(right) + 1))
    for i, a in enumerate(left, 1):
        above, row[0] = row[0], i
        for j, b in enumerate(right, 1):
            above, row[j] = row[j], min(row[j] + 1, row[j - 1] + 1, above + (a != b))
    return row[-1]


def _places(text, separator, tokenize):
    """Where the tokens of a text stand: the first character and the one behind."""
    if not tokenize:
        return [(0, len(text))]
    ends = [(0, 0), *(match.span() for match in re.finditer(separator, text)), (len(text), len(text))]
    places = []
    for (_, begin), (end, _) in zip(ends, ends[1:]):
        piece = text[begin:end].lstrip(PUNCTUATION)
        begin, piece = end - len(piece), piece.rstrip(PUNCTUATION)
        if piece:
            places.append((begin, begin + len(piece)))
    return places


def _tokens(text, separator, tokenize):
    return [text[begin:end] for begin, end in _places(text, separator, tokenize)]


def _hits(tokens, term, most):
    """The distances of all runs of tokens that are near enough to the term."""
    found = []
    for start in range(len(tokens) - len(term) + 1):
        total = sum(distance(a, b) for a, b in zip(tokens[start:start + len(term)], term))
        if total <= most:
            found.append(total)
    return found


def _setting(element, parent, name, default):
    return element.get(name, parent.get(name, default))


def _normalised(text, step, parent):
    names = step.get("inField", "string"), step.get("outField", "stem"), step.get("regexField", "regex")
    again = True
    while again:
        before = text
        for row in rows_of(step):
            text = _replaced(text, row, names, step, parent)
        again = step.get("recursive") in ("true", "1") and text != before
    return text


def _replaced(text, row, names, step, parent):
    what, by, regex = row[names[0]], row[names[1]], row.get(names[2]) in ("true", "1")
    flags = 0 if _setting(step, parent, "isCaseSensitive", "false") in ("true", "1") else re.IGNORECASE
    if regex:
        return compiled(what, flags).sub(lambda match: expanded(match, by), text)
    most = int(_setting(step, parent, "maxLevenshteinDistance", "0"))
    if most > 0:
        return _replaced_near(text, what, by, most, step, parent)
    pattern = rf"(?:(?<=^)|(?<=\s)){re.escape(what)}(?=\s|$|[.,;:!?])"
    return re.sub(pattern, lambda _match: by, text, flags=flags)


def _replaced_near(text, what, by, most, step, parent):
    """Runs of tokens that are near enough are replaced, from the left."""
    separator = _setting(step, parent, "wordSeparatorCharacterRE", r"\s+")
    tokenize = _setting(step, parent, "tokenize", "true") in ("true", "1")

    def fold(token):
        return token if _setting(step, parent, "isCaseSensitive", "false") in ("true", "1") else token.lower()
    places, wanted = _places(text, separator, tokenize), [fold(each) for each in _tokens(what, separator, tokenize)]
    made, behind, at = "", 0, 0
    while wanted and at + len(wanted) <= len(places):
        run = places[at:at + len(wanted)]
        if sum(distance(fold(text[begin:end]), each) for (begin, end), each in zip(run, wanted)) > most:
            at += 1
            continue
        made += text[behind:run[0][0]] + by
        behind, at = run[-1][1], at + len(wanted)
    return made + text[behind:]


def _count(element, text, term):
    tokenize = _flag(element, "tokenize", "true")
    separator = element.get("wordSeparatorCharacterRE", r"\s+")
    if not _flag(element, "isCaseSensitive", "false"):
        text, term = text.lower(), term.lower()
    tokens, wanted = _tokens(text, separator, tokenize), _tokens(term, separator, tokenize)
    if not wanted:
        return 0, tokens
    hits = _hits(tokens, wanted, int(element.get("maxLevenshteinDistance", "0")))
    if element.get("countHits", "allHits") == "bestHits" and hits:
        hits = [each for each in hits if each == min(hits)]
    return len(hits), tokens


def evaluate(element, text, term):
    """The weight of a term in a text."""
    if text is MISSING or term is MISSING:
        return MISSING
    text, term = text_of(text), text_of(term)
    for step in element:
        if step.tag == "TextIndexNormalization":
            text = _normalised(text, step, element)
            term = _normalised(term, step, element)
    count, tokens = _count(element, text, term)
    weights = element.get("localTermWeights", "termFrequency")
    if weights == "termFrequency":
        return Value("integer", count)
    if weights == "binary":
        return Value("integer", int(count > 0))
    if weights == "logarithmic":
        return Value("double", math.log10(1 + count))
    most = max((tokens.count(each) for each in tokens), default=0)
    return Value("double", (1 + count / most) / 2 if count else 0.0)
