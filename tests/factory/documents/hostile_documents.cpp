#include "factory/documents/hostile_documents.h"

#include "factory/entries/factory_support.h"

namespace veltrane::tests {

namespace {

const std::string kNet = "http://127.0.0.1:9/x";

std::string WithDoctype(const std::string& internal, const std::string& document = "<PMML/>") {
    return "<!DOCTYPE PMML [" + internal + "]>" + document;
}

/// Entities e0 to eN, each of which stands `width` times in the next.
std::string Nested(const std::string& leaf, int levels, std::size_t width) {
    std::string declared = "<!ENTITY e0 \"" + leaf + "\">";
    for (int i = 1; i <= levels; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        declared += "<!ENTITY e" + std::to_string(i) + " \"" + Repeat(inner, width) + "\">";
    }
    return declared;
}

/// The same with parameter entities, which the internal subset only lets refer to each other in disguise.
std::string NestedParameters(const std::string& leaf) {
    std::string declared = "<!ENTITY % p0 \"" + leaf + "\">";
    for (int i = 1; i <= 9; ++i) {
        const std::string inner = "&#37;p" + std::to_string(i - 1) + ";";
        declared += "<!ENTITY % p" + std::to_string(i) + " \"" + Repeat(inner, 10) + "\">";
    }
    return declared + "%p9;";
}

template <typename Item>
std::string Numbered(int count, Item item) {
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += item(std::to_string(i));
    }
    return result;
}

std::string Entity(const std::string& value) {
    return "<!ENTITY a \"" + value + "\">";
}

} // namespace

