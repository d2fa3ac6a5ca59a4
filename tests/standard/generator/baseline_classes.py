"""Classes of tests against a baseline: statistics, distributions and tables, windows, weights, resets, targets."""
from .building import Parts, Trial, data_field, document, output, ref, tag
from .draw import write

CLOSE = 1e-9
KINDS, LANES, GEARS = ("car", "truck", "bike"), ("1", "2", "3"), ("slow", "fast")
FIELDS = [data_field("speed"), data_field("axles", "integer"), data_field("load"),
          data_field("kind", "string", None, *(tag("Value", value=each) for each in KINDS)),
          data_field("lane", "integer", "categorical", *(tag("Value", value=each) for each in LANES)),
          data_field("gear", "string", "ordinal", *(tag("Value", value=each) for each in GEARS)), data_field("y")]
LISTED = {"kind": KINDS, "lane": LANES, "gear": GEARS}


def quarter(draw, low, high):
    return draw.randint(4 * low, 4 * high) / 4


def distribution(draw, counts=False, dense=True):
    """Around the cells that rows_of draws; counts for a field of whole numbers."""
    kind = draw.choice(("Gaussian", "Uniform", *(("Poisson",) if counts else ()), *(() if dense else ("Any",))))
    if kind == "Poisson":
        return tag("PoissonDistribution", mean=write(quarter(draw, 1, 6)))
    if kind == "Uniform":
        return tag("UniformDistribution", lower=write(quarter(draw, -8, 1)), upper=write(quarter(draw, 5, 9)))
    return tag(f"{kind}Distribution", mean=write(quarter(draw, -2, 6)), variance=write(quarter(draw, 1, 9)))


def cells_of(draw, names, normalized):
    """A table of some or all combinations, which nest in an order of their own for each."""
    cells = [{}]
    for name in names:
        cells = [{**cell, name: each} for cell in cells for each in LISTED[name]]
    kept = [cell for cell in cells if draw.random() < 0.8] or cells[:1]
    counts = [draw.randint(0, 12) / (32 if normalized else 1) for _ in kept]
    counts[-1] = counts[-1] or 1
    shown = []
    for cell, count in zip(kept, counts):
        way = draw.sample(names, len(names))
        inner = tag("FieldValueCount", field=way[-1], value=cell[way[-1]], count=write(count))
        for name in reversed(way[:-1]):
            inner = tag("FieldValue", inner, field=name, value=cell[name])
        shown.append(inner)
    return shown


def count_table(draw, names, fit):
    normalized = draw.random() < 0.4
    sample = draw.randint(1, 400) if normalized and (fit == "chiSquareIndependence" or draw.random() < 0.5) else None
    return tag("NormalizedCountTable" if normalized else "CountTable", *cells_of(draw, names, normalized), sample=sample)


def rows_of(draw, count, hole):
    cells = {"speed": lambda: write(draw.randint(-40, 40) / 4), "axles": lambda: str(draw.randint(-1, 8)),
             "load": lambda: draw.choice(("-1", "0", "0.5", "1", "1", "2", "3.25")),
             "kind": lambda: draw.choice((*KINDS, *KINDS, "bus", "van")), "lane": lambda: draw.choice((*LANES, *LANES, "4", "x")),
             "gear": lambda: draw.choice((*GEARS, *GEARS, "reverse"))}
    return [{name: draw.holed(cell(), hole) for name, cell in cells.items()} for _ in range(count)]


def schema(draw):
    """Values that aren't listed are refused, missing, replaced, or counted together."""
    def treated(name):
        word = draw.choice((None, "asIs", "asIs", "asMissing", "asValue"))
        replacement = draw.choice(LISTED[name]) if word == "asValue" else None
        return tag("MiningField", name=name, invalidValueTreatment=word, invalidValueReplacement=replacement,
                   missingValueReplacement=draw.choice((None, None, LISTED[name][0])))
    return tag("MiningSchema", tag("MiningField", name="y", usageType="target"),
               *(tag("MiningField", name=name, missingValueReplacement=draw.choice((None, None, "1")))
                 for name in ("speed", "axles", "load")), *(treated(name) for name in LISTED))


def trial(draw, count, test, hole, targets=""):
    shown = tag("Output", output("p", "predictedValue"), output("r", "residual", dataType="double"))
    model = tag("BaselineModel", schema(draw), shown, targets, test, functionName="regression")
    rows = [{**row, "y": draw.holed(write(draw.randint(-8, 8) / 4), 0.2)} for row in rows_of(draw, count, hole)]
    return Trial(document(Parts(FIELDS, model=model)), rows, "score", CLOSE, absolute=1e-11)


def test_of(draw, field, statistic, baseline, alternate="", **more):
    """A test with or without a window and a weight."""
    window = draw.choice((None, 0, 1, 2, 3, 5, 8, 1000))
    weight = draw.choice((None, None, "load"))
    return tag("TestDistributions", tag("Baseline", baseline), alternate, field=field, testStatistic=statistic, windowSize=window,
               weightField=weight, **more)


def numbers(statistic, hole=0.1):
    """A test of numbers."""
    def make(draw, _road, count):
        field = draw.choice(("speed", "axles"))
        dense = statistic == "CUSUM"
        alternate = tag("Alternate", distribution(draw, field == "axles")) if dense else ""
        reset = draw.choice((None, "0", "-2", "1.5", "-1000")) if dense else None
        test = test_of(draw, field, statistic, distribution(draw, field == "axles", dense), alternate, resetValue=reset)
        return trial(draw, count, test, hole)
    return make


def tables(statistic, size, hole=0.1):
    """A test of counts of so many fields against a table."""
    def make(draw, _road, count):
        names = draw.sample(list(LISTED), size)
        scheme = "Independent" if statistic == "scalarProduct" and draw.random() < 0.5 else None
        test = test_of(draw, draw.choice(names), statistic, count_table(draw, names, statistic), normalizationScheme=scheme)
        return trial(draw, count, test, hole)
    return make


def fields(draw, _road, count):
    """A test whether fields depend on each other, without counts."""
    names = draw.sample(list(LISTED), draw.randint(2, 3))
    test = test_of(draw, draw.choice(names), "chiSquareIndependence", "".join(map(ref, names)))
    return trial(draw, count, test, 0.1)


def adjusted(draw, _road, count):
    """What Targets make of a result, and of a case without one."""
    bounds = {"min": draw.choice((None, "-1", "0.25")), "max": draw.choice((None, "1.5", "3"))}
    values = [tag("TargetValue", defaultValue="42.5")] if draw.random() < 0.5 else []
    targets = tag("Targets", tag("Target", *values, field="y", rescaleFactor="2.5", rescaleConstant="-1", **bounds))
    return trial(draw, count, test_of(draw, "speed", "zValue", distribution(draw, dense=False)), 0.2, targets)


SCORED = {
    "baseline.zValue": numbers("zValue"), "baseline.CUSUM": numbers("CUSUM"), "baseline.targets": adjusted,
    **{f"baseline.{statistic}-{size}": tables(statistic, size) for size in (1, 2, 3)
       for statistic in ("chiSquareIndependence", "chiSquareDistribution", "scalarProduct")},
    "baseline.fields": fields,
}
