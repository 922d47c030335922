# A face for CMake: the same as `cmake --preset release` and so on, after installing what is
# missing.

PRESET ?= release
JOBS ?= $(shell getconf _NPROCESSORS_ONLN)

.PHONY: help run test build clean

help: ## list the targets
	@sed -n 's/^\([a-z-]*\):.*## \(.*\)/  make \1\t\2/p' $(MAKEFILE_LIST) | expand -t 20

run: build ## install what is missing, build and start the program
	@build/$(PRESET)/vorda

build: ## install what is missing and build the program
	@scripts/bootstrap build
	@cmake --preset $(PRESET)
	@cmake --build --preset $(PRESET) --target programs

test: ## install what is missing, build everything and run every test
	@scripts/bootstrap build test
	@cmake --preset $(PRESET)
	@cmake --build --preset $(PRESET)
	@ctest --preset $(PRESET) --parallel $(JOBS)

clean: ## remove everything that was built
	rm -rf build
