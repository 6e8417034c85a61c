# VendimarBI: the commands a new machine needs.
#   make run    installs what is missing, builds, and starts the designer
#   make test   installs what is missing, builds, and runs every test (SQLite and PostgreSQL)
#   make test-sanitized  the same tests on a build of its own (build-sanitized) made with
#               AddressSanitizer and UndefinedBehaviorSanitizer: any memory error, leak or
#               undefined behaviour fails the test that met it
#   make bench  installs what is missing, builds the benchmarks, measures the component against
#               its floors on SQLite and PostgreSQL, and writes bench/RESULTS.md

BUILD ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all deps build run test test-sanitized bench clean

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

SANITIZED_BUILD ?= build-sanitized
SANITIZE_FLAGS = -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer
# Any error stops the test that met it; leaks are checked when each program ends.
SANITIZE_ENV = ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

test-sanitized: deps
	cmake -S . -B $(SANITIZED_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo "-DCMAKE_CXX_FLAGS=$(SANITIZE_FLAGS)"
	cmake --build $(SANITIZED_BUILD) -j $(JOBS)
	$(SANITIZE_ENV) ./scripts/with-test-postgres.sh ctest --test-dir $(SANITIZED_BUILD) --output-on-failure -j $(JOBS)

# Only the benchmark programs and what they link are built; timings come from
# an optimised build with symbols, so a profiler can read them too.
bench: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build $(BUILD) -j $(JOBS) --target vbi_benchmarks
	./scripts/with-test-postgres.sh ./bench/run-benchmarks.sh $(BUILD)

clean:
	rm -rf $(BUILD)
