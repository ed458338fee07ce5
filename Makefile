# The two commands that do everything on a fresh Debian machine:
#   make run    installs what is missing, builds, starts the app
#   make test   installs what is missing, builds, runs every test (release, then the sanitizers,
#               then the converter built with clang and libc++ against the acceptance cases)
SHELL := /bin/bash
.DEFAULT_GOAL := run
.PHONY: bootstrap build run test test-release test-asan test-tsan test-libcxx bench fuzz acceptance clean

FUZZ_SECONDS ?= 600

bootstrap:
	@scripts/bootstrap

build: bootstrap
	@cmake --preset release >/dev/null
	@cmake --build --preset release

run: build
	./build/release/bin/vornelt

test: bootstrap
	@$(MAKE) --no-print-directory test-release
	@$(MAKE) --no-print-directory test-asan
	@$(MAKE) --no-print-directory test-tsan
	@$(MAKE) --no-print-directory test-libcxx

test-release:
	@cmake --preset release >/dev/null
	@cmake --build --preset release
	@ctest --preset release

test-asan:
	@cmake --preset asan >/dev/null
	@cmake --build --preset asan
	@ctest --preset asan

# Conversions on several threads at once, under ThreadSanitizer: that test alone.
test-tsan:
	@cmake --preset tsan >/dev/null
	@cmake --build --preset tsan
	@ctest --preset tsan

# The macOS toolchain, clang with libc++, for the core and the converter: a difference
# between the two standard libraries shows as an acceptance case that no longer agrees.
test-libcxx:
	@cmake --preset libcxx >/dev/null
	@cmake --build --preset libcxx
	@tests/run_acceptance ../shared build/libcxx/bin/vornelt-convert; rc=$$?; ((rc == 0 || rc == 77))

# The acceptance cases of the converter alone, with their verdict.
acceptance: build
	../shared/acceptance/check build/release/bin/vornelt-convert

bench: bootstrap
	@cmake --preset bench >/dev/null
	@cmake --build --preset bench
	@bench/run build/bench

fuzz:
	@scripts/bootstrap --fuzz
	@cmake --preset fuzz >/dev/null
	@cmake --build --preset fuzz
	@fuzz/run build/fuzz $(FUZZ_SECONDS)

clean:
	rm -rf build
