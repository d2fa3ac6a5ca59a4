#include <MCVeltrane_900/TransformationDictionary.h>

namespace MCVeltrane_900 {

namespace {

// None of these has a missing test: the missing number compares as the smallest one, and counts as true.

constexpr double Truth(bool condition) {
    return condition ? 1.0 : 0.0;
}

} // namespace

double TransformationDictionary::lessThan(const std::vector<double>& values) {
    return Truth(values.size() == 2 && values[1] > values[0]);
}

double TransformationDictionary::lessOrEqual(const std::vector<double>& values) {
    return Truth(values.size() == 2 && (values[1] > values[0] || values[0] == values[1]));
}

double TransformationDictionary::greaterThan(const std::vector<double>& values) {
    return Truth(values.size() == 2 && values[0] > values[1]);
}

double TransformationDictionary::greaterOrEqual(const std::vector<double>& values) {
    return Truth(values.size() == 2 && (values[0] > values[1] || values[0] == values[1]));
}

double TransformationDictionary::AndOperator(const std::vector<double>& values) {
    bool all = !values.empty();
    for (const double value : values) {
        all = all && value != 0.0;
    }
    return Truth(all);
}

double TransformationDictionary::OrOperator(const std::vector<double>& values) {
    bool any = false;
    for (const double value : values) {
        any = any || value != 0.0;
    }
    return Truth(any);
}

double TransformationDictionary::NotOperator(const std::vector<double>& values) {
    return Truth(values.size() == 1 && values[0] == 0.0);
}

} // namespace MCVeltrane_900
