# The two commands of the README. Both install what is missing first.
PRESET ?= release
BUILD_DIR := build/$(PRESET)
JOBS ?= $(shell nproc)
# CI builds treat warnings as errors.
WERROR := $(if $(CI),ON,OFF)

.PHONY: all deps configure build run test bench clean

all: build

deps:
	scripts/install-deps

configure: deps
	cmake --preset $(PRESET) -DTAGSMITH_WERROR=$(WERROR)

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	$(BUILD_DIR)/src/tagsmith

test: build
	cd $(BUILD_DIR) && ctest -j $(JOBS) --output-on-failure --timeout 600 -LE long

test-long: build
	cd $(BUILD_DIR) && ctest -j $(JOBS) --output-on-failure -L long

bench: build
	bench/import --cli $(BUILD_DIR)/src/tagsmith-cli

clean:
	rm -rf build
