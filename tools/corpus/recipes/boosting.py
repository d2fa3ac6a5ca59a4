"""Boosting of scikit-learn."""
from sklearn.ensemble import (AdaBoostClassifier, AdaBoostRegressor, GradientBoostingClassifier,
                              GradientBoostingRegressor, HistGradientBoostingClassifier, HistGradientBoostingRegressor)
from sklearn.tree import DecisionTreeRegressor

from recipes import data_sets, preparing
from recipes.entry import Entry

PRODUCER = "scikit-learn"
SMALL = {"n_estimators": 10, "max_depth": 3, "random_state": 5}
SMALL_HIST = {"max_iter": 10, "max_leaf_nodes": 8, "random_state": 5}


def gradient():
    survey, people = data_sets.marriages(), data_sets.diabetes()
    yield Entry(PRODUCER, "boosting-cancer", data_sets.cancer(), GradientBoostingClassifier(**SMALL))
    yield Entry(PRODUCER, "boosting-exponential-marriages", survey,
                GradientBoostingClassifier(loss="exponential", **SMALL), preparing.indicators(survey))
    yield Entry(PRODUCER, "boosting-wine", data_sets.wine(), GradientBoostingClassifier(**SMALL))
    yield Entry(PRODUCER, "boosting-diabetes", people, GradientBoostingRegressor(**SMALL), preparing.indicators(people))
    yield Entry(PRODUCER, "boosting-quantile-diabetes", people,
                GradientBoostingRegressor(loss="quantile", alpha=0.8, **SMALL), preparing.indicators(people))


def histograms():
    """Those with a logarithmic link (`loss="poisson"`) are left out: the exporter writes them without it."""
    survey = data_sets.marriages()
    yield Entry(PRODUCER, "hist-cancer-missing", data_sets.cancer().with_missing(0.2),
                HistGradientBoostingClassifier(**SMALL_HIST))
    yield Entry(PRODUCER, "hist-iris", data_sets.iris(), HistGradientBoostingClassifier(**SMALL_HIST))
    steps, places = preparing.codes(survey)
    yield Entry(PRODUCER, "hist-marriages-categories", survey,
                HistGradientBoostingClassifier(categorical_features=places, **SMALL_HIST), steps)
    people = data_sets.diabetes().with_missing(0.1, ["bmi", "s5", "bp"])
    steps, places = preparing.codes(people)
    yield Entry(PRODUCER, "hist-diabetes", people,
                HistGradientBoostingRegressor(categorical_features=places, **SMALL_HIST), steps)


def adaptive():
    yield Entry(PRODUCER, "adaboost-cancer", data_sets.cancer(), AdaBoostClassifier(n_estimators=8, random_state=5))
    people = data_sets.diabetes()
    yield Entry(PRODUCER, "adaboost-diabetes", people,
                AdaBoostRegressor(DecisionTreeRegressor(max_depth=3), n_estimators=7, random_state=5),
                preparing.indicators(people))


def entries():
    yield from gradient()
    yield from histograms()
    yield from adaptive()
