#ifndef VELTRANE_TESTS_MODELS_SMALL_ENSEMBLE_H
#define VELTRANE_TESTS_MODELS_SMALL_ENSEMBLE_H

#include "models/kit/scoring.h"

#include <string>

/// Documents of models that consist of others.
namespace veltrane::tests {

/// A field of numbers of the dictionary.
inline std::string NumberField(const std::string& name) {
    return "<DataField name='" + name + "' optype='continuous' dataType='double'/>";
}

/// A document with the fields y, x and z, numbers, c of the categories a, b, and t of no, yes.
inline std::string EnsembleDocument(const std::string& rest) {
    return "<PMML version='4.4'><DataDictionary>" + NumberField("y") + NumberField("x") + NumberField("z") +
           "<DataField name='c' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/></DataField>"
           "<DataField name='t' optype='categorical' dataType='string'><Value value='no'/><Value value='yes'/>"
           "</DataField></DataDictionary>" +
           rest + "</PMML>";
}

/// The start of a mining schema.
inline std::string Schema(const std::string& target, const std::string& others) {
    return "<MiningSchema>" +
           (target.empty() ? std::string() : "<MiningField name='" + target + "' usageType='target'/>") + others +
           "</MiningSchema>";
}

inline std::string Fields(const std::string& names) {
    std::string fields;
    for (const char name : names) {
        fields += std::string("<MiningField name='") + name + "'/>";
    }
    return fields;
}

/// A regression of y over x, z and c.
inline std::string Mining(const std::string& method, const std::string& segments, const std::string& ahead = "") {
    return "<MiningModel functionName='regression'>" + Schema("y", Fields("xzc")) + ahead +
           "<Segmentation multipleModelMethod='" + method + "'>" + segments + "</Segmentation></MiningModel>";
}

/// y = intercept + coefficient * field, in an element that may hold more ahead of the table.
inline std::string Line(const std::string& field, double intercept, double coefficient, const std::string& ahead = "",
                        const std::string& target = "y") {
    return "<RegressionModel functionName='regression'>" + Schema(target, "<MiningField name='" + field + "'/>") +
           ahead + "<RegressionTable intercept='" + std::to_string(intercept) + "'><NumericPredictor name='" + field +
           "' coefficient='" + std::to_string(coefficient) + "'/></RegressionTable></RegressionModel>";
}

/// A segment for all cases.
inline std::string SegmentOf(const std::string& model, const std::string& attributes = "",
                             const std::string& predicate = "<True/>") {
    return "<Segment " + attributes + ">" + predicate + model + "</Segment>";
}

} // namespace veltrane::tests

#endif
