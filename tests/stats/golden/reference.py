"""The distributions at high precision, by sums of positive terms that need no cleverness at fifty digits.

Nothing here shares a method with the library beyond the definitions. Every function takes mpmath numbers (or doubles,
which are exact) and gives an mpmath number.
"""
from mpmath import mp, mpf, exp, expm1, log, log1p, sqrt, loggamma, erfc, pi, floor

from quadrature import FINE, half_line

mp.dps = 50
EPS = mpf(10) ** -45

# From here on the tails are integrals.
MANY = 1e5

MOST_ROUNDS = 100000


# Beyond it a normal tail is nothing at any precision.
FARTHEST = 1e5


def normal_lower(z):
    z = mpf(z)
    if abs(z) > FARTHEST:
        return mpf(0 if z < 0 else 1)
    return erfc(-z / sqrt(mpf(2))) / 2


def normal_density(z):
    z = mpf(z)
    if abs(z) > FARTHEST:
        return mpf(0)
    return exp(-z * z / 2) / sqrt(2 * pi)


def gamma_term(a, x):
    """x^a e^-x / Gamma(a + 1)"""
    return exp(a * log(x) - x - loggamma(a + 1))


def gamma_tails(a, x, rule=FINE):
    """Lower and upper incomplete gamma ratio; the smaller one to full precision."""
    a, x = mpf(a), mpf(x)
    if x <= 0:
        return mpf(0), mpf(1)
    if a > MANY:
        try:
            return gamma_integral(a, x, rule)
        except ArithmeticError:
            pass  # far out, where either expansion is short
    if x < a + 1:
        lower = lower_series(a, x)
        if a < 1:
            return lower, upper_for_small_shape(a, x)
        return lower, 1 - lower
    upper = gamma_term(a, x) * a * gamma_fraction(a, x)
    return 1 - upper, upper


def gamma_integral(a, x, rule):
    if x <= a:
        lower = gamma_term(a, x) * a * half_line(lambda s: a * s + x * expm1(-s), rule)
        return lower, 1 - lower
    upper = gamma_term(a, x) * a * half_line(lambda s: x * expm1(s) - a * s, rule)
    return 1 - upper, upper


def lower_series(a, x):
    term = total = mpf(1)
    c = a
    while term > mp.eps * total:
        c += 1
        term *= x / c
        total += term
    return gamma_term(a, x) * total


def upper_for_small_shape(a, x):
    """The upper ratio for a below 1 and an x below a + 1, where 1 - lower cancels, but by few digits."""
    with mp.workdps(90):
        value = 1 - lower_series(a, x)
    return +value


def gamma_fraction(a, x):
    """Q = x^a e^-x / Gamma(a) times this, by Lentz's method."""
    tiny = mpf(10) ** -400
    b = x + 1 - a
    c = 1 / tiny
    d = 1 / b
    h = d
    i = 0
    while True:
        i += 1
        an = -i * (i - a)
        b += 2
        d = an * d + b
        d = 1 / (d if d != 0 else tiny)
        c = b + an / c
        if c == 0:
            c = tiny
        delta = d * c
        h *= delta
        if abs(delta - 1) < EPS:
            return h


def beta_factor(a, b, x, y):
    """x^a y^b / (a B(a, b))"""
    return exp(a * log(x) + b * log(y) + loggamma(a + b) - loggamma(a + 1) - loggamma(b))


def beta_tails(a, b, x, y=None, rule=FINE):
    """I_x(a, b) and its complement; the smaller one to full precision. y is 1 - x."""
    a, b, x = mpf(a), mpf(b), mpf(x)
    y = 1 - x if y is None else mpf(y)
    if x <= 0:
        return mpf(0), mpf(1)
    if y <= 0:
        return mpf(1), mpf(0)
    if a + b > MANY and min(a, b) > 1:
        try:
            return beta_integral(a, b, x, y, rule)
        except ArithmeticError:
            pass  # far out, where the fraction is short
    if x <= (a + 1) / (a + b + 2):
        lower = beta_factor(a, b, x, y) * beta_fraction(a, b, x)
        return lower, 1 - lower
    upper = beta_factor(b, a, y, x) * beta_fraction(b, a, y)
    return 1 - upper, upper


def beta_integral(a, b, x, y, rule):
    if x * b <= a * y:
        lower = beta_factor(a, b, x, y) * a * half_line(lambda s: a * s + (a + b) * log1p(x * expm1(-s)), rule)
        return lower, 1 - lower
    upper = beta_factor(b, a, y, x) * b * half_line(lambda s: b * s + (a + b) * log1p(y * expm1(-s)), rule)
    return 1 - upper, upper


