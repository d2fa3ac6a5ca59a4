"""Makes a trial small that shows a difference, by leaving out what it doesn't need."""
import dataclasses
import xml.etree.ElementTree as ElementTree

import running

NAMESPACE = "http://www.dmg.org/PMML-4_4"
ATTEMPTS = 250


def _sort(difference):
    """What a smaller difference has to have in common with the one that was found."""
    words = difference.got.split()
    message = " ".join(words[:3]) if difference.kind == "refused" else ""
    return difference.kind, difference.expected.split()[0], difference.got == "''", message


def _differs(trial, folder, like):
    """The first difference of the same sort; None where there is none, and for a document that is none any more."""
    try:
        found, _ = running.differences(trial, folder)
    except Exception:  # pylint: disable=broad-except
        return None
    return next((each for each in found if _sort(each) == _sort(like)), None)


def _rows(trial, folder, difference):
    """One row, or those up to it where it looks back."""
    if not difference.row:
        return dataclasses.replace(trial, rows=trial.rows[:1])
    for rows in ([trial.rows[difference.row - 1]], trial.rows[:difference.row]):
        candidate = dataclasses.replace(trial, rows=rows)
        if _differs(candidate, folder, difference):
            return candidate
    return trial


def _without(text, place, lift):
    """The document without one of its elements, or with the element's first child in its place; None where there is no such
    element."""
    root = ElementTree.fromstring(text.encode())
    elements = list(root.iter())
    if place >= len(elements):
        return None
    element = elements[place]
    parent = next(each for each in elements if element in list(each))
    position = list(parent).index(element)
    parent.remove(element)
    if lift and len(element):
        parent.insert(position, element[0])
    for dictionary in root.iter(f"{{{NAMESPACE}}}DataDictionary"):
        dictionary.attrib.pop("numberOfFields", None)
    return ElementTree.tostring(root, encoding="unicode")


def shrink(trial, folder, difference):
    """The smallest trial that was found, and its first difference: passes over the document, leaving out what can go."""
    ElementTree.register_namespace("", NAMESPACE)
    trial = _rows(trial, folder, difference)
    best, attempts, size = _differs(trial, folder, difference) or difference, 0, None
    while size != len(trial.text) and attempts < ATTEMPTS:
        size, place = len(trial.text), 1
        while attempts < ATTEMPTS:
            smaller = None
            for text in (_without(trial.text, place, False), _without(trial.text, place, True)):
                if text is not None and not smaller:
                    attempts += 1
                    candidate = dataclasses.replace(trial, text=text)
                    found = _differs(candidate, folder, difference)
                    smaller = (candidate, found) if found else None
            if smaller:
                trial, best = smaller
            elif _without(trial.text, place + 1, False) is None:
                break
            else:
                place += 1
    return trial, best
