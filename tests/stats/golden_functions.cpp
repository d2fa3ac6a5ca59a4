#include "stats/golden_functions.h"

#include <MCCommon_900/MCMV.h>
#include <MCMath_900/MCDistFun.h>

namespace veltrane::tests {

namespace {

using Arguments = std::vector<double>;
using MCCommon_900::MCMV;
using MCMath_900::MCDistFun;

template <double (*Function)(double)>
double One(const Arguments& a) {
    return Function(a.at(0));
}

template <double (*Function)(double, double)>
double Two(const Arguments& a) {
    return Function(a.at(0), a.at(1));
}

template <double (*Function)(double, double, double)>
double Three(const Arguments& a) {
    return Function(a.at(0), a.at(1), a.at(2));
}

/// The result of a function with an error code, which has to be 0.
double WhenGood(double result, long code) {
    return code == 0 ? result : MCMV::Missing();
}

template <double (*Function)(double, double, long&)>
double TwoWithCode(const Arguments& a) {
    long code = -1;
    const double result = Function(a.at(0), a.at(1), code);
    return WhenGood(result, code);
}

template <double (*Function)(double, double, double, long&)>
double ThreeWithCode(const Arguments& a) {
    long code = -1;
    const double result = Function(a.at(0), a.at(1), a.at(2), code);
    return WhenGood(result, code);
}

double Hyper(const Arguments& a) {
    const auto whole = [&](int i) { return static_cast<int>(a.at(i)); };
    return MCDistFun::PdfHyper(whole(0), whole(1), whole(2), whole(3));
}

double HyperCumulative(const Arguments& a) {
    int code = -1;
    const double result = MCDistFun::CDFHyper(a.at(0), a.at(1), a.at(2), a.at(3), code);
    return WhenGood(result, code);
}

double NonCentralF(const Arguments& a) {
    return MCDistFun::NonCentralCdfF(a.at(0), a.at(1), a.at(2), a.at(3), a.at(4));
}

double FindChi(const Arguments& a) {
    return MCDistFun::FindNCParamChi(a.at(0), a.at(1), a.at(2), a.at(3));
}
double FindF(const Arguments& a) {
    return MCDistFun::FindNCParamF(a.at(0), a.at(1), a.at(2), a.at(3), a.at(4));
}
double FindT(const Arguments& a) {
    return MCDistFun::FindNCParamT(a.at(0), a.at(1), a.at(2), a.at(3));
}

/// n, percentage, mode, then n values, n frequencies and n widths.
double Percentile(const Arguments& a) {
    const int n = static_cast<int>(a.at(0));
    const double* values = a.data() + 3;
    double out = 0;
    long code = -1;
    MCDistFun::GPTile(n, a.at(1), values, values + n, values + 2 * n, static_cast<int>(a.at(2)), out, code);
    return out;
}

/// n, observations, level, then n values and n frequencies. The result is one of the three.
template <int Pick>
double MedianLimit(const Arguments& a) {
    const int n = static_cast<int>(a.at(0));
    const double* values = a.data() + 3;
    double results[3];
    MCDistFun::Mednci(n, values, values + n, a.at(1), a.at(2), true, results[0], results[1], results[2]);
    return results[Pick];
}

} // namespace

const GoldenFolder& DistributionTables() {
    static const GoldenFolder tables("stats/golden");
    return tables;
}

const std::vector<GoldenFunction>& GoldenFunctions() {
    static const std::vector<GoldenFunction> functions = {
        {"CdfStdNorm", One<MCDistFun::CdfStdNorm>},
        {"PdfNormalStandard", One<MCDistFun::PdfNormalStandard>},
        {"IdfStdNorm", One<MCDistFun::IdfStdNorm>},
        {"CdfNorm", Three<MCDistFun::CdfNorm>},
        {"PdfNormal", Three<MCDistFun::PdfNormal>},
        {"IdfNorm", Three<MCDistFun::IdfNorm>},
        {"CdfT", Two<MCDistFun::CdfT>},
        {"SigT", Two<MCDistFun::SigT>},
        {"PdfT", TwoWithCode<MCDistFun::PdfT>},
        {"IdfT", Two<MCDistFun::IdfT>},
        {"CdfF", Three<MCDistFun::CdfF>},
        {"SigF", Three<MCDistFun::SigF>},
        {"IdfF", Three<MCDistFun::IdfF>},
        {"CdfChi", Two<MCDistFun::CdfChi>},
        {"SigChi", Two<MCDistFun::SigChi>},
        {"IdfChi", Two<MCDistFun::IdfChi>},
        {"CdfGam", Three<MCDistFun::CdfGam>},
        {"PdfGamma", Three<MCDistFun::PdfGamma>},
        {"IdfGam", Three<MCDistFun::IdfGam>},
        {"CdfBeta", Three<MCDistFun::CdfBeta>},
        {"IdfBeta", Three<MCDistFun::IdfBeta>},
        {"PdfBin", ThreeWithCode<MCDistFun::PdfBin>},
        {"CdfBin", ThreeWithCode<MCDistFun::CdfBin>},
        {"IdfBin", ThreeWithCode<MCDistFun::IdfBin>},
        {"PdfHyper", Hyper},
        {"CDFHyper", HyperCumulative},
        {"NonCentralCdfChi", Three<MCDistFun::NonCentralCdfChi>},
        {"NonCentralCdfF", NonCentralF},
        {"NonCentralCdfT", Three<MCDistFun::NonCentralCdfT>},
        {"NonCentralPdfT", ThreeWithCode<MCDistFun::NonCentralPdfT>},
        {"FindNCParamChi", FindChi},
        {"FindNCParamF", FindF},
        {"FindNCParamT", FindT},
        {"GPTile", Percentile},
        {"MednciLower", MedianLimit<0>},
        {"MednciUpper", MedianLimit<1>},
        {"MednciCoverage", MedianLimit<2>},
        {"korddnlgam", One<MCDistFun::korddnlgam>},
    };
    return functions;
}

} // namespace veltrane::tests
