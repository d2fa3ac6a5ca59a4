# The public headers are an explicit list: what does not stand here is not installed.
# A test compares the list with the folder include/.
set(VELTRANE_PUBLIC_HEADERS
    veltrane.h
    veltrane_export.h
)
