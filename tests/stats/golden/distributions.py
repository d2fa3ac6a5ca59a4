"""The tables of the distribution functions. make_golden.py writes them."""
from mpmath import mp, mpf

import reference as ref
from continuous import (as_gamma, as_gamma_quantile, beta_points, beta_quantile, beta_quantile_points, chi_points,
                        chi_quantile, chi_quantile_points, f_points, f_quantile, f_quantile_points, f_tails,
                        gamma_density, t_cdf, t_cdf_points, t_density_points, t_quantile, t_quantile_points,
                        t_upper_points, upper_chi_points, upper_f_points)
from discrete import (binomial_lower, binomial_points, binomial_quantile, binomial_quantile_points, cumulative_points,
                      hyper_points, median_rows, percentile_rows)
from draw import values_of
from noncentral import (find_chi_rows, find_f_rows, find_t_rows, noncentral_chi, noncentral_chi_points, noncentral_f,
                        noncentral_f_points, noncentral_t_density_points, noncentral_t_points)
from normal import (cdf_std_norm, located_probabilities, normal_quantile, normal_values, pdf_std_norm, probabilities)


def log_gamma_points(d):
    yield d.region("x 1 or 2 +- 1e-15 to 0.3", 60,
                   lambda s: [s.random.choice((1, 2)) + s.sign() * s.log(1e-15, 0.3)])
    yield d.region("x 1e-300 to 0.7", 75, lambda s: [s.log(1e-300, 0.7)])
    yield d.region("x 2.3 to 1e300", 75, lambda s: [s.log(2.3, s.log(10, 1e300))])


FUNCTIONS = {
    "CdfStdNorm": values_of(cdf_std_norm, ref.normal_lower),
    "PdfNormalStandard": values_of(pdf_std_norm, ref.normal_density),
    "IdfStdNorm": values_of(probabilities, normal_quantile),
    "CdfNorm": values_of(normal_values, lambda x, m, s: ref.normal_lower((mpf(x) - mpf(m)) / mpf(s))),
    "PdfNormal": values_of(normal_values, lambda x, m, s: ref.normal_density((mpf(x) - mpf(m)) / mpf(s)) / mpf(s)),
    "IdfNorm": values_of(located_probabilities, normal_quantile),
    "CdfT": values_of(t_cdf_points, t_cdf),
    "SigT": values_of(t_upper_points, lambda x, df: ref.t_tails(x, df)[1]),
    "PdfT": values_of(t_density_points, ref.t_density),
    "IdfT": values_of(t_quantile_points, t_quantile),
    "CdfF": values_of(f_points, lambda x, a, b: f_tails(x, a, b)[0]),
    "SigF": values_of(upper_f_points, lambda x, a, b: ref.f_tails(x, a, b)[1]),
    "IdfF": values_of(f_quantile_points, f_quantile),
    "CdfChi": values_of(chi_points, lambda x, df: ref.gamma_tails(mpf(df) / 2, mpf(x) / 2)[0]),
    "SigChi": values_of(upper_chi_points, lambda x, df: ref.gamma_tails(mpf(df) / 2, mpf(x) / 2)[1]),
    "IdfChi": values_of(chi_quantile_points, chi_quantile),
    "CdfGam": values_of(as_gamma(chi_points), lambda x, s, r: ref.gamma_tails(s, mpf(x) * mpf(r))[0]),
    "PdfGamma": values_of(as_gamma(chi_points), gamma_density),
    "IdfGam": values_of(as_gamma_quantile(chi_quantile_points), lambda p, s, r: chi_quantile(p, 2 * s) / 2 / mpf(r)),
    "CdfBeta": values_of(beta_points, lambda x, a, b: ref.beta_tails(a, b, x)[0]),
    "IdfBeta": values_of(beta_quantile_points, beta_quantile),
    "PdfBin": values_of(binomial_points, ref.binomial_point),
    "CdfBin": values_of(cumulative_points, binomial_lower),
    "IdfBin": values_of(binomial_quantile_points, binomial_quantile),
    "PdfHyper": values_of(hyper_points, ref.hyper_point),
    "CDFHyper": values_of(hyper_points, lambda x, t, s, h: ref.hyper_lower(x, int(t), int(s), int(h))),
    "NonCentralCdfChi": values_of(noncentral_chi_points, noncentral_chi),
    "NonCentralCdfF": values_of(noncentral_f_points, noncentral_f),
    "NonCentralCdfT": values_of(noncentral_t_points, ref.noncentral_t),
    "NonCentralPdfT": values_of(noncentral_t_density_points, ref.noncentral_t_density),
    "FindNCParamChi": find_chi_rows,
    "FindNCParamF": find_f_rows,
    "FindNCParamT": find_t_rows,
    "GPTile": percentile_rows,
    "MednciLower": median_rows(0),
    "MednciUpper": median_rows(1),
    "MednciCoverage": median_rows(2),
    "korddnlgam": values_of(log_gamma_points, lambda x: mp.loggamma(mpf(x))),
}
