#!/bin/sh
# Compiles every public header alone. Arguments: the compiler, the include folder.
set -u
compiler=$1
folder=$2
status=0
for header in $(cd "$folder" && find . -name '*.h' | sed 's|^\./||' | sort); do
    printf '#include <%s>\n' "$header" |
        "$compiler" -std=c++20 -Wall -Wextra -Werror -I"$folder" -fsyntax-only -x c++ - || {
        echo "does not compile alone: $header"
        status=1
    }
done
exit $status
