#ifndef MCVELTRANE_900_PMMLTRANSLATOR_H
#define MCVELTRANE_900_PMMLTRANSLATOR_H

#include <MCVeltrane_900/BaseTranslator.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>
#include <veltrane_export.h>

#include <map>
#include <string>
#include <vector>

namespace MCVeltrane_900 {

class DiscreteSplit;
class FunctionTree;
class ScaleSplit;
class ScoreDictionary;
class ScoreMissingValueSet;
class ScorePredicate;
class ScoreValueRange;
class SetPredicate;
class SimplePredicate;
class TransformVar;

/// The translator of PMML documents: the readers that every model kind shares. A plug-in derives its translator from
/// this one and calls them from its own ParseFromTree. All failures are VTException.
class VELTRANE_API PMMLTranslator : public BaseTranslator {
public:
    PMMLTranslator();

    /// @param encoding name of the encoding that the strings of the model shall have; empty means "CP1252"
    explicit PMMLTranslator(const std::string& encoding);
    PMMLTranslator(const PMMLTranslator& other);
    PMMLTranslator& operator=(const PMMLTranslator& other);
    ~PMMLTranslator() override;

    using BaseTranslator::ParseFromTree;

    /// Null: a plug-in's translator gives the operation its content.
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override;

    /// Reads a DataDictionary. Creates the transcoder when there is none yet.
    /// @param dataDictionary the element
    /// @param withEncoders   whether string variables that are not continuous get an encoder of their categories
    /// @return a new dictionary in document order, owned by the caller
    /// @throws VTException 260115, 260120, 260151, 260152, 260153, 260172, 260178, 260202, 260203, 260211, 260213,
    ///         260242, 260271, 260272, 260282, 260285, 260294: the first fault in document order; the translator stays
    ///         usable
    ScoreDictionary* ParseDictionary(xercesc::DOMNode* dataDictionary, bool withEncoders);

    /// Reads the ResultField descendants of an element, at any depth: the outputs of a model, each a ResultVar under
    /// its name. The first of several with one name stays. The translator must have its transcoder.
    /// @return a new dictionary owned by the caller; null when there is no ResultField
    /// @throws VTException 260114 for a null element; 260120, 260152, 260153, 260285: the first fault in document
    ///         order. Nothing is kept then.
    ScoreDictionary* ParseResultDictionary(xercesc::DOMNode* parent);

    /// Refines variables of a dictionary from the Target children of an element: the default value of a continuous one;
    /// labels and prior probabilities of the others, where a value that has a label keeps it. The translator must have
    /// its transcoder.
    /// @param targets may be null, which does nothing
    /// @return true
    /// @throws VTException 260120, 260124, 260151, 260152, 260203, 260214, 260271, 260285, 260294: the first fault in
    ///         document order. What was set up to then stays set.
    bool HandleTargets(xercesc::DOMElement* targets, ScoreDictionary* dictionary);

    /// Adds the complement of an Interval, the valid range, to the missing set.
    /// @param var, count not read
    /// @throws VTException 260151 for a margin that is no number; the set is then unchanged
    static void handleInterval(ScoreDictVar* var, xercesc::DOMNode* interval, ScoreMissingValueSet* missing, int count);

    /// Adds an Interval itself to the missing set.
    /// @throws VTException 260151 for a margin that is no number
    static void handleTreeInterval(xercesc::DOMNode* interval, ScoreMissingValueSet* missing);

    /// Adds the range between two bounds that came in extensions.
    /// @param count 1 for each lower bound that came, 10 for each upper one
    /// @return false when none came
    /// @throws VTException 260272 when a bound came twice
    bool HandleKORDMissingInterval(ScoreMissingValueSet* missing, int count, double lower, double upper);

    /// Switches the variable's usage type off when the Extension has a UsageType child that says so.
    void ParseUsageTypeExtension(xercesc::DOMElement* extension, ScoreDictVar* var);

    /// The type that a dataType names; DT_NONE for every other text.
    ScoreDictVar::DateTimeType ParseDateTimeType(const XMLCh* text);

    /// Gives an ordinal or nominal variable its encoder, if it has none, and teaches it the variable's categories.
    /// @return false for a null or a continuous variable
    bool SetupCatEncoder(ScoreDictVar* var);

