#!/bin/sh
# Compiles every public header alone. Arguments: the compiler, the include folder.
set -u
export compiler=$1 folder=$2
(cd "$folder" && find . -name '*.h' | sed 's|^\./||' | sort) |
    xargs -P "$(nproc)" -I{} sh -c 'echo "#include <{}>" |
        "$compiler" -std=c++20 -Wall -Wextra -Werror -I"$folder" -fsyntax-only -x c++ - || {
        echo "does not compile alone: {}"
        exit 1
    }'
