#include "plain/plain_document.h"

#include "documents/document_writer.h"

#include <xercesc/sax2/Attributes.hpp>

#include <charconv>
#include <istream>
#include <set>
#include <utility>

namespace veltrane::host {
namespace {

constexpr std::size_t kPartLevel = 2;  ///< of dictionaries and models
constexpr std::size_t kFieldLevel = 3; ///< of derived fields and mining schemas
constexpr std::u16string_view kDictionary = u"DataDictionary";
constexpr std::u16string_view kDerivedFields = u"TransformationDictionary";
constexpr std::u16string_view kDerivedField = u"DerivedField";
constexpr std::u16string_view kMiningSchema = u"MiningSchema";
constexpr std::u16string_view kDataField = u"DataField";
constexpr std::u16string_view kMiningField = u"MiningField";
constexpr std::u16string_view kValue = u"Value";

/// What a derived field says of its values.
struct DerivedField {
    std::u16string name;
    std::u16string type;  ///< empty where it isn't stated
    std::u16string level; ///< the same
    std::vector<std::u16string> values;
};

/// Documents of old versions leave it out.
std::u16string LevelOf(const DerivedField& field) {
    const bool holdsTexts = field.type == u"string" || field.type == u"boolean";
    return !field.level.empty() ? field.level : holdsTexts ? u"categorical" : u"continuous";
}

std::u16string Attribute(const xercesc::Attributes& attributes, const XMLCh* name) {
    const XMLCh* value = attributes.getValue(name);
    return value == nullptr ? std::u16string() : value;
}

/// Finds the derived fields of a document, and what a model mentions by any attribute.
class PlainReader : public BoundedHandlers {
public:
    explicit PlainReader(std::size_t place) : fPlace(place) {}

    bool HasFields() const { return !fFields.empty(); }

    /// The derived fields that the model may refer to.
    std::vector<DerivedField> Mentioned() const {
        std::vector<DerivedField> mentioned;
        for (const DerivedField& field : fFields) {
            if (fWords.contains(field.name)) {
                mentioned.push_back(field);
            }
        }
        return mentioned;
    }

protected:
    void OnElement(const XMLCh* name, const xercesc::Attributes& attributes) override {
        if (Depth() == kPartLevel) {
            fPart = name;
            fInModel = IsModelElement(name) && fModels++ == fPlace;
        }
        if (fInModel) {
            for (XMLSize_t at = 0; at < attributes.getLength(); ++at) {
                fWords.insert(attributes.getValue(at));
            }
        } else if (fPart == kDerivedFields && Depth() == kFieldLevel && kDerivedField == name) {
            fFields.push_back({Attribute(attributes, u"name"),
                               Attribute(attributes, u"dataType"),
                               Attribute(attributes, u"optype"),
                               {}});
        } else if (fPart == kDerivedFields && Depth() == kFieldLevel + 1 && kValue == name && !fFields.empty()) {
            fFields.back().values.push_back(Attribute(attributes, u"value"));
        }
    }

    void OnEnd(const std::optional<DocumentFault>&) override {}

private:
    std::size_t fPlace;
    std::size_t fModels = 0;
    bool fInModel = false;
    std::u16string fPart; ///< the child of the root that is open
    std::vector<DerivedField> fFields;
    std::set<std::u16string> fWords;
};

class PlainWriter : public DocumentWriter {
public:
    PlainWriter(std::vector<DerivedField> fields, std::size_t place) : fFields(std::move(fields)), fPlace(place) {}

protected:
    bool Begin(std::u16string_view name, Attributes& attributes) override {
        if (Depth() == kPartLevel) {
            fPart = name;
            fInModel = IsModelElement(name) && fModels++ == fPlace;
            if (fPart == kDictionary) {
                CountFields(attributes);
            }
        }
        return Depth() != kFieldLevel || fPart != kDerivedFields || name != kDerivedField;
    }

    void End(std::u16string_view name) override {
        if (Depth() == kPartLevel && name == kDictionary) {
            for (const DerivedField& field : fFields) {
                WriteDataField(field);
            }
        } else if (Depth() == kFieldLevel && fInModel && name == kMiningSchema) {
            for (const DerivedField& field : fFields) {
                WriteStart(kMiningField, {{u"name", field.name}, {u"invalidValueTreatment", u"asIs"}});
                WriteEnd(kMiningField);
            }
        }
    }

private:
    void CountFields(Attributes& attributes) const {
        for (auto& [name, value] : attributes) {
            if (name != u"numberOfFields") {
                continue;
            }
            const std::string told = Utf8(value);
            std::size_t count = 0;
            if (std::from_chars(told.data(), told.data() + told.size(), count).ptr == told.data() + told.size()) {
                const std::string sum = std::to_string(count + fFields.size());
                value.assign(sum.begin(), sum.end());
            }
        }
    }

    /// The order of ordinal values is what their field lists; otherwise a derived field may have any.
    void WriteDataField(const DerivedField& field) {
        const bool isOrdinal = field.level == u"ordinal";
        Attributes attributes{{u"name", field.name}};
        attributes.emplace_back(u"optype", LevelOf(field));
        if (!field.type.empty()) {
            attributes.emplace_back(u"dataType", field.type);
        }
        WriteStart(kDataField, attributes);
        for (const std::u16string& value : field.values) {
            if (isOrdinal) {
                WriteStart(kValue, {{u"value", value}});
                WriteEnd(kValue);
            }
        }
        WriteEnd(kDataField);
    }

    std::vector<DerivedField> fFields;
    std::size_t fPlace;
    std::size_t fModels = 0;
    bool fInModel = false;
    std::u16string fPart;
};

} // namespace

std::optional<PlainDocument> MakePlain(std::istream& in, std::size_t place) {
    PlainReader reader(place);
    reader.Read(in);
    if (!reader.HasFields()) {
        return std::nullopt;
    }
    in.clear();
    in.seekg(0);
    const std::vector<DerivedField> mentioned = reader.Mentioned();
    PlainWriter writer(mentioned, place);
    writer.Read(in);
    PlainDocument document{writer.Text(), {}};
    for (const DerivedField& field : mentioned) {
        document.fields.push_back(Utf8(field.name));
    }
    return document;
}

} // namespace veltrane::host
