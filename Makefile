# The two commands that do everything on a fresh Debian machine:
#   make run    installs what is missing, builds, starts the app
#   make test   installs what is missing, builds, runs every test (release, then the sanitizers,
#               then the converter built with clang and libc++ against the acceptance cases,
#               then the page in headless Chromium)
SHELL := /bin/bash
.DEFAULT_GOAL := run
.PHONY: bootstrap build run web test test-release test-asan test-tsan test-libcxx test-web bench fuzz acceptance clean

FUZZ_SECONDS ?= 600

bootstrap:
	@scripts/bootstrap

build: bootstrap
	@cmake --preset release >/dev/null
	@cmake --build --preset release

run: build
	./build/release/bin/vornelt

test:
	@scripts/bootstrap --web
	@$(MAKE) --no-print-directory test-release
	@$(MAKE) --no-print-directory test-asan
	@$(MAKE) --no-print-directory test-tsan
	@$(MAKE) --no-print-directory test-libcxx
	@$(MAKE) --no-print-directory test-web

# The page: one file, build/web/vornelt.html, that works offline in any browser.
web:
	@scripts/bootstrap --web
	@cmake --preset web >/dev/null
	@cmake --build --preset web
	@echo "The page: build/web/vornelt.html ($$(stat -c %s build/web/vornelt.html) bytes)"

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

# The page in headless Chromium: the acceptance cases by clicks and typing, the questions, a
# list of 100,000 events, and no request leaving the page.
test-web:
	@tests/web/run

# The acceptance cases of the converter alone, with their verdict.
acceptance: build
	../shared/acceptance/check build/release/bin/vornelt-convert

bench:
	@scripts/bootstrap --web
	@cmake --preset bench >/dev/null
	@cmake --build --preset bench
	@cmake --preset web >/dev/null && cmake --build --preset web >/dev/null || true
	@bench/run build/bench

fuzz:
	@scripts/bootstrap --fuzz
	@cmake --preset fuzz >/dev/null
	@cmake --build --preset fuzz
	@fuzz/run build/fuzz $(FUZZ_SECONDS)

clean:
	rm -rf build
