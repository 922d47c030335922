# A face for CMake: the same as `cmake --preset release` and so on, after installing what is
# missing.

PRESET ?= release
JOBS ?= $(shell getconf _NPROCESSORS_ONLN)
ifeq ($(shell uname),Darwin)
START = open build/$(PRESET)/Vorda.app
PREFIX ?= /Applications
# Apple's clang has no fuzzer.
FUZZ_PATH = $$(brew --prefix llvm)/bin:$$PATH
else
FUZZ_PATH = $$PATH
START = build/$(PRESET)/vorda
PREFIX ?= /usr/local
endif

# Many tests wait most of their time: twice as many at a time as there are cores.
TESTS_AT_A_TIME ?= $(shell expr 2 \* $(JOBS))

# The tray is left out where it can't be had, or is not wanted.
TRAY ?= yes
BOOTSTRAP_TRAY = test $(TRAY) = no || scripts/bootstrap tray || echo "make: what the tray takes can't be installed"

.PHONY: help run test build bench coverage fuzz soak lint docs install uninstall package check-packages package-for screenshots desktops mac-check clean

# How long `make fuzz` runs each target, in seconds.
FUZZ_SECONDS ?= 60

# How long all storms of `make soak` take together, in seconds; some take their own time.
SOAK_SECONDS ?= 120

help: ## list the targets
	@awk -F ':.*## ' '/^[a-z-]*:.*## / { printf "  make %-17s%s\n", $$1, $$2 }' $(MAKEFILE_LIST)

run: build ## install what is missing, build and start the program
	@$(START)

build: ## install what is missing and build the program (TRAY=no: without the desktop's half)
	@scripts/bootstrap build
	@$(BOOTSTRAP_TRAY)
	@cmake --preset $(PRESET) -D VORDA_TRAY=$(TRAY)
	@cmake --build --preset $(PRESET) --target programs
	@test $(TRAY) = no -o -e build/$(PRESET)/vorda-tray -o "$(shell uname)" != Linux || \
	  echo "make: vorda is built, and vorda-tray is not: that takes Qt 6, libxcb and rsvg-convert"

test: ## install what is missing, build everything and run every test
	@scripts/bootstrap build test
	@$(BOOTSTRAP_TRAY)
	@cmake --preset $(PRESET) -D VORDA_TRAY=$(TRAY)
	@cmake --build --preset $(PRESET)
	@ctest --preset $(PRESET) --parallel $(TESTS_AT_A_TIME)

# BENCH_ARGS: build/release/vorda_bench --help lists the options.
bench: ## install what is missing, build and measure what the program costs
	@scripts/bootstrap build tray bench
	@scripts/bootstrap peers || echo "bench: not everything to compare with could be installed"
	@cmake --preset release
	@cmake --build --preset release --target vorda_bench
	@build/release/vorda_bench --json=build/release/bench.json $(BENCH_ARGS)

coverage: ## run every test and print which share of the lines they run
	@scripts/bootstrap build tray test coverage
	@cmake --preset coverage
	@cmake --build --preset coverage
	@scripts/coverage

fuzz: ## run each fuzz target for FUZZ_SECONDS=60 seconds, JOBS at a time
	@scripts/bootstrap build tray test fuzz
	@PATH="$(FUZZ_PATH)" cmake --preset sanitize
	@cmake --build --preset fuzzers
	@scripts/fuzz $(FUZZ_SECONDS) $(JOBS)

soak: ## run storms over the real program for SOAK_SECONDS=120 seconds (as root: all of them)
	@scripts/bootstrap build tray test
	@cmake --preset $(PRESET)
	@cmake --build --preset $(PRESET) --target vorda_soak
	@build/$(PRESET)/vorda_soak --seconds=$(SOAK_SECONDS)

lint: ## read everything for defects: format, spelling, clang-tidy … (LINT_STEPS: only some)
	@scripts/bootstrap build tray test bench lint
	@scripts/lint $(LINT_STEPS)

docs: ## make the pages of the headers' contracts and of docs/, in build/docs
	@scripts/bootstrap docs
	@scripts/docs

install: build ## install the program under PREFIX: /usr/local, on a Mac /Applications (DESTDIR is honoured)
	@scripts/install build/$(PRESET) $(PREFIX)

uninstall: ## take away what `make install` has installed (with the same DESTDIR)
	@scripts/uninstall build/$(PRESET)

package: ## make the .deb packages, in build/release/packages
	@scripts/bootstrap build package
	@$(BOOTSTRAP_TRAY)
	@cmake --preset release -D VORDA_TRAY=$(TRAY)
	@cmake --build --preset release --target programs
	@cd build/release && cpack -G DEB

check-packages: package ## install, start and remove the packages in a clean system, and build them again (root)
	@scripts/bootstrap check-packages
	@scripts/check_packages build/release/packages
	@scripts/check_reproducible build/release/packages

package-for: ## make and try the packages in clean systems of SUITE=trixie, bookworm, noble … (root)
	@scripts/bootstrap check-packages
	@scripts/package_for $(SUITE)

screenshots: ## start real desktops and take the pictures in docs/pictures/
	@scripts/bootstrap build tray test screenshots
	@cmake --preset release
	@cmake --build --preset release --target programs play_process
	@scripts/screenshots

desktops: ## try the tray on real desktops, and take pictures of it (root; half an hour)
	@scripts/bootstrap build tray test screenshots desktops
	@cmake --preset release
	@cmake --build --preset release --target programs play_process play_input
	@tests/desktops/run

mac-check: ## build on Linux what a Mac builds, against the macOS SDK that SDK=FOLDER names
	@scripts/bootstrap build tray mac-check
	@scripts/mac_check "$(SDK)"

clean: ## remove everything that was built
	rm -rf build