    /// Whether a text is one of the variable's listed values; false for a null variable.
    /// @throws VTException 260126 when the variable lists none
    bool IsValidScoreValue(const ScoreDictVar* var, const std::string& text);

    /// The position of a text in the variable's listed values, or -1.
    /// @throws VTException 260126 when the variable lists none
    int GetIndexOfOrdinalValue(const std::string& text, const ScoreDictVar* var);

    /// Turns a comparison of an ordinal field into a range of positions in its listed values.
    /// @param[out] low, high the range, both ends included; it may be empty
    /// @return 0 for "equal", 2 for "notEqual", 1 for the others
    /// @throws VTException 260120, 260126, or 260153 for an unlisted value or an unknown operator. A null variable
    ///         lists no value and has the empty name.
    int HandleOrdinalVariable(xercesc::DOMElement* predicate, const ScoreDictVar* var, int& low, int& high);

    /// Compares with a literal in the translator's encoding; false without a transcoder.
    bool XStrEqualsUTF8Str(const XMLCh* text, const char* literal);

    /// Reads the DerivedField descendants of an element, at any depth and in document order. A field can refer to the
    /// inputs and to the fields ahead of it. The node counter starts anew.
    /// @param dictionary the inputs; a NormDiscrete over one that lists no categories adds its category to it
    /// @return a new dictionary owned by the caller; null when there is no DerivedField
    /// @throws VTException 260114 for a null element; 260120, 260152, 260202, 260211, 260274, 260285, 260294, 260303 or
    ///         what the readers below throw: the first fault in document order; 260227 for a field that could not be
    ///         evaluated, see TransformVar::MAX_NESTED_EVALUATIONS. Nothing is kept then.
    TransformationDictionary* HandleTransformationDictionary(xercesc::DOMElement* element,
                                                             const ScoreDictionary* dictionary);

    /// The missing values of a derived field, from its Extension "MissingValues". They replace those it had.
    /// @throws VTException 260120, 260151, 260272, or 260216 for an Interval on a variable that isn't numeric
    void handleDerivedVarMissingValue(xercesc::DOMElement* extension, TransformVar* var);

    /// The recode extensions of a derived field: "recodeElseCopy", "recodeMissingCopy", "mapSysmisTo" and
    /// "recodeMissingSysmis"; any other does nothing.
    /// @param var a TransformVar
    /// @throws VTException 260216 for one that contradicts what the field has already, 260120, 260151, 260244
    void HandleKORDExtensions(xercesc::DOMElement* extension, ScoreDictVar* var);

    /// The Value children of a derived field. They replace the labels that it had.
    /// @throws VTException 260120, 260151, or 260153 for a property other than "valid"
    void HandleValueList(xercesc::DOMElement* derivedField, TransformVar* var);

    /// Reads a Lag. Every child element names a block indicator.
    /// @param var a TransformVar
    /// @return the source field's name
    /// @throws VTException 260120, 260125, 260151
    std::string HandleLag(xercesc::DOMElement* lag, ScoreDictVar* var, const ScoreDictionary* dictionary,
                          const ScoreDictionary* derived);

    /// Reads a FieldRef.
    /// @param target the TransformVar that takes the field's value, and "mapMissingTo" although it is constant here;
    ///               null for a reference in an argument, of which only the name is read
    /// @return the field's name
    /// @throws VTException 260120, 260125, 260151, or 260215 when target and field are of different types
    std::string HandleFieldRef(xercesc::DOMElement* fieldRef, const ScoreDictionary* dictionary,
                               const ScoreDictionary* derived, const ScoreDictVar* target);

    /// Reads a Constant: a text when its dataType says so, else a number; a date-time is counted as its type counts.
    /// @return a new value owned by the caller
    /// @throws VTException 260114 for one without content, 260151 for a text that is no number
    ScoreValue* HandelConstant(xercesc::DOMElement* constant);

    /// The same as text; a date-time's is DateTimeValue::GetNumericString.
    /// @param[out] number the number read, of a date-time in the units of its type; SYSMIS for a text
    std::string HandelConstant(xercesc::DOMElement* constant, double& number, ScoreValue::ValueType& type);

