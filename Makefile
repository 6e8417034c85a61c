# VendimarBI: the commands a new machine needs.
#   make run    installs what is missing, builds, and starts the designer
#   make test   installs what is missing, builds, and runs every test (SQLite and PostgreSQL)
#   make bench  installs what is missing, builds the benchmarks, measures the component against
#               its floors on SQLite and PostgreSQL, and writes bench/RESULTS.md

BUILD ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all deps build run test bench clean

all: build

deps:
	./scripts/install-deps.sh

build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build $(BUILD) -j $(JOBS)

run: build
	./scripts/run.sh $(BUILD)

test: build
	./scripts/with-test-postgres.sh ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

# Only the benchmark programs and what they link are built; timings come from
# an optimised build with symbols, so a profiler can read them too.
bench: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build $(BUILD) -j $(JOBS) --target vbi_benchmarks
	./scripts/with-test-postgres.sh ./bench/run-benchmarks.sh $(BUILD)

clean:
	rm -rf $(BUILD)
