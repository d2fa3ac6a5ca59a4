#ifndef VELTRANE_ARROW_H
#define VELTRANE_ARROW_H

/* The two structs of the Arrow C data interface, for C and C++. They are published, so that whoever exchanges columns
   in memory declares them anew, once in a program under the guard below. */
#ifndef ARROW_C_DATA_INTERFACE
#define ARROW_C_DATA_INTERFACE

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define ARROW_FLAG_DICTIONARY_ORDERED 1
#define ARROW_FLAG_NULLABLE 2
#define ARROW_FLAG_MAP_KEYS_SORTED 4

/** The type of an array. Who gets one releases it: by `release`, once, unless that is null. */
struct ArrowSchema {
    const char* format;
    const char* name;
    const char* metadata;
    int64_t flags;
    int64_t n_children;
    struct ArrowSchema** children;
    struct ArrowSchema* dictionary;
    void (*release)(struct ArrowSchema* schema);
    void* private_data;
};

/** The values of an array. Who gets one releases it, as a schema. */
struct ArrowArray {
    int64_t length;
    int64_t null_count;
    int64_t offset;
    int64_t n_buffers;
    int64_t n_children;
    const void** buffers;
    struct ArrowArray** children;
    struct ArrowArray* dictionary;
    void (*release)(struct ArrowArray* array);
    void* private_data;
};

#ifdef __cplusplus
}
#endif

#endif

#endif