    /// Reads a Constant that is a text by default.
    /// @return a new value owned by the caller
    /// @throws VTException 260114, or 260153 for a dataType that is neither empty nor "string"
    ScoreValue* HandelConstantDefaultStringType(xercesc::DOMElement* constant);

    // The readers of expressions. `var` is a TransformVar, which they fill; a field is looked up in `dictionary` first,
    // in `derived` second, and 260125 is thrown for one in neither. They return the source field's name.

    /// @throws VTException 260120, 260151, 260176 for fewer than two points, 260180 for a field that isn't continuous
    std::string HandleNormContinuous(xercesc::DOMElement* element, ScoreDictVar* var, const ScoreDictionary* dictionary,
                                     const ScoreDictionary* derived);
    /// The indicator is decided here, for all cases, by whether the element's value is a category of the field.
    /// @throws VTException 260120, 260151, or 260214 for a continuous field
    std::string HandleNormDiscrete(xercesc::DOMElement* element, ScoreDictVar* var, const ScoreDictionary* dictionary,
                                   const ScoreDictionary* derived);
    /// Without labels so far, `var` gets the bin values as labels.
    /// @throws VTException 260115, 260120, 260151, 260153, 260175, 260178, 260272, or 260293 when bins intersect
    std::string HandleDiscritize(xercesc::DOMElement* element, ScoreDictVar* var, const ScoreDictionary* dictionary,
                                 const ScoreDictionary* derived);
    /// `var` gets a new value map. The source field is the last one that is paired with a column.
    /// @throws VTException 260120, 260122, 260151, 260153, 260244, 260251 for a row that is shorter or longer than the
    ///         first, or the code 1 with a detail message for a pair of an unknown field
    std::string HandleMapValues(xercesc::DOMElement* element, ScoreDictVar* var, const ScoreDictionary* dictionary,
                                const ScoreDictionary* derived);

    /// The Interval of a bin as a new range owned by the caller.
    /// @param binIndex the bins before it; from the third bin on one margin has to be there
    /// @throws VTException 260120, 260151, 260153, 260175
    ScoreValueRange* HandleDiscretizeBinInterVal(xercesc::DOMElement* interval, int binIndex);

    /// Puts the names of the built-in functions into the function map. Calling it again changes nothing.
    void InitFunctionMap();

    /// @return the function of a name, compared exactly; 79 when the function map holds no such name
    TransformationDictionary::TransformFunction GetTransFunction(const std::string& name) const;

    /// What messages call a function; "<not defined>" for some of them, and for a number that is no function.
    static std::string ToString(TransformationDictionary::TransformFunction function);
    using BaseTranslator::ToString;

    /// "continuous", "ordinal" or "categorical"; empty for any other number.
    static std::string ToString(ScoreDictVar::MeasureLevel level);

    /// The families of the built-in functions. 47 "greaterOrEqual" and 62 "substring" belong to none.
    static bool IsArithmeticFunction(TransformationDictionary::TransformFunction function);
    static bool IsMathematicsFunction(TransformationDictionary::TransformFunction function);
    static bool IsStatisticFunction(TransformationDictionary::TransformFunction function);
    static bool IsDateTimeFunction(TransformationDictionary::TransformFunction function);
    static bool IsLogicFunction(TransformationDictionary::TransformFunction function);
    static bool IsStringFunction(TransformationDictionary::TransformFunction function);
    static bool IsMixOutputFunction(TransformationDictionary::TransformFunction function);
    static bool IsNumericFunction(TransformationDictionary::TransformFunction function);
    static bool IsInputNumericFunction(TransformationDictionary::TransformFunction function);
    static bool IsOutputNumericFunction(TransformationDictionary::TransformFunction function);
    static bool IsOutputStringFunction(TransformationDictionary::TransformFunction function);
    static bool IsInputStringFunction(TransformationDictionary::TransformFunction function);
    static bool IsMixInputFunction(TransformationDictionary::TransformFunction function);

