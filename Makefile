# SPDX-License-Identifier: GPL-3.0-or-later
# The two commands of the README. Both install what is missing first.
PRESET ?= release
BUILD_DIR := build/$(PRESET)
JOBS ?= $(shell nproc)
# Where make install puts the programs; DESTDIR is honoured too.
PREFIX ?= /usr/local
# CI builds treat warnings as errors.
WERROR := $(if $(CI),ON,OFF)

.PHONY: all deps configure build run test test-long fuzz-smoke bench install package guide-screenshots clean

all: build

deps:
	scripts/install-deps

configure: deps
	cmake --preset $(PRESET) -DTAGSMITH_WERROR=$(WERROR)

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	$(BUILD_DIR)/src/tagsmith

test: build fuzz-smoke
	cd $(BUILD_DIR) && ctest -j $(JOBS) --output-on-failure --timeout 600 -LE long

# A short bounded run of each fuzz target over a seed corpus made at test time
# (clang with libFuzzer, AddressSanitizer and UBSan; only the fuzz targets are built).
fuzz-smoke: deps
	cmake --preset fuzz -DTAGSMITH_WERROR=$(WERROR) >/dev/null
	cmake --build build/fuzz -j $(JOBS) --target fuzz_bmff_reader fuzz_movie_rewriter fuzz_caf_reader fuzz_id3_reader \
	  fuzz_photo_properties fuzz_exif_segment fuzz_heif_rewriter
	cd build/fuzz && ctest -j $(JOBS) --output-on-failure -R '^fuzz_'

test-long: build
	cd $(BUILD_DIR) && ctest -j $(JOBS) --output-on-failure -L long

bench: build
	bench/import --cli $(BUILD_DIR)/src/tagsmith-cli
	bench/video-write --driver $(BUILD_DIR)/bench/tagsmith-rewrite-bench --cli $(BUILD_DIR)/src/tagsmith-cli
	bench/audio-write --cli $(BUILD_DIR)/src/tagsmith-cli
	bench/photo-write --cli $(BUILD_DIR)/src/tagsmith-cli
	bench/video-tools --cli $(BUILD_DIR)/src/tagsmith-cli

# The user guide's screenshots of the real window, taken by a widget test into
# the build tree, where the install rules pick them up.
guide-screenshots: build
	cd $(BUILD_DIR) && ctest --output-on-failure -R '^guide_screenshots$$'

install: guide-screenshots
	cmake --install $(BUILD_DIR) --prefix $(PREFIX)

# A Debian package (build/<preset>/tagsmith_<version>_<arch>.deb);
# scripts/check-package installs it into a fresh Debian 12 and starts it.
package: guide-screenshots
	cd $(BUILD_DIR) && cpack -G DEB

clean:
	rm -rf build
