BUILD_DIR ?= build
BUILD_TYPE ?= RelWithDebInfo
JOBS ?= $(shell nproc)

.PHONY: all deps test-deps configure build run test bench format clean

all: build

deps:
	scripts/install-deps.sh build

test-deps:
	scripts/install-deps.sh build test

configure:
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE)

build: deps configure
	cmake --build $(BUILD_DIR) --parallel $(JOBS)

run: build
	$(BUILD_DIR)/src/norvel

test: test-deps configure
	cmake --build $(BUILD_DIR) --parallel $(JOBS)
	cd $(BUILD_DIR) && ctest --output-on-failure --parallel $(JOBS)

bench: test-deps configure
	cmake --build $(BUILD_DIR) --parallel $(JOBS) --target norvel_bench
	$(BUILD_DIR)/bench/norvel_bench

format:
	scripts/install-deps.sh dev
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD_DIR)
