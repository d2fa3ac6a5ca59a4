#ifndef VELTRANE_C_API_H
#define VELTRANE_C_API_H

#include <veltrane/arrow.h>

#include <stddef.h>
#include <stdint.h>

/* The columns of veltrane/document.h for C, and for whoever binds another language to it.

   Every function gives VELTRANE_OK or the number of a message of the library's catalogue, docs/messages.md, and takes
   no exception out. Results come by pointers that must not be null; a call that fails leaves them as they were, but for
   the structs of Arrow, which it marks as released. A handle is given back once, to the function that is named with it;
   null may be given back too.

   A document and its fields may be used by any thread, a state and a set of options by one at a time. */

#if defined(_WIN32)
#if defined(VELTRANE_BUILDING)
#define VELTRANE_C_API __declspec(dllexport)
#else
#define VELTRANE_C_API __declspec(dllimport)
#endif
#else
#define VELTRANE_C_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** What a call gives that didn't fail. */
#define VELTRANE_OK 0
/** Failures of C calls alone: a null pointer or a place out of range; memory that is used up; anything unforeseen. */
#define VELTRANE_NULL_POINTER 260345
#define VELTRANE_NO_SUCH_PLACE 260360
#define VELTRANE_OUT_OF_MEMORY 260361
#define VELTRANE_UNEXPECTED 260101

/** How a document is opened. */
typedef struct veltrane_options veltrane_options;
/** A document that was opened. */
typedef struct veltrane_document veltrane_document;
/** What one thread scores with. */
typedef struct veltrane_state veltrane_state;

/** The types of fields, in the order of veltrane::DataType. */
enum veltrane_type {
    VELTRANE_STRING,
    VELTRANE_BOOLEAN,
    VELTRANE_INTEGER,
    VELTRANE_FLOAT,
    VELTRANE_DOUBLE,
    VELTRANE_DATE,
    VELTRANE_TIME,
    VELTRANE_DATE_TIME,
    VELTRANE_DATE_DAYS_SINCE_0,
    VELTRANE_DATE_DAYS_SINCE_1960,
    VELTRANE_DATE_DAYS_SINCE_1970,
    VELTRANE_DATE_DAYS_SINCE_1980,
    VELTRANE_TIME_SECONDS,
    VELTRANE_DATE_TIME_SECONDS_SINCE_0,
    VELTRANE_DATE_TIME_SECONDS_SINCE_1960,
    VELTRANE_DATE_TIME_SECONDS_SINCE_1970,
    VELTRANE_DATE_TIME_SECONDS_SINCE_1980
};

/** A field of a document. The name is the document's, and lives as long as it. */
typedef struct veltrane_field {
    const char* name;      /**< ends with a NUL */
    int32_t type;          /**< a veltrane_type */
    int32_t is_needed;     /**< of an input: 1 where a batch has to have its column, else 0 */
    size_t category_count; /**< of a result whose values are all known; 0 for any other */
} veltrane_field;

/** The text of the failure of this thread's last call: "" where it didn't fail. It stays until the thread's next call
    of any function but this one. */
VELTRANE_C_API const char* veltrane_error_text(void);

/** Makes a set of options with their first values.
    @param options receives it; veltrane_options_free takes it back */
VELTRANE_C_API int32_t veltrane_options_new(veltrane_options** options);

/** Sets an option; see veltrane::DocumentOptions for what they mean.
    @param name "content" (value "automatic", "model" or "derivedFields"), "model", "modelList", "encoding",
                "wholeNumbersAsDoubles" ("true" or "false")
    @return 260342 for a name or a value that isn't one */
VELTRANE_C_API int32_t veltrane_options_set(veltrane_options* options, const char* name, const char* value);

/** Adds an option that the model is given. */
VELTRANE_C_API int32_t veltrane_options_add_model_option(veltrane_options* options, const char* name,
                                                         const char* value);
VELTRANE_C_API int32_t veltrane_options_free(veltrane_options* options);

/** Opens a document in memory, which is not kept.
    @param size     of it in bytes
    @param options  null for the first values; not kept
    @param document receives it; veltrane_document_free takes it back */
VELTRANE_C_API int32_t veltrane_document_open(const void* bytes, size_t size, const veltrane_options* options,
                                              veltrane_document** document);

/** The same for a file.
    @param path as the system takes it */
VELTRANE_C_API int32_t veltrane_document_open_file(const char* path, const veltrane_options* options,
                                                   veltrane_document** document);

/** States of the document may be used on. */
VELTRANE_C_API int32_t veltrane_document_free(veltrane_document* document);

/** How many fields are read from columns. */
VELTRANE_C_API int32_t veltrane_document_input_count(const veltrane_document* document, size_t* count);
/** @param place from 0 */
VELTRANE_C_API int32_t veltrane_document_input(const veltrane_document* document, size_t place, veltrane_field* field);

/** How many columns of results there are. */
VELTRANE_C_API int32_t veltrane_document_output_count(const veltrane_document* document, size_t* count);
VELTRANE_C_API int32_t veltrane_document_output(const veltrane_document* document, size_t place, veltrane_field* field);

/** One of the values of a result whose values are all known.
    @param output   place of the result, from 0
    @param place    of the value, from 0
    @param category receives the text, which ends with a NUL and lives as long as the document */
VELTRANE_C_API int32_t veltrane_document_category(const veltrane_document* document, size_t output, size_t place,
                                                  const char** category);

/** @param schema receives the schema of a struct of all inputs, or of all results; the caller releases it */
VELTRANE_C_API int32_t veltrane_document_input_schema(const veltrane_document* document, struct ArrowSchema* schema);
VELTRANE_C_API int32_t veltrane_document_output_schema(const veltrane_document* document, struct ArrowSchema* schema);

/** @param needs_order receives 1 where all rows have to come through one state, in their order, else 0 */
VELTRANE_C_API int32_t veltrane_document_needs_order(const veltrane_document* document, int32_t* needs_order);

/** Makes what a thread scores with.
    @param state receives it; veltrane_state_free takes it back, before or after the document */
VELTRANE_C_API int32_t veltrane_state_new(const veltrane_document* document, veltrane_state** state);
VELTRANE_C_API int32_t veltrane_state_free(veltrane_state* state);

/** Scores a batch of rows, see veltrane::Document::Score.
    @param state  says which document
    @param array  a struct with a child for each column. It is consumed, whether the call fails or not: its release
                  callback is called once and it is marked as released
    @param schema that of `array`; it stays the caller's
    @param results receives a struct with a child for each result; the caller releases it
    @param result_schema receives the schema of the results, which the caller releases; null where nobody asks */
VELTRANE_C_API int32_t veltrane_score(veltrane_state* state, struct ArrowArray* array, const struct ArrowSchema* schema,
                                      struct ArrowArray* results, struct ArrowSchema* result_schema);

#ifdef __cplusplus
}
#endif

#endif
