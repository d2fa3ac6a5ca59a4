# A thin layer over the CMake presets. CONTRIBUTING.md tells how to build single targets.
jobs := $(shell nproc)
sample := examples/loan/applicants
model := examples/loan/default
export CCACHE_BASEDIR := $(CURDIR)
export CCACHE_NOHASHDIR := 1
# What is installed, and nothing beside it.
installed_alone := -DVELTRANE_BUILD_TESTS=OFF -DVELTRANE_BUILD_BENCHMARKS=OFF -DVELTRANE_BUILD_EXAMPLES=OFF

.PHONY: demo examples test install deb bench docs record-abi clean

# Builds the command, its pages and the plug-ins, which can then be installed, and runs them on the sample of
# applicants: derived fields, then predictions. One applicant doesn't say how much money is asked for, so the model has
# no prediction, which the exit code 3 tells.
demo:
	@tools/setup.sh demo
	@cmake --preset release $(installed_alone) >/dev/null
	@cmake --build --preset release -j $(jobs) --target veltrane_host veltrane_plugins veltrane_page_files
	@echo
	@echo 'build/release/bin/veltrane transform $(sample).pmml $(sample).csv --missing NA -o build/demo.csv'
	@build/release/bin/veltrane transform $(sample).pmml $(sample).csv --missing NA -o build/demo.csv
	@echo
	@awk -v rows=10 -f tools/align_csv.awk build/demo.csv
	@echo
	@echo 'build/release/bin/veltrane score $(model).pmml $(sample).csv --missing NA --keep --quiet -o build/scores.csv'
	@build/release/bin/veltrane score $(model).pmml $(sample).csv --missing NA --keep --quiet -o build/scores.csv || \
	    [ $$? -eq 3 ]
	@echo
	@awk -v rows=10 -f tools/align_csv.awk build/scores.csv

# Builds the programs that README.md prints.
examples:
	@tools/setup.sh demo
	@[ -f build/release/CMakeCache.txt ] || cmake --preset release $(installed_alone) >/dev/null
	@cmake -DVELTRANE_BUILD_EXAMPLES=ON build/release >/dev/null
	@cmake --build --preset release -j $(jobs) --target score_rows transform_rows predicates veltrane_plugins

# Builds everything and runs all tests.
test:
	@tools/setup.sh test
	@cmake --preset release -DVELTRANE_BUILD_TESTS=ON -DVELTRANE_BUILD_BENCHMARKS=ON -DVELTRANE_BUILD_EXAMPLES=ON \
	    >/dev/null
	@cmake --build --preset release -j $(jobs)
	@ctest --preset release -j $(jobs) $(CTEST_FLAGS)

# Builds what is installed and installs it. DESTDIR is put in front of PREFIX, as packagers need it.
PREFIX := /usr/local
install:
	@tools/setup.sh demo
	@[ -f build/release/CMakeCache.txt ] || cmake --preset release $(installed_alone) >/dev/null
	@cmake --build --preset release -j $(jobs) --target veltrane veltrane_host veltrane_plugins veltrane_page_files
	@cmake --install build/release --prefix $(PREFIX)

# Builds the Debian packages from the files that git has, in build/deb.
deb:
	@tools/setup.sh deb
	@tools/deb.sh

bench:
	@tools/setup.sh test
	@cmake --preset release -DVELTRANE_BUILD_BENCHMARKS=ON >/dev/null
	@cmake --build --preset release -j $(jobs)
	@benchmarks/run_all.sh build/release

docs:
	@tools/setup.sh docs
	@mkdir -p build/docs
	@version=$$(sed -n 's/^project.veltrane VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt) && \
	    sed "s/@VERSION@/$$version/" docs/Doxyfile.in >build/Doxyfile
	@doxygen build/Doxyfile
	@echo 'build/docs/html/index.html'

# Records the exported symbols and the virtual tables anew after a deliberate change. Review the difference.
record-abi:
	@cmake --preset release >/dev/null
	@cmake --build --preset release -j $(jobs) --target veltrane
	@/usr/bin/python3 tests/structure/exported_symbols.py build/release/lib/libveltrane.so \
	    --recorded tests/abi/symbols.txt --record
	@/usr/bin/python3 tests/structure/vtable_layout.py --include include --recorded tests/abi/vtables.txt --record

clean:
	@rm -rf build
