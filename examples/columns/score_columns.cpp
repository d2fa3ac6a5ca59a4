#include <veltrane.h>

#include <iostream>

// The prices of three flats, the area of one of which isn't known. Argument: the document.
int main(int argc, char** argv) try {
    const veltrane::Document document = veltrane::Document::OfFile(argc == 2 ? argv[1] : "");
    veltrane::Document::State state = document.NewState(); // one for each thread
    const double areas[] = {62, 0, 118.5}, rooms[] = {2, 3, 4};
    const unsigned char known = 0b101; // the second area is a null
    const void *areaBuffers[] = {&known, areas}, *roomBuffers[] = {nullptr, rooms}, *noBuffers[] = {nullptr};
    const auto keep = [](ArrowArray* array) { array->release = nullptr; }; // all columns are this program's own
    ArrowArray columns[] = {{3, 1, 0, 2, 0, areaBuffers, nullptr, nullptr, keep, nullptr},
                            {3, 0, 0, 2, 0, roomBuffers, nullptr, nullptr, keep, nullptr}};
    ArrowArray *list[] = {&columns[0], &columns[1]}, batch{3, 0, 0, 1, 2, noBuffers, list, nullptr, keep, nullptr};
    ArrowArray results;
    ArrowSchema type;
    document.InputSchema(&type);                    // columns of all fields, in the types that take no conversion
    document.Score(&batch, &type, state, &results); // takes the batch
    const auto* prices = static_cast<const double*>(results.children[0]->buffers[1]);
    std::cout << prices[0] << ", " << prices[2] << "; " << results.children[0]->null_count << " missing\n";
    results.release(&results);
    type.release(&type);
} catch (const MCVeltrane_900::VTException& failure) {
    std::cerr << failure.GetErrorCode() << ": " << failure.GetErrorMessage() << '\n';
    return 1;
}