const std::vector<HostileDocument>& HostileDocuments() {
    static const std::vector<HostileDocument> documents = {
        {"NestedDeep", true, [] { return Repeat("<a>", 100000) + Repeat("</a>", 100000); }},
        {"NestedDeepAndOpen", true, [] { return Repeat("<PMML>", 100000); }},
        {"NestedDeepByEntities", true, [] { return WithDoctype(Nested("x", 4000, 1), "<PMML>&e4000;</PMML>"); }},
        {"NestedDeepByEntitiesInAnAttribute", true,
         [] { return WithDoctype(Nested("x", 4000, 1), "<PMML a='&e4000;'/>"); }},
        {"NestedDeepContentModel", true,
         [] { return WithDoctype("<!ELEMENT PMML " + Repeat("(a,", 100000) + "a" + Repeat(")", 100000) + ">"); }},

        {"EntityBomb", true, [] { return WithDoctype(Nested("lol", 9, 10), "<PMML>&e9;</PMML>"); }},
        {"EntityBombOfNothing", true, [] { return WithDoctype(Nested("", 9, 10), "<PMML>&e9;</PMML>"); }},
        {"EntityBombInAnAttribute", true, [] { return WithDoctype(Nested("lol", 9, 10), "<PMML a='&e9;'/>"); }},
        {"EntityBombInADefault", true,
         [] { return WithDoctype(Nested("lol", 9, 10) + "<!ATTLIST PMML a CDATA '&e9;'>"); }},
        {"EntityBombOfNothingInADefault", true,
         [] { return WithDoctype(Nested("", 9, 10) + "<!ATTLIST PMML a CDATA '&e9;'>"); }},
        {"EntityOfItself", true, [] { return WithDoctype(Entity("&a;"), "<PMML>&a;</PMML>"); }},
        {"ParameterBomb", true, [] { return WithDoctype(NestedParameters("<!--x-->")); }},
        {"ParameterBombOfNothing", true, [] { return WithDoctype(NestedParameters("")); }},

        {"QuadraticBlowUp", true,
         [] { return WithDoctype(Entity(Repeat("a", 100000)), "<PMML>" + Repeat("&a;", 100000) + "</PMML>"); }},
        {"QuadraticBlowUpInAnAttribute", true,
         [] { return WithDoctype(Entity(Repeat("a", 100000)), "<PMML a='" + Repeat("&a;", 100000) + "'/>"); }},
        {"QuadraticBlowUpJustWithinTheLength", true,
         [] { return WithDoctype(Entity(Repeat("a", 4096)), "<PMML>" + Repeat("&a;", 100000) + "</PMML>"); }},
        {"QuadraticBlowUpJustWithinTheBounds", false,
         [] { return WithDoctype(Entity(Repeat("a", 4096)), "<PMML>" + Repeat("&a;", 4900) + "</PMML>"); }},
        {"QuadraticBlowUpOfElements", true,
         [] { return WithDoctype(Entity(Repeat("<a/>", 1024)), "<PMML>" + Repeat("&a;", 4900) + "</PMML>"); }},
        {"QuadraticBlowUpInADefault", true,
         [] {
             return WithDoctype(Entity(Repeat("a", 4096)) + "<!ATTLIST PMML a CDATA '" + Repeat("&a;", 300000) + "'>");
         }},
        {"QuadraticBlowUpOfParameters", true,
         [] { return WithDoctype("<!ENTITY % a '" + Repeat(" ", 4096) + "'>" + Repeat("%a;", 300000)); }},
        {"LongDefaultInManyElements", true,
         [] {
             return WithDoctype("<!ATTLIST a b CDATA '" + Repeat("b", 100000) + "'>",
                                "<PMML>" + Repeat("<a/>", 200000) + "</PMML>");
         }},
        {"ManyDefaultsInManyElements", true,
         [] {
             return WithDoctype("<!ATTLIST a " + Numbered(20000, [](auto i) { return "b" + i + " CDATA '' "; }) + ">",
                                "<PMML>" + Repeat("<a/>", 200000) + "</PMML>");
         }},
        {"ManyLists", true,
         [] { return WithDoctype(Numbered(30000, [](auto i) { return "<!ATTLIST a b" + i + " CDATA ''>"; })); }},

        {"ManyNames", true,
         [] { return "<PMML>" + Numbered(150000, [](auto i) { return "<a" + i + "/>"; }) + "</PMML>"; }},
        {"ManyAttributes", true,
         [] { return "<PMML " + Numbered(90000, [](auto i) { return "a" + i + "='' "; }) + "/>"; }},
        {"ManyElements", false, [] { return "<PMML>" + Repeat("<a/>", 250000) + "</PMML>"; }},
        {"ManyElementsWithAnAttribute", false, [] { return "<PMML>" + Repeat("<a b=''/>", 100000) + "</PMML>"; }},
        {"ManyEntities", false,
         [] { return WithDoctype(Numbered(30000, [](auto i) { return "<!ENTITY a" + i + " ''>"; })); }},
        {"LongContentModel", false, [] { return WithDoctype("<!ELEMENT PMML (a" + Repeat(",a", 200000) + ")>"); }},
        {"LongName", false, [] { return "<PMML><" + Repeat("a", 1000000) + "/></PMML>"; }},
        {"LongText", false,
         [] { return "<PMML a='" + Repeat("a", 1000000) + "'>" + Repeat("a", 1000000) + "</PMML>"; }},

        {"ManyTextsOfReferences", false,
         [] { return "<PMML>" + Repeat("<a>" + Repeat("&quot;a name&quot; ", 25) + "</a>", 20000) + "</PMML>"; }},

        {"ExternalEntity", true,
         [] { return WithDoctype("<!ENTITY a SYSTEM 'file:///etc/hostname'>", "<PMML>&a;</PMML>"); }},
        {"ExternalEntityByPath", true,
         [] { return WithDoctype("<!ENTITY a SYSTEM '/etc/hostname'>", "<PMML>&a;</PMML>"); }},
        {"ExternalEntityOnTheNetwork", true,
         [] { return WithDoctype("<!ENTITY a SYSTEM '" + kNet + "'>", "<PMML>&a;</PMML>"); }},
        {"ExternalEntityInAnAttribute", true,
         [] { return WithDoctype("<!ENTITY a SYSTEM '/etc/hostname'>", "<PMML b='&a;'/>"); }},
        {"ExternalParameter", true, [] { return WithDoctype("<!ENTITY % a SYSTEM 'file:///etc/hostname'>%a;"); }},
        {"ExternalParameterOnTheNetwork", true, [] { return WithDoctype("<!ENTITY % a SYSTEM '" + kNet + "'>%a;"); }},
    };
    return documents;
}

} // namespace veltrane::tests
