/* The columns from C: every function, what it gives, and what it fails with. The program's argument is a list of models
   with the plug-ins of the tests. */
#include <veltrane.h>

#include <stdio.h>
#include <string.h>

static int gFaults = 0;

static void Check(int isTrue, const char* what, int line) {
    if (!isTrue) {
        ++gFaults;
        printf("line %d: %s (error: %s)\n", line, what, veltrane_error_text());
    }
}

#define CHECK(condition) Check((condition) ? 1 : 0, #condition, __LINE__)

static const char kDocument[] =
    "<PMML version='4.4'><DataDictionary><DataField name='x' optype='continuous' dataType='double'/>"
    "<DataField name='c' optype='categorical' dataType='string' values='red blue' needed='no'/>"
    "</DataDictionary><EchoModel/></PMML>";

/* A column of doubles with its schema, and how often its callback was called. */
static double gNumbers[] = {1.5, -2};
static const void* gBuffers[] = {NULL, gNumbers};
static const void* gNoBuffers[] = {NULL};
static struct ArrowArray gColumn;
static struct ArrowArray* gColumns[] = {&gColumn};
static struct ArrowSchema gType;
static struct ArrowSchema* gTypes[] = {&gType};
static int gReleased = 0;

static void ReleaseArray(struct ArrowArray* array) {
    ++gReleased;
    array->release = NULL;
}

/* Of a producer that leaves its array as it is. */
static void ReleaseAndForgetToSay(struct ArrowArray* array) {
    (void)array;
    ++gReleased;
}

static void ReleaseSchema(struct ArrowSchema* schema) {
    schema->release = NULL;
}

static void MakeBatch(struct ArrowArray* array, struct ArrowSchema* schema) {
    memset(&gColumn, 0, sizeof(gColumn));
    gColumn.length = 2;
    gColumn.n_buffers = 2;
    gColumn.buffers = gBuffers;
    gColumn.release = ReleaseArray;
    memset(&gType, 0, sizeof(gType));
    gType.format = "g";
    gType.name = "x";
    gType.release = ReleaseSchema;
    memset(array, 0, sizeof(*array));
    array->length = 2;
    array->n_buffers = 1;
    array->buffers = gNoBuffers;
    array->n_children = 1;
    array->children = gColumns;
    array->release = ReleaseArray;
    memset(schema, 0, sizeof(*schema));
    schema->format = "+s";
    schema->n_children = 1;
    schema->children = gTypes;
    schema->release = ReleaseSchema;
    gReleased = 0;
}

static veltrane_options* Options(const char* models) {
    veltrane_options* options = NULL;
    CHECK(veltrane_options_new(&options) == VELTRANE_OK);
    CHECK(veltrane_options_set(options, "modelList", models) == VELTRANE_OK);
    CHECK(veltrane_options_set(options, "content", "model") == VELTRANE_OK);
    CHECK(veltrane_options_set(options, "content", "derivedFields") == VELTRANE_OK);
    CHECK(veltrane_options_set(options, "content", "automatic") == VELTRANE_OK);
    CHECK(veltrane_options_set(options, "encoding", "UTF-8") == VELTRANE_OK);
    CHECK(veltrane_options_set(options, "model", "1") == VELTRANE_OK);
    CHECK(veltrane_options_set(options, "wholeNumbersAsDoubles", "true") == VELTRANE_OK);
    CHECK(veltrane_options_set(options, "wholeNumbersAsDoubles", "false") == VELTRANE_OK);
    CHECK(veltrane_options_add_model_option(options, "factor", "2") == VELTRANE_OK);
    CHECK(veltrane_options_set(options, "wholeNumbersAsDoubles", "perhaps") == 260342);
    CHECK(strcmp(veltrane_error_text(), "There is no option 'wholeNumbersAsDoubles' that takes the value 'perhaps'.") ==
          0);
    CHECK(veltrane_options_set(options, "content", "all") == 260342);
    CHECK(veltrane_options_set(options, "colour", "red") == 260342);
    CHECK(veltrane_options_set(NULL, "model", "1") == VELTRANE_NULL_POINTER);
    CHECK(strcmp(veltrane_error_text(), "The argument 'options' is null.") == 0);
    CHECK(veltrane_options_set(options, NULL, "1") == VELTRANE_NULL_POINTER);
    CHECK(veltrane_options_set(options, "model", NULL) == VELTRANE_NULL_POINTER);
    CHECK(veltrane_options_add_model_option(NULL, "a", "b") == VELTRANE_NULL_POINTER);
    CHECK(veltrane_options_new(NULL) == VELTRANE_NULL_POINTER);
    return options;
}