    /// Reads an Apply with all that is nested in it. Node ids are the decimal text of a counter, in document order.
    /// @param target the derived field that the tree is for
    /// @param parent the node that the new one becomes a child of; null for the root
    /// @return the node, owned by its parent, or by the caller when it has none
    /// @throws VTException 260114, 260120, 260151, 260173, 260174, 260215, 260221 (also for one that is nested deeper
    ///         than 1000 functions), 260243, 260245, 260303. The node is left without children under its parent then;
    ///         a root is deleted
    FunctionTree* HandleApply(xercesc::DOMElement* apply, const ScoreDictVar* target, FunctionTree* parent,
                              const ScoreDictionary* dictionary, const ScoreDictionary* derived);

    /// Adds a leaf for a field to a node.
    /// @param fieldMissing the replacement for a missing value of the field, owned by the leaf from here on; may be
    ///                     null
    void SetLeafNodeStats(const std::string& field, FunctionTree* node, int index, bool isConst,
                          ScoreValue* fieldMissing);

    /// Checks the arguments of a function: their number, and the kind of each.
    /// @param names          for each argument the field's name, or the name of its kind
    /// @param kinds          0 a nested Apply, 1 a field, 2 a constant
    /// @param childFunctions the function of each nested Apply, 79 for the rest
    /// @throws VTException 260173, 260174, 260215, 260243, 260245
    void VerifyApplyFunction(const std::vector<std::string>& names, const std::vector<int>& kinds,
                             const ScoreDictionary* dictionary, const ScoreDictionary* derived,
                             TransformationDictionary::TransformFunction function,
                             const std::vector<TransformationDictionary::TransformFunction>& childFunctions,
                             const ScoreDictVar* target);

    /// @throws VTException 260243 when `parent` can't take the result of `child`
    void VerifyParentAndChildFunction(TransformationDictionary::TransformFunction parent,
                                      TransformationDictionary::TransformFunction child);

    /// @throws VTException 260245 when a field or constant is a number and must be none, or the other way round
    void VerifyOneElem(TransformationDictionary::TransformFunction function, bool expectNumeric, bool isConstant,
                       const std::string& name, const ScoreDictionary* dictionary, const ScoreDictionary* derived);

    /// The first child of a node that is an Array.
    /// @throws VTException 260115
    xercesc::DOMNode* GetArrayNode(xercesc::DOMNode* node);

    /// The items of an Array. A quoted item may hold blanks, and quotes behind a backslash.
    /// @param type the array's type: items of a "real" or "int" one are verified; may be null
    /// @param var  the variable that the items are for; may be null. With a category that is a single backslash, a
    ///             backslash escapes nothing
    /// @throws VTException 260115, 260151, 260156 for a quote that is not closed, 260241, 260284
    std::vector<std::string> GetArrayElements(xercesc::DOMNode* array, const XMLCh* type, const ScoreDictVar* var);

    /// The items of an Array by its own type; none for a null element.
    std::vector<std::string> ParseStrArray(xercesc::DOMElement* array);

    /// The numbers of an Array or of a basis row, split at white space.
    /// @param count how many a basis row has to have; an Array goes by its own attribute "n"
    /// @throws VTException 260114, 260151, 260172, 260241, 260283, 260284
    std::vector<int> VerifyIntArray(xercesc::DOMElement* array, int count);
    std::vector<double> VerifyDoubleArray(xercesc::DOMElement* array, int count);

    // The readers of predicates turn operator and value into a split once; evaluation asks the split alone. A field is
    // looked up in `dictionary` first, in `derived`, which may be null, second. The split borrows its variable, so the
    // dictionaries have to live as long as the predicates. Every split has the one child index 0, which means true.
    // A variable that lists no categories learns those that a document names, although the dictionaries are constant.

    /// Reads a SimplePredicate. A continuous field gives a ScaleSplit, a categorical one a DiscreteSplit.
    /// @param ordinalAsScale which of the two a numeric ordinal field gives
    /// @return a new predicate owned by the caller
    /// @throws VTException 260114 for a node that is no element, 260120, 260125, and what the two readers of splits
    ///         throw. Nothing is kept then, but what was learned.
    SimplePredicate* ParsePredicate(xercesc::DOMNode* node, const ScoreDictionary* dictionary,
                                    const ScoreDictionary* derived, bool ordinalAsScale);

