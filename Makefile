# VendimarBI: the two commands a new machine needs.
#   make run    installs what is missing, builds, and starts the designer
#   make test   installs what is missing, builds, and runs every test (SQLite and PostgreSQL)

BUILD ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all deps build run test clean

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

clean:
	rm -rf $(BUILD)
