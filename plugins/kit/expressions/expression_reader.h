#ifndef VELTRANE_PLUGINS_KIT_EXPRESSION_READER_H
#define VELTRANE_PLUGINS_KIT_EXPRESSION_READER_H

#include "kit/document/element.h"
#include "kit/expressions/call.h"
#include "kit/expressions/expression.h"
#include "kit/expressions/tables.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane_kit {

/// The fields that expressions may refer to.
class FieldScope {
public:
    struct Found {
        int slot;
        std::optional<DataType> type; ///< none for a field that may have values of any
        OrderPtr order = nullptr;     ///< of an ordinal field of texts that lists them
    };

    virtual ~FieldScope() = default;

    /// The field that an attribute names.
    /// @throws VTException 260120, 260285 for the attribute; others for a field that isn't there
    virtual Found Require(const Element& element, const XMLCh* attribute) = 0;
};

/// What a text of a document is read as: a value of the type that is stated beside it, else of the type that it is
/// wanted for, if it is one of that, else what it writes.
struct TextType {
    std::optional<DataType> stated;
    std::optional<DataType> wanted;

    /// @return a missing value for a text that is no value of the stated type; its text is borrowed
    Value Read(std::string_view text) const;
};

/// The functions that a document defines; each is read when it is called first, or to be checked where nothing calls
/// it.
class DefinedFunctions {
public:
    /// Takes note of the DefineFunctions among an element's children, which stay where they are.
    /// @throws VTException 260203 for a name that comes twice or that PMML has itself
    void Add(const Element& parent);

private:
    friend class ExpressionReader;
    enum class State { UNREAD, BEING_READ, READ };
    struct Entry {
        Element element;
        State state = State::UNREAD;
        DefinedFunction function;
    };
    std::map<std::string, Entry, std::less<>> fEntries;
    std::vector<Entry*> fInOrder; ///< of the document
    std::size_t fDepth = 0;       ///< of the expression that is being read, those that asked for it included
};

/// Makes expressions of the elements of a document.
///
/// What fails throws a VTException whose message names element, attribute and value: 260120 and 260285 for attributes
/// that are absent or empty, 260153 for words and numbers that are none, for values that aren't of their field's type,
/// for unknown functions and for functions that call themselves, 260187 for a text that is asked for its number, 260246
/// for a number of arguments that a function doesn't take, 260115 and 260274 where there is not exactly one expression,
/// 260159 for an element that is none, 260227 for an expression that would take more than kMostEvaluations or lies
/// deeper than kDeepest.
class ExpressionReader {
public:
    /// How many expressions may be evaluated for one of them, through the functions that the document defines.
    static constexpr std::size_t kMostEvaluations = 1000000;

    /// How deep expressions may lie within one another, through the functions that the document defines and while they
    /// are read through the fields that refer to fields behind them: reading and evaluation take the stack.
    static constexpr std::size_t kDeepest = 2000;

    /// How many cases a Lag may look back.
    static constexpr std::size_t kLongestLag = 1000000;

    /// All are borrowed for as long as the reader is there, the functions for as long as what it reads.
    ExpressionReader(FrameLayout& layout, FieldScope& scope, DefinedFunctions& functions)
        : fLayout(layout), fScope(&scope), fFunctions(functions) {}

    /// Whether an element is an expression by its tag.
    static bool IsExpression(const Element& element);

    /// The only expression among an element's children.
    /// @param type what the values are for, if that is known: constants without a type of their own take it
    ExpressionPtr ReadOnly(const Element& parent, std::optional<DataType> type);

    /// Reads the functions that nothing has called yet, in the order of the document, so that what is wrong in one is
    /// told whether something calls it or not. What is read is dropped: a Lag in it keeps no cases.
    static void CheckUncalled(DefinedFunctions& functions, const std::string& encoding);

private:
    class ParameterScope;

    static Element FindAmong(const Element& parent);
    ExpressionPtr ReadAmong(const Element& parent, std::optional<DataType> type);
    ExpressionPtr Read(const Element& element, std::optional<DataType> type);
    ExpressionPtr ReadConstant(const Element& element, std::optional<DataType> type);
    ExpressionPtr ReadField(const Element& element, const XMLCh* attribute);
    ExpressionPtr ReadNumericField(const Element& element);
    ExpressionPtr ReadFieldRef(const Element& element);
    ExpressionPtr ReadApply(const Element& element, std::optional<DataType> type);
    ExpressionPtr ReadCall(const Element& element, Expressions arguments, TextType& ofReplacement);
    ExpressionPtr WithDefault(const Element& element, ExpressionPtr call, const TextType& ofReplacement);
    DefinedFunctions::Entry* FindDefined(const Element& element);
    ExpressionPtr ReadBuiltInCall(const Element& element, Expressions arguments, TextType& ofReplacement);
    ExpressionPtr MakeDefinedCall(const Element& element, const DefinedFunction& function, Expressions arguments,
                                  TextType& ofReplacement);
    void ReadParameters(DefinedFunctions::Entry& entry, ParameterScope& scope);
    void TypeMissingBranch(Expressions& arguments);
    void ReadDefined(DefinedFunctions::Entry& entry);
    ExpressionPtr ReadNormContinuous(const Element& element);
    ExpressionPtr ReadNormDiscrete(const Element& element);
    ExpressionPtr ReadDiscretize(const Element& element, std::optional<DataType> type);
    ExpressionPtr ReadMapValues(const Element& element, std::optional<DataType> type);
    ExpressionPtr ReadLag(const Element& element);
    ExpressionPtr ReadAggregate(const Element& element);
    ExpressionPtr ReadTextIndex(const Element& element);

    Value ReadText(const Element& element, const XMLCh* attribute, const TextType& type, std::string& text);
    double NumberOrMissing(const Element& element, const XMLCh* attribute);
    [[noreturn]] static void RaiseArguments(const Element& element, std::size_t count);
    void Count(const Element& element, std::size_t evaluations, std::size_t levels);

    FrameLayout& fLayout;
    FieldScope* fScope;
    DefinedFunctions& fFunctions;
    bool fIsInFunction = false;   ///< that the document defines
    std::size_t fEvaluations = 0; ///< of the expression that is being read, so far
    std::size_t fLevel = 0;       ///< in it, of what is being read
    std::size_t fLowest = 0;      ///< in it, the lowest level so far
};

/// The rows of an InlineTable, each with its cells by the column's name without a prefix.
std::vector<std::map<std::string, std::string>> ReadRows(const Element& parent);

/// An Interval; an end that is absent is infinite and closed.
/// @throws VTException 260120, 260285, 260153; 260175 for one without any end
Interval ReadInterval(const Element& element);

} // namespace veltrane_kit

#endif