def beta_fraction(a, b, x):
    """I_x(a, b) = factor times this, by Lentz's method on the continued fraction."""
    tiny = mpf(10) ** -400
    c = mpf(1)
    d = 1 - (a + b) * x / (a + 1)
    d = 1 / (d if d != 0 else tiny)
    h = d
    m = 0
    while True:
        m += 1
        for numerator in (m * (b - m) * x / ((a + 2 * m - 1) * (a + 2 * m)),
                          -(a + m) * (a + b + m) * x / ((a + 2 * m) * (a + 2 * m + 1))):
            d = 1 + numerator * d
            d = 1 / (d if d != 0 else tiny)
            c = 1 + numerator / c
            if c == 0:
                c = tiny
            delta = d * c
            h *= delta
        if abs(delta - 1) < EPS:
            return h
        if m > MOST_ROUNDS:
            raise ArithmeticError("the fraction is too long")


def t_tails(x, df):
    x, df = mpf(x), mpf(df)
    half = beta_tails(df / 2, mpf(1) / 2, df / (df + x * x), x * x / (df + x * x))[0] / 2 if x != 0 else mpf(1) / 2
    return (half, 1 - half) if x < 0 else (1 - half, half)


def t_density(x, df):
    x, df = mpf(x), mpf(df)
    return exp(loggamma((df + 1) / 2) - loggamma(df / 2) - log(pi * df) / 2 - (df + 1) / 2 * mp.log1p(x * x / df))


def f_tails(x, df1, df2):
    x, df1, df2 = mpf(x), mpf(df1), mpf(df2)
    if x <= 0:
        return mpf(0), mpf(1)
    scale = df1 * x + df2
    return beta_tails(df1 / 2, df2 / 2, df1 * x / scale, df2 / scale)


def solve(tails, p, low, high):
    """The x between low and high with lower tail p, for tails that rise with x: bisection, then secants."""
    p = mpf(p)
    upper = 1 - p

    def excess(x):
        lower, rest = tails(x)
        return log(lower / p) if p < 0.5 else -log(rest / upper)
    low, high = mpf(low), mpf(high)
    assert excess(low) <= 0 <= excess(high)
    while high - low > mpf(10) ** -8 * max(abs(low), abs(high)):
        middle = (low + high) / 2
        if excess(middle) <= 0:
            low = middle
        else:
            high = middle
    f_low, f_high = excess(low), excess(high)
    for _ in range(30):
        if f_high == f_low:
            return high
        low, f_low, high = high, f_high, high - f_high * (high - low) / (f_high - f_low)
        if abs(high - low) <= mpf(10) ** -32 * abs(high):
            return high
        f_high = excess(high)
    raise ArithmeticError("no convergence")


def binomial_point(k, n, prob):
    prob = mpf(prob)
    k, n = mpf(k), mpf(n)
    if prob == 0 or prob == 1:
        return mpf(1) if k == n * prob else mpf(0)
    return exp(loggamma(n + 1) - loggamma(k + 1) - loggamma(n - k + 1) + k * log(prob) + (n - k) * mp.log1p(-prob))


def binomial_lower(x, n, prob, rule=FINE):
    x = floor(mpf(x))
    if x < 0:
        return mpf(0)
    if x >= n:
        return mpf(1)
    return beta_tails(n - x, x + 1, 1 - mpf(prob), mpf(prob), rule)[0]


def log_choose(n, k):
    return loggamma(mpf(n) + 1) - loggamma(mpf(k) + 1) - loggamma(mpf(n) - mpf(k) + 1)


def hyper_point(x, total, sample, hits):
    return exp(log_choose(hits, x) + log_choose(total - hits, sample - x) - log_choose(total, sample))


def hyper_lower(x, total, sample, hits):
    """The sum from x down or, when that is the longer way, 1 less the sum above."""
    x = int(floor(mpf(x)))
    low, high = max(0, sample + hits - total), min(sample, hits)
    if x >= high:
        return mpf(1)
    mode = (sample + 1) * (hits + 1) // (total + 2)
    if x <= mode:
        term = total_sum = hyper_point(x, total, sample, hits)
        k = x
        while k > low and term > EPS * total_sum:
            term *= mpf(k) * (total - hits - sample + k) / (mpf(hits - k + 1) * (sample - k + 1))
            k -= 1
            total_sum += term
        return total_sum
    term = total_sum = hyper_point(x + 1, total, sample, hits)
    k = x + 1
    while k < high and term > EPS * total_sum:
        k += 1
        term *= mpf(hits - k + 1) * (sample - k + 1) / (mpf(k) * (total - hits - sample + k))
        total_sum += term
    return 1 - total_sum


def poisson_range(c):
    """First and last index whose Poisson weights of mean c count at this precision."""
    width = 16 * sqrt(c) + 40
    return int(max(0, floor(c - width))), int(floor(c + width))


# From this mean of the weights on they are as good as a normal density, whose sum over every so many is its integral.
SMOOTH = 5e5


