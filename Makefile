# A thin front for cmake, ctest and tools/: every recipe is one line that can be typed by hand as well.

FUZZ_SECONDS ?= 30

.DEFAULT_GOAL := help
.PHONY: help packages build install deb demo test check bench format bless fuzz windows asan tidy analyze check-format coverage bless-golden bless-pictures

help: ## Print this list
	@awk -F ':.*## ' '/^[a-z-]+:.*## / { printf "  make %-14s %s\n", $$1, $$2 }' Makefile

packages: ## Install the Debian packages that are missing (nothing happens when all are there)
	@tools/install-packages

build: packages ## Build the program: build/release/bin/vexa, the module in build/release/lib
	@tools/build release vexa vexa_output vexa_pages

install: build ## Install into PREFIX (/opt/vexa): one folder, which can be moved anywhere
	@cmake --install build/release $(if $(PREFIX),--prefix $(PREFIX)) > /dev/null && echo "installed"

deb: build ## Make a Debian package of it: build/vexa-output_VERSION_ARCHITECTURE.deb
	@tools/install-packages package
	@tools/deb

demo: build ## Build, make tables of real data into a document and restyle it (build/demo)
	@tools/demo

check: packages ## Build the program and run its tests, transcripts and the quick checks: for every day
	@VEXA_QUICK=1 tools/run_tests release quick

test: packages ## Build and run everything: tests, transcripts, sanitizers, corpora, checks, format, tidy
	@tools/run_tests

bench: build ## Build and run the benchmarks
	@tools/bench

format: packages ## Format every source file of ours in place
	@tools/format --write

bless: build ## Rewrite the expected parts of the transcripts (FILTER=text in the path) from what the program does now
	@tools/transcripts --program build/release/bin/vexa --bless $(FILTER)

bless-golden: build ## Rewrite tests/golden (the restyled results of examples/data) from what the program does now
	@tools/golden --bless

bless-pictures: build ## Take the pictures anew that exported pages are compared with (NAME=report-dark ...; all without)
	@tests/judges/check_pictures.py build/release/bin/vexa --bless $(NAME)

fuzz: packages ## Run every fuzz target (FILTER=text in its name) for FUZZ_SECONDS (30) seconds from its corpus
	@FUZZ_SECONDS=$(FUZZ_SECONDS) tools/fuzz $(FILTER)

windows: packages ## Build for Windows with mingw-w64 (build/windows/bin) and run the transcripts under Wine
	@tools/run_tests windows

asan: packages ## Build with the sanitizers and run unit tests, corpora and transcripts under them
	@tools/run_tests asan

tidy: packages ## Run clang-tidy on what changed since its last run
	@tools/tidy

analyze: packages ## Run the static analyzer on what changed since its last run (not part of make test)
	@tools/tidy --analyze

check-format: packages ## Fail when a source file of ours is not formatted
	@tools/format

coverage: packages ## Build with counters, run the tests, print the covered lines of each folder
	@tools/coverage
