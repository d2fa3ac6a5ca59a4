"""Forests and bags of scikit-learn: averages over trees, and over other models."""
import numpy as np
from sklearn.ensemble import (BaggingClassifier, BaggingRegressor, ExtraTreesClassifier, ExtraTreesRegressor,
                              IsolationForest, RandomForestClassifier, RandomForestRegressor)
from sklearn.linear_model import LogisticRegression
from sklearn.tree import DecisionTreeClassifier, DecisionTreeRegressor

from recipes import data_sets, preparing
from recipes.entry import Entry
from recipes.trees import DEFAULT_CHILDREN

PRODUCER = "scikit-learn"
#: Few and shallow: each is a document of tens of kilobytes.
SMALL = {"n_estimators": 7, "max_depth": 4, "random_state": 3, "n_jobs": 1}


def forests():
    survey, people = data_sets.marriages(), data_sets.diabetes()
    yield Entry(PRODUCER, "forest-iris", data_sets.iris(), RandomForestClassifier(**SMALL))
    yield Entry(PRODUCER, "forest-digits", data_sets.digits(), RandomForestClassifier(**{**SMALL, "max_depth": 5}))
    yield Entry(PRODUCER, "forest-marriages", survey, RandomForestClassifier(**SMALL), preparing.indicators(survey))
    flags = data_sets.marriage_flags()
    yield Entry(PRODUCER, "forest-flags", flags, RandomForestClassifier(**SMALL), preparing.passed(flags))
    gaps = data_sets.cancer().with_missing(0.15)
    yield Entry(PRODUCER, "forest-cancer-missing", gaps, RandomForestClassifier(**SMALL), options=DEFAULT_CHILDREN)
    yield Entry(PRODUCER, "forest-diabetes", people, RandomForestRegressor(**SMALL), preparing.indicators(people))
    yield Entry(PRODUCER, "extra-trees-wine", data_sets.wine(), ExtraTreesClassifier(**SMALL))
    yield Entry(PRODUCER, "extra-trees-diabetes", people, ExtraTreesRegressor(**SMALL), preparing.indicators(people))


def bags():
    few = {"n_estimators": 6, "random_state": 3, "n_jobs": 1}
    yield Entry(PRODUCER, "bag-wine", data_sets.wine(),
                BaggingClassifier(DecisionTreeClassifier(max_depth=3), max_features=0.6, **few))
    yield Entry(PRODUCER, "bag-logistic-iris", data_sets.iris(),
                BaggingClassifier(LogisticRegression(max_iter=500), **few))
    people = data_sets.diabetes()
    yield Entry(PRODUCER, "bag-diabetes", people, BaggingRegressor(DecisionTreeRegressor(max_depth=4), **few),
                preparing.indicators(people))


def outliers(pipeline, rows, entry):
    """The document predicts the mean length of paths, from which output fields make the score and the judgement."""
    samples = pipeline.steps[-1][1].max_samples
    usual = 2 * (np.log(samples - 1) + np.euler_gamma) - 2 * (samples - 1) / samples
    signs = pipeline.predict(rows)
    return {"prediction": -np.log2(-pipeline.score_samples(rows)) * usual,
            "decisionFunction": pipeline.decision_function(rows), "outlier": signs < 0, "predict(outlier)": signs}


def isolation():
    yield Entry(PRODUCER, "isolation-iris", data_sets.iris(),
                IsolationForest(n_estimators=10, max_samples=32, contamination=0.1, random_state=3), answered=outliers)


def entries():
    yield from forests()
    yield from bags()
    yield from isolation()
