# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
#
# Front door to the CMake build; `make help` lists what it opens.

SHELL := /bin/bash
.SHELLFLAGS := -eu -o pipefail -c
MAKEFLAGS += --no-print-directory
.DEFAULT_GOAL := help

# The network that `make run` exports.
EXAMPLE ?= examples/glossy-checkerboard.sskn
# Where `make install` puts things.
PREFIX ?= /usr/local
# Tests that run at the same time.
JOBS ?= 2
# Arguments for the benchmark programs of `make bench`.
BENCH_ARGS ?=

# At a terminal the build shows its progress; in a log only what goes wrong.
quiet := $(if $(MAKE_TERMOUT),,--quiet)

# $(call build,PRESET,BUILD ARGUMENTS). Messages go to standard error: the output of
# `make run` is the exported text.
define build
@mkdir -p build
@echo "== build: $(1)" >&2
@cmake --preset $(1) >build/configure-$(1).log || { cat build/configure-$(1).log >&2; exit 1; }
@cmake --build --preset $(1) $(2) -- $(quiet) >&2
endef

# $(call run_tests,PRESET)
define run_tests
@echo "== test: $(1)" >&2
@ctest --preset $(1) --output-on-failure -j$(JOBS)
endef

.PHONY: help deps run install package test bench golden format lint clean

help:
	@echo 'make run      build, print EXAMPLE ($(EXAMPLE)) as text and open it in the mixer'
	@echo 'make install  build, then install into PREFIX ($(PREFIX)), below DESTDIR if that is set'
	@echo 'make package  build the Debian package build/release/vireo_*.deb'
	@echo 'make test     release and sanitizer builds, all tests in both, then lint'
	@echo 'make bench    build and run the benchmarks (BENCH_ARGS=...)'
	@echo 'make golden   write the expected texts and docs/bricks.md anew; look at git diff afterwards'
	@echo 'make format   clang-format all C++ sources in place'
	@echo 'make lint     the checks of tools/ alone'
	@echo 'make clean    remove build/'

deps:
	@tools/install-deps.sh

# The mixer opens where there is a display to show it on.
run: deps
	$(call build,release,--target vireo siskin vireo-mixer)
	@build/release/bin/vireo export $(EXAMPLE)
	@if [ -n "$${DISPLAY:-}$${WAYLAND_DISPLAY:-}" ]; then \
	    build/release/bin/vireo-mixer $(EXAMPLE); \
	fi

install: deps
	$(call build,release,--target vireo siskin vireo-mixer)
	@cmake --install build/release --prefix $(PREFIX)

package: deps
	$(call build,release,--target vireo siskin vireo-mixer)
	@cd build/release && cpack

test: deps
	$(call build,release)
	$(call run_tests,release)
	$(call build,asan)
	$(call run_tests,asan)
	@tools/lint.sh

bench: deps
	$(call build,bench)
	@shopt -s nullglob; \
	programs=(build/bench/bin/*benchmark*); \
	if [ $${#programs[@]} -eq 0 ]; then \
	    echo 'bench: no benchmark program in build/bench/bin' >&2; exit 1; \
	fi; \
	for program in "$${programs[@]}"; do "$$program" $(BENCH_ARGS); done

# Rendered from the tables by a script that shares no code with the program.
golden: deps
	@python3 tools/render_golden.py classes tests/golden/classes
	@python3 tools/render_golden.py examples examples
	$(call build,release,--target vireo siskin)
	@build/release/bin/vireo bricks --markdown >build/bricks.md
	@mv build/bricks.md docs/bricks.md

format: deps
	@tools/lint.sh --format

lint: deps
	@tools/lint.sh

clean:
	@rm -rf build