static void CheckFields(const veltrane_document* document) {
    size_t count = 0;
    int32_t needsOrder = 7;
    veltrane_field field;
    const char* category = NULL;
    struct ArrowSchema schema;
    CHECK(veltrane_document_input_count(document, &count) == VELTRANE_OK && count == 2);
    CHECK(veltrane_document_input(document, 0, &field) == VELTRANE_OK);
    CHECK(strcmp(field.name, "x") == 0 && field.type == VELTRANE_DOUBLE && field.is_needed == 1);
    CHECK(veltrane_document_input(document, 1, &field) == VELTRANE_OK && field.is_needed == 0);
    CHECK(veltrane_document_input(document, 2, &field) == VELTRANE_NO_SUCH_PLACE);
    CHECK(strcmp(veltrane_error_text(), "There is no place '2' among '2' 'inputs'.") == 0);
    CHECK(veltrane_document_output_count(document, &count) == VELTRANE_OK && count == 6);
    CHECK(veltrane_document_output(document, 3, &field) == VELTRANE_OK);
    CHECK(strcmp(field.name, "c") == 0 && field.type == VELTRANE_STRING && field.category_count == 2);
    CHECK(veltrane_document_output(document, 6, &field) == VELTRANE_NO_SUCH_PLACE);
    CHECK(veltrane_document_category(document, 3, 1, &category) == VELTRANE_OK && strcmp(category, "blue") == 0);
    CHECK(veltrane_document_category(document, 3, 2, &category) == VELTRANE_NO_SUCH_PLACE);
    CHECK(veltrane_document_needs_order(document, &needsOrder) == VELTRANE_OK && needsOrder == 0);
    CHECK(veltrane_document_input_schema(document, &schema) == VELTRANE_OK && schema.n_children == 2);
    schema.release(&schema);
    CHECK(veltrane_document_output_schema(document, &schema) == VELTRANE_OK && schema.n_children == 6);
    schema.release(&schema);
    CHECK(veltrane_document_output_schema(NULL, &schema) == VELTRANE_NULL_POINTER && schema.release == NULL);
    CHECK(veltrane_document_input_schema(document, NULL) == VELTRANE_NULL_POINTER);
    CHECK(veltrane_document_input(document, 0, NULL) == VELTRANE_NULL_POINTER);
    CHECK(veltrane_document_input_count(NULL, &count) == VELTRANE_NULL_POINTER);
    CHECK(veltrane_document_output_count(document, NULL) == VELTRANE_NULL_POINTER);
    CHECK(veltrane_document_needs_order(document, NULL) == VELTRANE_NULL_POINTER);
}

