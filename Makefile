BUILD_DIR ?= build
BUILD_TYPE ?= RelWithDebInfo
JOBS ?= $(shell nproc)

.PHONY: all deps test-deps configure build run test bench screenshots format clean

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

# PNGs of the main window in both themes, taken from the real program on a virtual screen.
screenshots: build
	scripts/install-deps.sh screenshots
	scripts/screenshots.sh $(BUILD_DIR)/src/norvel $(BUILD_DIR)/src/norvel_data.db docs/screenshots

format:
	scripts/install-deps.sh dev
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD_DIR)
