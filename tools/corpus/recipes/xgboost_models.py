"""XGBoost, which computes in single precision throughout: inputs, sums of leaves and links."""
from sklearn.preprocessing import LabelEncoder
from xgboost import XGBClassifier, XGBRegressor, XGBRFClassifier

from recipes import data_sets, preparing
from recipes.entry import SINGLE, SUMS_IN_SINGLE, Entry

PRODUCER = "xgboost"
SMALL = {"n_estimators": 8, "max_depth": 3, "random_state": 7, "n_jobs": 1}


def numbered(data):
    """The classes as whole numbers, as XGBoost wants them."""
    target = LabelEncoder().fit_transform(data.target)
    return data.asking_for(type(data.target)(target, name=data.target.name))


def entry(name, data, model, steps=()):
    return Entry(PRODUCER, name, data, model, steps, tolerance=SINGLE, why=SUMS_IN_SINGLE)


def entries():
    survey, people = numbered(data_sets.marriages()), data_sets.diabetes()
    gaps = numbered(data_sets.wine()).with_missing(0.15)
    yield entry("xgb-cancer", numbered(data_sets.cancer()), XGBClassifier(**SMALL))
    yield entry("xgb-wine-missing", gaps, XGBClassifier(**SMALL))
    yield entry("xgb-diabetes", people, XGBRegressor(**SMALL), preparing.indicators(people))
    yield entry("xgb-scaled-diabetes", data_sets.scaled_diabetes(), XGBRegressor(**SMALL))
    yield entry("xgb-marriages-categories", survey,
                XGBClassifier(enable_categorical=True, tree_method="hist", **SMALL), preparing.categories(survey))
    yield entry("xgb-marriages-missing", survey.with_missing(0.1),
                XGBClassifier(enable_categorical=True, tree_method="hist", **SMALL),
                preparing.categories(survey))
    counts = data_sets.marriage_children()
    yield entry("xgb-poisson-children", counts, XGBRegressor(objective="count:poisson", **SMALL),
                preparing.indicators(counts))
    yield entry("xgb-dart-iris", numbered(data_sets.iris()),
                XGBClassifier(booster="dart", rate_drop=0.3, **{**SMALL, "n_estimators": 5}))
    yield entry("xgb-forest-cancer", numbered(data_sets.cancer()), XGBRFClassifier(**SMALL))