    /// Reads a SimpleSetPredicate.
    /// @return a new predicate owned by the caller; null for a continuous field
    /// @throws VTException 260114 for a node that is no element, 260120, 260125, and what HandleArrayDiscreteSplit
    ///         throws. Nothing is kept then, but what was learned.
    SetPredicate* ParseSetPredicate(xercesc::DOMNode* node, const ScoreDictionary* dictionary,
                                    const ScoreDictionary* derived);

    /// Reads a CompoundPredicate with all that is nested in it. A True under "and" and a False under "or" change
    /// nothing and are left out; a compound of one child is that child.
    /// @return a new predicate owned by the caller, not always a compound; null when there is no child
    /// @throws VTException 260114 for a node that is no element, 260153, 260221 for one that is nested deeper than 1000
    ///         compounds, and what the other readers of predicates throw. Nothing is kept then, but what was learned.
    ScorePredicate* ParseCompoundPredicate(xercesc::DOMNode* node, const ScoreDictionary* dictionary,
                                           const ScoreDictionary* derived, bool ordinalAsScale);

    /// The ranges in which a SimplePredicate holds. A node of another name gives the whole real line.
    /// @param[out] op, value the attributes' texts; unchanged for a node of another name, `value` also when absent
    /// @param[out] isMissing whether the predicate asks for a missing value
    /// @return a new split owned by the caller
    /// @throws VTException 260119 for a comparison without a value, 260120, 260151, 260157, 260171, 260212, 260303
    ScaleSplit* HandleNodeScaleSplit(xercesc::DOMNode* node, const ScoreDictVar* var, std::string& op, bool& isMissing,
                                     std::string& value);

    /// The categories for which a SimplePredicate holds: of an ordinal variable those that the operator spans, of a
    /// categorical one the value alone, whatever the operator. A node of another name gives an ordinal variable all of
    /// its categories.
    /// @param[out] op, isMissing, value as for HandleNodeScaleSplit
    /// @return a new split owned by the caller
    /// @throws VTException 260119, 260120, 260126, 260151, 260153, 260171, 260212, 260291
    DiscreteSplit* HandleNodeDiscreteSplit(xercesc::DOMNode* node, const ScoreDictVar* var, std::string& op,
                                           bool& isMissing, std::string& value);

    /// The categories for which a SimpleSetPredicate holds: those of its array, or all others.
    /// @param[in,out] op    the attribute's text; the operator to go by for a node of another name, which has no
    ///                      elements
    /// @param[in,out] array gets the codes of text categories, or the numbers of a variable without an encoder
    /// @return a new split owned by the caller
    /// @throws VTException 260115, 260120, 260126, 260151, 260152 for an element that is no category, 260153, 260156,
    ///         260158 for one of "isNotIn", 260222 for a type of array that isn't known, 260241, 260284
    DiscreteSplit* HandleArrayDiscreteSplit(xercesc::DOMNode* node, const ScoreDictVar* var, std::string& op,
                                            std::vector<double>& array);

    /// Puts one category into a split.
    /// @throws VTException 260119 for null, 260126, 260151, 260291 for a text that is no category
    void SetDiscreteSplitValue(const ScoreDictVar* var, DiscreteSplit* split, const XMLCh* value, int index);

    /// The bounds that an operator makes of a number; infinite where there is none.
    /// @param[out] included whether the bounds belong to the range; for "notEqual" the range is all but the number
    /// @throws VTException 260119 for null, 260151, 260303 for an unknown operator
    void GetScaleSplitValue(const XMLCh* value, const XMLCh* op, double& low, double& high, bool& included);

    /// The texts of the variable's listed values without `elements`, in order. A number counts as an element when it is
    /// written in another way too, and an element that stands twice counts once. An empty text that is left goes to the
    /// end.
    /// @throws VTException 260126, 260158 for an element that isn't listed
    std::vector<std::string> Remove(const ScoreDictVar* var, std::vector<std::string> elements);

protected:
    /// Kept for plug-ins, which may use them as they like; the library reads neither.
    int fWord;
    std::map<std::string, TransformationDictionary::TransformFunction> fFunctionMap;
    std::string fEncoding;
    double fConstant;

    /// The next node id of the function trees of one transformation dictionary.
    int fNodeCounter;

private:
    int fApplyDepth = 0;
};

} // namespace MCVeltrane_900

#endif
