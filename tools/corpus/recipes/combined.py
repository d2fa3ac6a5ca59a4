"""Models of several kinds together: votes, stacks, and choices by condition."""
import numpy as np
from sklearn.ensemble import (GradientBoostingRegressor, RandomForestClassifier, StackingClassifier, StackingRegressor,
                              VotingClassifier, VotingRegressor)
from sklearn.linear_model import LinearRegression, LogisticRegression
from sklearn.tree import DecisionTreeClassifier, DecisionTreeRegressor
from sklearn2pmml.ensemble import SelectFirstClassifier, SelectFirstRegressor

from recipes import data_sets, preparing
from recipes.entry import Entry, predicted, predictions

PRODUCER = "scikit-learn"


def classifiers():
    return [("tree", DecisionTreeClassifier(max_depth=3, random_state=2)),
            ("linear", LogisticRegression(max_iter=500)),
            ("forest", RandomForestClassifier(n_estimators=3, max_depth=3, random_state=2))]


def regressors():
    return [("tree", DecisionTreeRegressor(max_depth=3, random_state=2)), ("linear", LinearRegression()),
            ("boosting", GradientBoostingRegressor(n_estimators=4, max_depth=2, random_state=2))]


def shares(pipeline, rows, entry):
    """The predicted classes, and what share of the votes each has, by weight; the documents call it a probability."""
    inputs = rows
    for _, step in pipeline.steps[:-1]:
        inputs = step.transform(inputs)
    model = pipeline.steps[-1][1]
    ballots = model.classes_[model.transform(inputs)]
    weights = np.ones(ballots.shape[1]) if model.weights is None else np.asarray(model.weights, dtype=float)
    return {**predicted(pipeline, rows, entry),
            **{f"probability({each})": (ballots == each) @ weights / weights.sum() for each in model.classes_}}


def with_parts(pipeline, rows, entry):
    """The document tells the probabilities of the first models, too."""
    inputs = rows
    for _, step in pipeline.steps[:-1]:
        inputs = step.transform(inputs)
    model = pipeline.steps[-1][1]
    parts = {f"probability({place}, {each})": values
             for place, part in enumerate(model.estimators_, 1)
             for each, values in zip(model.classes_, part.predict_proba(inputs).T, strict=True)}
    return {**predictions(pipeline, rows, entry), **parts}


def votes():
    iris, people = data_sets.iris(), data_sets.diabetes()
    yield Entry(PRODUCER, "vote-hard-iris", iris, VotingClassifier(classifiers(), voting="hard"), answered=shares)
    yield Entry(PRODUCER, "vote-weighted-iris", iris,
                VotingClassifier(classifiers(), voting="hard", weights=[2, 1.5, 1]), answered=shares)
    yield Entry(PRODUCER, "vote-soft-iris", iris, VotingClassifier(classifiers(), voting="soft"))
    yield Entry(PRODUCER, "vote-soft-weighted-iris", iris,
                VotingClassifier(classifiers(), voting="soft", weights=[1, 2, 0.5]))
    yield Entry(PRODUCER, "vote-diabetes", people, VotingRegressor(regressors()), preparing.indicators(people))
    yield Entry(PRODUCER, "vote-weighted-diabetes", people, VotingRegressor(regressors(), weights=[1, 3, 2]),
                preparing.indicators(people))


def stacks():
    yield Entry(PRODUCER, "stack-iris", data_sets.iris(),
                StackingClassifier(classifiers(), LogisticRegression(max_iter=500), cv=3), answered=with_parts)
    yield Entry(PRODUCER, "stack-cancer", data_sets.cancer(),
                StackingClassifier(classifiers(), DecisionTreeClassifier(max_depth=3, random_state=2), cv=3,
                                   passthrough=True), answered=with_parts)
    people = data_sets.diabetes()
    yield Entry(PRODUCER, "stack-diabetes", people, StackingRegressor(regressors(), LinearRegression(), cv=3),
                preparing.indicators(people))


def choices():
    survey = data_sets.marriages().only("age", "years", "children", "educ")
    people = data_sets.scaled_diabetes()
    yield Entry(PRODUCER, "choice-marriages", survey, SelectFirstClassifier([
        ("few", DecisionTreeClassifier(max_depth=3, random_state=2), "X[2] <= 1"),
        ("young", LogisticRegression(max_iter=500), "X[0] < 35 and X[3] > 12"),
        ("other", DecisionTreeClassifier(max_depth=2, random_state=2), "True")]), preparing.passed(survey))
    yield Entry(PRODUCER, "choice-diabetes", people, SelectFirstRegressor([
        ("light", LinearRegression(), "X[2] < 0"),
        ("heavy", DecisionTreeRegressor(max_depth=3, random_state=2), "True")]), preparing.passed(people))


def entries():
    yield from votes()
    yield from stacks()
    yield from choices()
