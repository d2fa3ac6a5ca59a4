"""Generalised linear models of statsmodels that are exported as such."""
import statsmodels.api as sm
from sklearn2pmml.statsmodels import StatsModelsClassifier, StatsModelsRegressor

from recipes import data_sets
from recipes.entry import Entry

PRODUCER = "statsmodels"


def entries():
    numbers = data_sets.marriage_children().only("age", "years", "educ")
    cancer = data_sets.cancer().only("mean_radius", "mean_texture", "mean_smoothness")
    yield Entry(PRODUCER, "stats-glm-poisson-children", numbers,
                StatsModelsRegressor(sm.GLM, family=sm.families.Poisson()))
    yield Entry(PRODUCER, "stats-glm-gaussian-diabetes", data_sets.diabetes().only("bmi", "bp", "s5"),
                StatsModelsRegressor(sm.GLM, family=sm.families.Gaussian()))
    yield Entry(PRODUCER, "stats-glm-binomial-cancer", cancer,
                StatsModelsClassifier(sm.GLM, family=sm.families.Binomial()))
