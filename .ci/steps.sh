# The steps of .ci/run, each a function; a step fails with its first failing command.
# shellcheck shell=bash

all_steps=(setup test standard structure format asan tsan tidy install deb docs fuzz)
# Run where they are named only.
other_steps=()

jobs=$(nproc)
python=/usr/bin/python3
suppressions=$PWD/tests/suppressions
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
export CTEST_OUTPUT_ON_FAILURE=1
export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1
export LSAN_OPTIONS=suppressions=$suppressions/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
export TSAN_OPTIONS=suppressions=$suppressions/tsan.supp:halt_on_error=1

configure_and_build() { # preset, targets...
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" -j "$jobs" ${1+--target "$@"}
}

# Runs a command that ends with a call of ctest and hands its last arguments on; counts the tests inside the programs.
with_counts() { # command...
    local junit=$CI_RESULTS/$CI_STEP.xml code=0
    "$@" "--output-junit $junit --test-output-size-passed 1000000 --test-output-size-failed 1000000" || code=$?
    "$python" .ci/count_tests.py "$junit" "$CI_RESULTS/$CI_STEP.counts" "$CI_RESULTS/$CI_STEP.skipped" || return 1
    return "$code"
}

ctest_preset() { # preset, arguments of ctest in one word
    # shellcheck disable=SC2086
    ctest --preset "$1" -j "$jobs" $2
}

step_setup() { tools/setup.sh ci; }

# The compiler's warnings are errors here and in the steps asan and tsan, which build with clang++.
make_test() { make test CTEST_FLAGS="$1"; }
step_test() {
    cmake --preset release -DVELTRANE_WERROR=ON >/dev/null
    with_counts make_test
}

# Random documents of the time at hand against the evaluator of the standard, with what the step before has built; the
# classes that ctest knows as open are left out.
step_standard() {
    configure_and_build release veltrane_host veltrane_plugins
    "$python" tests/standard/compare.py "${STANDARD_SEED:-$(date +%s)}" --rows 200 --fresh "${STANDARD_SECONDS:-60}"
}

step_structure() {
    "$python" tests/structure/public_headers.py
    "$python" tests/structure/dependencies.py
    tests/structure/headers_alone.sh g++ include
    tests/structure/headers_alone.sh clang++ include
}

step_format() { git ls-files '*.h' '*.cpp' | xargs clang-format-16 --dry-run --Werror; }

# Every program runs once, its tests in an order that changes from commit to commit.
step_asan() {
    configure_and_build asan
    GTEST_SHUFFLE=1 GTEST_RANDOM_SEED=$(($(git rev-list --count HEAD) % 99999)) with_counts ctest_preset asan
}

# The preset builds only what has tests with threads.
step_tsan() {
    configure_and_build tsan
    GTEST_FILTER='*Threads*' with_counts ctest_preset tsan
}

# The files that the newest changes touch, and those that include a header that they touch; CI_BASE names another base.
step_tidy() {
    local base=${CI_BASE:-} sources
    [ -n "$base" ] || base=$(git rev-list --max-count=20 HEAD | tail -n 1)
    cmake --preset clang >/dev/null
    sources=$(git diff --name-only --diff-filter=d "$base" HEAD | .ci/changed_sources.py)
    echo "$(wc -w <<<"$sources") sources to check since $base"
    xargs -r -P "$jobs" -n 2 clang-tidy -p build/clang --quiet <<<"$sources"
}

# Builds the example of a plug-in from a copy of its folder against the installed library, and scores with it.
check_plugin_example() { # folder that holds the installed library
    cp -r examples/plugin "$1/plugin"
    cmake -S "$1/plugin" -B "$1/plugin/build" -G Ninja -DCMAKE_PREFIX_PATH="$1/veltrane" >/dev/null
    cmake --build "$1/plugin/build"
    (cd "$1/plugin" && LD_LIBRARY_PATH=build "$1/veltrane/bin/veltrane" score grades.pmml grades.csv --models models.txt) |
        diff - "$1/plugin/grades.expected.csv"
    (cd "$1/plugin" && LD_LIBRARY_PATH=build "$1/veltrane/bin/veltrane" score grades.pmml grades.csv --models models.txt \
        --option rounded=true) | diff - "$1/plugin/grades.expected.csv"
    # The reference plug-ins are found where they were installed, by the list that was installed with them.
    "$1/veltrane/bin/veltrane" score examples/loan/default.pmml examples/loan/applicants.csv --missing NA --quiet \
        >"$1/default.csv" 2>/dev/null || [ $? -eq 3 ]
    diff "$1/default.csv" examples/loan/default.expected.csv
}

# Builds and runs the consumer outside the tree by pkg-config, which finds everything beside the file veltrane.pc.
check_pkg_config() { # folder that holds the installed library, scratch folder
    local pc
    pc=$(dirname "$(find "$1" -name veltrane.pc)")
    (
        export PKG_CONFIG_PATH=$pc
        # shellcheck disable=SC2046
        g++ -std=c++20 tests/consumer/main.cpp -o "$2/by_pkg_config" $(pkg-config --cflags --libs veltrane) \
            -Wl,-rpath,"$(pkg-config --variable=libdir veltrane)"
        "$2/by_pkg_config" "$(pkg-config --variable=modellist veltrane)"
    )
}

# Installs into a folder and moves it elsewhere, since all of it may be moved; then builds and runs a project outside the
# tree against it, by CMake and by pkg-config.
step_install() {
    local place
    place=$(mktemp -d)
    make install PREFIX="$place/first"
    mv "$place/first" "$place/veltrane"
    cp -r tests/consumer "$place/consumer"
    cmake -S "$place/consumer" -B "$place/build" -G Ninja -DCMAKE_PREFIX_PATH="$place/veltrane" >/dev/null
    cmake --build "$place/build"
    "$place/build/consumer" "$(cat "$place/build/model_list")"
    check_pkg_config "$place/veltrane" "$place"
    check_plugin_example "$place"
    mandoc -T lint -W warning "$place/veltrane/share/man/man1/veltrane.1"
    bash -n "$place/veltrane/share/bash-completion/completions/veltrane"
    zsh -n "$place/veltrane/share/zsh/site-functions/_veltrane"
    rm -rf "$place"
}

# Builds the Debian packages, and uses them in a root that has nothing else.
step_deb() {
    make deb
    tests/packages/clean_root.sh build/deb
}

step_docs() { make docs; }

step_fuzz() {
    configure_and_build fuzz
    find build/fuzz/bin -name '*_fuzz' -type f | sort |
        xargs -P "$jobs" -I{} fuzz/run_target.sh {} "${FUZZ_SECONDS:-40}"
}
