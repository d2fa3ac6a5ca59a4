"""A document of the corpus: what is trained with which data, how it is written, and the producer's own answers."""
import csv
import re
from dataclasses import dataclass, field
from typing import Any

import numpy as np
import pandas as pd
from sklearn2pmml import PMMLPipeline, sklearn2pmml

from recipes.data_sets import DataSet

#: Relative, as the tests compare.
EXACT = 1e-6
SINGLE = 1e-5
SUMS_IN_SINGLE = "sums and links in single precision"


def predicted(pipeline, rows, entry):
    return {entry.data.target.name: np.ravel(pipeline.predict(rows))}


def predictions(pipeline, rows, entry):
    """The predicted values, and the probability of each class of a model that knows any."""
    columns = predicted(pipeline, rows, entry)
    if hasattr(pipeline, "predict_proba"):
        classes = np.unique(entry.data.target)
        for category, values in zip(classes, np.asarray(pipeline.predict_proba(rows)).T, strict=True):
            columns[f"probability({category})"] = values
    return columns


@dataclass(frozen=True)
class Entry:
    """`steps` come before the model in the pipeline; `fit` are further arguments of its training."""
    producer: str
    name: str
    data: DataSet
    model: Any
    steps: tuple = ()
    fit: dict = field(default_factory=dict)
    #: What the exporter is asked for.
    options: dict = field(default_factory=dict)
    #: How far the answers may be off, and why it is more than EXACT.
    tolerance: float = EXACT
    why: str = ""
    #: What the producer answers of these rows, as columns: f(pipeline, rows, entry).
    answered: Any = predictions

    def write(self, folder):
        """Trains, and writes document, rows and answers. Returns the number of rows."""
        known, asked = self.data.parts()
        pipeline = PMMLPipeline([*self.steps, ("model", self.model)])
        pipeline.fit(self.data.inputs.iloc[known].reset_index(drop=True),
                     self.data.target.iloc[known].reset_index(drop=True), **self.fit)
        if self.options:
            pipeline.configure(**self.options)
        rows = self.data.inputs.iloc[asked].reset_index(drop=True)
        folder.mkdir(parents=True, exist_ok=True)
        write_document(pipeline, folder / f"{self.name}.pmml")
        write_csv(folder / f"{self.name}.csv", rows)
        write_csv(folder / f"{self.name}.answers.csv", pd.DataFrame(self.answered(pipeline, rows, self)))
        return len(rows)


def write_document(pipeline, path):
    """As the exporter writes it but for the time, by which alone two runs would differ."""
    sklearn2pmml(pipeline, str(path))
    text = path.read_text(encoding="utf-8")
    path.write_text(re.sub(r"\s*<Timestamp>[^<]*</Timestamp>", "", text), encoding="utf-8")


def cell(value):
    """All digits of a number, which a number in single precision has as a double; nothing for a missing value."""
    if value is None or value != value:
        return ""
    if isinstance(value, (float, np.floating)):
        return repr(float(value))
    return str(value).lower() if isinstance(value, (bool, np.bool_)) else str(value)


def write_csv(path, frame):
    with open(path, "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(frame.columns)
        writer.writerows([cell(value) for value in row] for row in frame.itertuples(index=False, name=None))