def smooth_mixture(c, ratio):
    """The sum of Poisson weights times a ratio, by an even choice of them: three to a standard deviation."""
    stride = int(sqrt(c) / 3)
    centre = int(c)
    total = mpf(0)
    for k in range(-30, 31):
        j = centre + k * stride
        total += exp(j * log(c) - c - loggamma(j + 1)) * ratio(j)
    return total * stride


def noncentral_chi(x, df, ncp):
    x, df, c = mpf(x), mpf(df), mpf(ncp) / 2
    if x <= 0:
        return mpf(0)
    if c > SMOOTH:
        return smooth_mixture(c, lambda j: gamma_tails(df / 2 + j, x / 2)[0])
    first, last = poisson_range(c)
    # Small lower tails come from the first terms of all, however small their weight.
    first = 0 if first < 3000 else first
    shape = df / 2 + last
    ratio = gamma_tails(shape, x / 2)[0]
    step = gamma_term(shape, x / 2)
    weight = exp(last * log(c) - c - loggamma(last + 1)) if c > 0 else mpf(1 if last == 0 else 0)
    if c == 0:
        return gamma_tails(df / 2, x / 2)[0]
    total = weight * ratio
    for j in range(last, first, -1):
        step *= shape / (x / 2)
        shape -= 1
        ratio += step
        weight *= j / c
        total += weight * ratio
    return total


def noncentral_beta(x, y, a, b, ncp):
    x, y, a, b, c = mpf(x), mpf(y), mpf(a), mpf(b), mpf(ncp) / 2
    if c == 0:
        return beta_tails(a, b, x, y)[0]
    if c > SMOOTH:
        return smooth_mixture(c, lambda j: beta_tails(a + j, b, x, y)[0])
    first, last = poisson_range(c)
    first = 0 if first < 3000 else first
    top = a + last
    ratio = beta_tails(top, b, x, y)[0]
    step = beta_factor(top, b, x, y)
    weight = exp(last * log(c) - c - loggamma(last + 1))
    total = weight * ratio
    for j in range(last, first, -1):
        step *= top / (x * (top + b - 1))
        top -= 1
        ratio += step
        weight *= j / c
        total += weight * ratio
    return total


def noncentral_f(x, df1, df2, ncp):
    x, df1, df2 = mpf(x), mpf(df1), mpf(df2)
    scale = df1 * x + df2
    return noncentral_beta(df1 * x / scale, df2 / scale, df1 / 2, df2 / 2, ncp)


def noncentral_t(x, df, ncp):
    """P(T <= x): the normal tail and the two sums over beta ratios."""
    x, df, ncp = mpf(x), mpf(df), mpf(ncp)
    if x < 0:
        return 1 - noncentral_t(-x, df, -ncp)
    if x == 0 or ncp == 0:
        return normal_lower(-ncp) if x == 0 else t_tails(x, df)[0]
    with mp.workdps(120):
        inner, outer, b = x * x / (df + x * x), df / (df + x * x), df / 2
        c = ncp * ncp / 2
        last = int(floor(c + 30 * sqrt(c) + 120))
        total = normal_lower(-ncp)
        for offset, sign in ((mpf(1) / 2, 1), (mpf(1), 1 if ncp > 0 else -1)):
            top = last + offset
            ratio = beta_tails(top, b, inner, outer)[0]
            step = beta_factor(top, b, inner, outer)
            shift = offset - mpf(1) / 2
            weight = exp((last + shift) * log(c) - c - loggamma(last + shift + 1)) / 2
            part = weight * ratio
            for j in range(last, 0, -1):
                step *= top / (inner * (top + b - 1))
                top -= 1
                ratio += step
                weight *= (j + shift) / c
                part += weight * ratio
            total += sign * part
    return +total


def noncentral_t_density(x, df, ncp):
    x, df, ncp = mpf(x), mpf(df), mpf(ncp)
    # Terms of alternating sign cancel down to a density of about exp(-ncp^2).
    digits = 60 + (int(ncp * ncp) if x * ncp < 0 else 0)
    with mp.workdps(digits):
        u = ncp * x * sqrt(mpf(2)) / sqrt(df + x * x)
        # Every other term follows from the one before.
        even, odd = mpf(1), exp(loggamma(df / 2 + 1) - loggamma((df + 1) / 2)) * u
        total, j = mpf(0), 0
        while True:
            total += even + odd
            j += 2
            even *= u * u * (df + j - 1) / 2 / ((j - 1) * j)
            odd *= u * u * (df + j) / 2 / (j * (j + 1))
            if j * j > u * u * (df + j) / 2 and abs(even) + abs(odd) < abs(total) * mpf(10) ** -40:
                break
        factor = loggamma((df + 1) / 2) - loggamma(df / 2)
        value = total * exp(factor - ncp * ncp / 2 - df / 2 * mp.log1p(x * x / df) - log(df + x * x) / 2 - log(pi) / 2)
    return +value