static void CheckScores(veltrane_state* state) {
    struct ArrowArray array;
    struct ArrowArray results;
    struct ArrowSchema schema;
    struct ArrowSchema types;
    MakeBatch(&array, &schema);
    CHECK(veltrane_score(state, &array, &schema, &results, &types) == VELTRANE_OK);
    CHECK(gReleased == 1 && array.release == NULL && schema.release != NULL);
    CHECK(results.length == 2 && results.n_children == 6 && types.n_children == 6);
    CHECK(strcmp(types.children[0]->format, "g") == 0);
    CHECK(((const double*)results.children[0]->buffers[1])[0] == 3);
    CHECK(((const double*)results.children[0]->buffers[1])[1] == -4);
    CHECK(results.children[3]->null_count == 2);
    results.release(&results);
    types.release(&types);

    MakeBatch(&array, &schema);
    CHECK(veltrane_score(state, &array, &schema, &results, NULL) == VELTRANE_OK);
    results.release(&results);

    MakeBatch(&array, &schema);
    gType.format = "u";
    CHECK(veltrane_score(state, &array, &schema, &results, &types) == 260353);
    CHECK(strcmp(veltrane_error_text(),
                 "The column 'x' has the format 'u', which a field of type 'double' does not take.") == 0);
    CHECK(gReleased == 1 && results.release == NULL && types.release == NULL);

    MakeBatch(&array, &schema);
    CHECK(veltrane_score(NULL, &array, &schema, &results, &types) == VELTRANE_NULL_POINTER);
    CHECK(gReleased == 1 && array.release == NULL && results.release == NULL && types.release == NULL);

    /* Whoever hands over finds it marked as released, whatever the callback says. */
    MakeBatch(&array, &schema);
    array.release = ReleaseAndForgetToSay;
    CHECK(veltrane_score(NULL, &array, &schema, &results, &types) == VELTRANE_NULL_POINTER);
    CHECK(gReleased == 1 && array.release == NULL);
    MakeBatch(&array, &schema);
    array.release = ReleaseAndForgetToSay;
    CHECK(veltrane_score(state, &array, &schema, &results, NULL) == VELTRANE_OK);
    CHECK(gReleased == 1 && array.release == NULL);
    results.release(&results);

    MakeBatch(&array, &schema);
    CHECK(veltrane_score(NULL, NULL, NULL, NULL, NULL) == VELTRANE_NULL_POINTER);
    CHECK(veltrane_score(state, NULL, &schema, &results, NULL) == VELTRANE_NULL_POINTER);
}

static void CheckFailures(const veltrane_options* options) {
    static const char kForeign[] = "<PMML version='4.4'><DataDictionary/><EchoModel fault='foreign'/></PMML>";
    veltrane_document* document = NULL;
    CHECK(veltrane_document_open("<PMML>", 6, options, &document) == 260105 && document == NULL);
    CHECK(strlen(veltrane_error_text()) > 0);
    CHECK(veltrane_document_open(kForeign, strlen(kForeign), options, &document) == VELTRANE_UNEXPECTED);
    CHECK(strcmp(veltrane_error_text(), "Unexpected error.") == 0);
    CHECK(veltrane_document_open(NULL, 6, options, &document) == VELTRANE_NULL_POINTER);
    CHECK(veltrane_document_open("", 0, options, NULL) == VELTRANE_NULL_POINTER);
    CHECK(veltrane_document_open_file(NULL, options, &document) == VELTRANE_NULL_POINTER);
    CHECK(veltrane_document_open_file("/nowhere.pmml", options, &document) == 260104);
    CHECK(veltrane_state_new(NULL, NULL) == VELTRANE_NULL_POINTER);
    CHECK(document == NULL);
}

int main(int argc, char** argv) {
    veltrane_document* document = NULL;
    veltrane_state* state = NULL;
    veltrane_options* options = Options(argc > 1 ? argv[1] : "");
    CheckFailures(options);
    CHECK(veltrane_document_open(kDocument, strlen(kDocument), options, &document) == VELTRANE_OK);
    CHECK(strcmp(veltrane_error_text(), "") == 0);
    CheckFields(document);
    CHECK(veltrane_state_new(document, &state) == VELTRANE_OK);
    CHECK(veltrane_options_free(options) == VELTRANE_OK);
    CHECK(veltrane_document_free(document) == VELTRANE_OK);
    CheckScores(state); /* a state keeps its document */
    CHECK(veltrane_state_free(state) == VELTRANE_OK);
    CHECK(veltrane_state_free(NULL) == VELTRANE_OK && veltrane_document_free(NULL) == VELTRANE_OK &&
          veltrane_options_free(NULL) == VELTRANE_OK);
    return gFaults == 0 ? 0 : 1;
}
