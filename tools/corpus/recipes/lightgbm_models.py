"""LightGBM, which keeps thresholds and leaves as doubles and sums in double precision."""
from lightgbm import LGBMClassifier, LGBMRegressor

from recipes import data_sets, preparing
from recipes.entry import Entry

PRODUCER = "lightgbm"
SMALL = {"n_estimators": 8, "num_leaves": 7, "min_child_samples": 5, "random_state": 9, "n_jobs": 1, "verbose": -1,
         "deterministic": True, "force_row_wise": True}


def entries():
    survey, people = data_sets.marriages(), data_sets.diabetes()
    yield Entry(PRODUCER, "lgb-cancer", data_sets.cancer(), LGBMClassifier(**SMALL))
    yield Entry(PRODUCER, "lgb-wine-missing", data_sets.wine().with_missing(0.15), LGBMClassifier(**SMALL))
    yield Entry(PRODUCER, "lgb-diabetes", people, LGBMRegressor(**SMALL), preparing.indicators(people))
    yield Entry(PRODUCER, "lgb-scaled-diabetes", data_sets.scaled_diabetes(), LGBMRegressor(**SMALL))
    steps, places = preparing.codes(survey)
    yield Entry(PRODUCER, "lgb-marriages-categories", survey, LGBMClassifier(**SMALL), steps,
                {"model__categorical_feature": places})
    yield Entry(PRODUCER, "lgb-marriages-missing", survey.with_missing(0.1), LGBMClassifier(**SMALL),
                preparing.categories(survey))
    counts = data_sets.marriage_children()
    steps, places = preparing.codes(counts)
    yield Entry(PRODUCER, "lgb-poisson-children", counts, LGBMRegressor(objective="poisson", **SMALL), steps,
                {"model__categorical_feature": places})
    rated = data_sets.marriage_ratings()
    steps, places = preparing.codes(rated)
    yield Entry(PRODUCER, "lgb-ratings-multiclass", rated, LGBMClassifier(**SMALL), steps,
                {"model__categorical_feature": places})
    yield Entry(PRODUCER, "lgb-forest-iris", data_sets.iris(),
                LGBMClassifier(boosting_type="rf", bagging_freq=1, bagging_fraction=0.7, **SMALL))
