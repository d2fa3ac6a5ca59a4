"""All classes by name. A class is a function (draw, road, number of cases) that makes a Trial."""
from . import (baseline_classes, date_classes, expression_classes, function_classes, lawful_classes, model_classes,
               refused_classes, rule_classes, tree_classes)

# Classes about derived fields go both roads; classes about models only that of score.
BOTH_ROADS = {**function_classes.CLASSES, **expression_classes.CLASSES, **date_classes.CLASSES,
              **lawful_classes.CLASSES}
SCORED = {**date_classes.SCORED, **model_classes.SCORED, **tree_classes.SCORED, **rule_classes.SCORED,
          **baseline_classes.SCORED, **lawful_classes.SCORED, **refused_classes.SCORED}


def names():
    """Every class with its road: NAME@transform and NAME@score."""
    return [f"{name}@{road}" for name in BOTH_ROADS for road in ("transform", "score")] + [f"{name}@score" for name in SCORED]


def make(name, draw, count):
    """A trial of a class."""
    kind, _, road = name.rpartition("@")
    return (BOTH_ROADS.get(kind) or SCORED[kind])(draw, road, count)
