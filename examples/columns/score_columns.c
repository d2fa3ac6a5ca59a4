#include <veltrane.h>

#include <stdio.h>

/* All columns are this program's own. */
static void Keep(struct ArrowArray* array) {
    array->release = NULL;
}

/* The prices of three flats, the area of one of which isn't known. Argument: the document. */
int main(int argc, char** argv) {
    const double areas[] = {62, 0, 118.5}, rooms[] = {2, 3, 4};
    const unsigned char known = 5; /* the second area is a null */
    const void *areaBuffers[] = {&known, areas}, *roomBuffers[] = {NULL, rooms}, *noBuffers[] = {NULL};
    struct ArrowArray columns[] = {{3, 1, 0, 2, 0, areaBuffers, NULL, NULL, Keep, NULL},
                                   {3, 0, 0, 2, 0, roomBuffers, NULL, NULL, Keep, NULL}};
    struct ArrowArray *list[] = {&columns[0], &columns[1]}, results;
    struct ArrowArray batch = {3, 0, 0, 1, 2, noBuffers, list, NULL, Keep, NULL};
    struct ArrowSchema type;
    veltrane_document* document = NULL;
    veltrane_state* state = NULL; /* one for each thread */
    if (veltrane_document_open_file(argc == 2 ? argv[1] : "", NULL, &document) ||
        veltrane_state_new(document, &state) || veltrane_document_input_schema(document, &type) ||
        veltrane_score(state, &batch, &type, &results, NULL)) { /* takes the batch */
        fprintf(stderr, "%s\n", veltrane_error_text());
        return 1;
    }
    const double* prices = results.children[0]->buffers[1];
    printf("%g, %g; %d missing\n", prices[0], prices[2], (int)results.children[0]->null_count);
    results.release(&results);
    type.release(&type);
    veltrane_state_free(state);
    return veltrane_document_free(document);
}
