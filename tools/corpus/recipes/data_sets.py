"""The open data sets that the packages bring along, cut into cases to train with and cases to ask."""
from dataclasses import dataclass, replace

import numpy as np
import pandas as pd
from sklearn import datasets

SEED = 20
#: Cases that a document is asked, those it was not trained with first.
NEW_CASES, KNOWN_CASES = 45, 15


@dataclass(frozen=True)
class DataSet:
    """Inputs and target, a line a case, in the same order."""
    inputs: pd.DataFrame
    target: pd.Series

    def parts(self):
        """The places of the cases to train with and of those to ask."""
        places = np.random.default_rng(SEED).permutation(len(self.inputs))
        new, known = np.split(places, [len(places) // 3])
        return np.sort(known), np.concatenate([new[:NEW_CASES], known[:KNOWN_CASES]])

    def only(self, *columns):
        return replace(self, inputs=self.inputs[list(columns)])

    def asking_for(self, target):
        return replace(self, target=target)

    def with_missing(self, share, columns=None):
        """The same with a share of the cells missing."""
        inputs = self.inputs.copy()
        draws = np.random.default_rng(SEED + 1)
        for column in columns or inputs.columns:
            inputs[column] = inputs[column].mask(draws.random(len(inputs)) < share)
        return replace(self, inputs=inputs)

    def categorical(self):
        """The columns that hold texts."""
        return [column for column in self.inputs if self.inputs[column].dropna().map(type).eq(str).all()]

    def flags(self):
        """The columns that hold truth values."""
        return [column for column in self.inputs if self.inputs[column].dtype == bool]

    def continuous(self):
        others = [*self.categorical(), *self.flags()]
        return [column for column in self.inputs if column not in others]


def _named(frame):
    """Columns by names without units and blanks, so that they are words in every document."""
    frame = frame.copy()
    frame.columns = [column.replace(" (cm)", "").replace(" ", "_").replace("/", "_") for column in frame.columns]
    return frame


def _texts(data, name):
    return pd.Series(np.asarray(data.target_names)[data.target].astype(object), name=name)


def iris():
    data = datasets.load_iris(as_frame=True)
    return DataSet(_named(data.data), _texts(data, "species"))


def wine():
    data = datasets.load_wine(as_frame=True)
    return DataSet(_named(data.data), _texts(data, "cultivar"))


def cancer():
    """The ten means of the breast cancer data."""
    data = datasets.load_breast_cancer(as_frame=True)
    return DataSet(_named(data.data).iloc[:, :10], _texts(data, "diagnosis"))


def digits():
    """Pictures of 8 x 8 points; the target is a whole number."""
    data = datasets.load_digits(as_frame=True)
    return DataSet(data.data, data.target.rename("digit"))


def diabetes():
    """Raw measures; the sex is a category, written as the number that the data have for it."""
    data = datasets.load_diabetes(as_frame=True, scaled=False)
    inputs = _named(data.data)
    inputs["sex"] = inputs["sex"].map(lambda code: str(int(code))).astype(object)
    return DataSet(inputs, data.target.rename("progression"))


def scaled_diabetes():
    """The same with numbers of many digits."""
    data = datasets.load_diabetes(as_frame=True)
    return DataSet(_named(data.data), data.target.rename("progression"))


OCCUPATIONS = {1: "student", 2: "farm or semi-skilled", 3: "white-collar", 4: "teacher, artist & skilled",
               5: "managerial", 6: "professional"}
FAITHS = {1: "not", 2: "mildly", 3: "fairly", 4: "strongly"}
RATINGS = {1: "very poor", 2: "poor", 3: "fair", 4: "good", 5: "very good"}


def marriages():
    """A survey with categories: a sixth of the cases of statsmodels' `fair`. The target tells of affairs."""
    from statsmodels.datasets import fair
    data = fair.load_pandas().data.iloc[::6].reset_index(drop=True)
    inputs = pd.DataFrame({"rating": data["rate_marriage"].map(RATINGS).astype(object), "age": data["age"],
                           "years": data["yrs_married"], "children": data["children"],
                           "religious": data["religious"].map(FAITHS).astype(object), "educ": data["educ"],
                           "occupation": data["occupation"].map(OCCUPATIONS).astype(object),
                           "partner": data["occupation_husb"].map(OCCUPATIONS).astype(object)})
    return DataSet(inputs, pd.Series(np.where(data["affairs"] > 0, "yes", "no").astype(object), name="affairs"))


def marriage_flags():
    """The same people by truth values and numbers."""
    data = marriages()
    inputs = data.inputs[["age", "years", "educ"]].assign(
        parent=data.inputs["children"] > 0, religious=data.inputs["religious"].isin(["fairly", "strongly"]),
        content=data.inputs["rating"].isin(["good", "very good"]))
    return replace(data, inputs=inputs)


def marriage_ratings():
    """The same people, asked for the rating of their marriage in three classes."""
    data = marriages()
    rating = data.inputs["rating"].map(lambda text: {"very good": "high", "good": "middle"}.get(text, "low"))
    return DataSet(data.inputs.drop(columns="rating"), rating.astype(object).rename("rated"))


def marriage_children():
    """The same people, asked for the number of children: a target that counts."""
    data = marriages()
    return DataSet(data.inputs.drop(columns="children"), data.inputs["children"].rename("children"))
