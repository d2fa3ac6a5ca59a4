# Warnings and sanitizers for the project's own targets. Users of the library get none of them.
add_library(veltrane_options INTERFACE)
target_compile_options(veltrane_options INTERFACE -Wall -Wextra)
# A product and a sum are rounded one after the other wherever they are computed, so that results have the same bits on
# every road.
target_compile_options(veltrane_options INTERFACE -ffp-contract=off)
if(VELTRANE_WERROR)
    target_compile_options(veltrane_options INTERFACE -Werror)
endif()
if(VELTRANE_SANITIZE)
    target_compile_options(veltrane_options INTERFACE
        -fsanitize=${VELTRANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(veltrane_options INTERFACE -fsanitize=${VELTRANE_SANITIZE})
endif()
