# The front door. Every target sets itself up on a fresh Debian machine and rebuilds only what changed.

JOBS := $(shell nproc 2>/dev/null || echo 2)
SOURCES = $(or $(shell git ls-files '*.c' '*.cpp' '*.h'),$(error git does not list the sources here))
UNITS = $(filter store/%.cpp params/%.cpp apply/%.cpp driver/%.cpp wps/%.cpp platform/%.cpp sim/%.cpp wlanctl/%.cpp,$(SOURCES))

.PHONY: help demo test build format lint clean

help:
	@echo "make demo    run the library inside a simulated gateway and watch it apply settings"
	@echo "make test    build everything, with and without sanitizers, and run every test"
	@echo "make build   build the library, the simulated gateway and the examples into build/release"
	@echo "make format  format the sources"
	@echo "make lint    check the format, build with clang, run clang-tidy and cppcheck"
	@echo "make clean   remove the build folders"

# Without the tests, so that the demo and the build need no package that is only for them.
build/release/build.ninja:
	cmake --preset release -DBUILD_TESTING=OFF

demo:
	@scripts/setup.sh demo
	@$(MAKE) -s --no-print-directory build/release/build.ninja
	cmake --build build/release --target gateway-sim apply_settings attach_store status_page switch_radio
	examples/demo.sh build/release

test:
	@scripts/setup.sh test
	cmake --preset dev
	cmake --preset release -DBUILD_TESTING=ON
	cmake --build build/dev
	cmake --build build/release
	@echo "== All tests with the address and undefined-behaviour sanitizers"
	ctest --test-dir build/dev -j $(JOBS) --output-on-failure --no-tests=error
	@echo "== All tests of the optimised build"
	ctest --test-dir build/release -j $(JOBS) --output-on-failure --no-tests=error

build:
	@scripts/setup.sh build
	cmake --preset release -DBUILD_TESTING=OFF
	cmake --build build/release

format:
	@scripts/setup.sh lint
	clang-format -i $(SOURCES)

lint:
	@scripts/setup.sh lint
	clang-format --dry-run -Werror $(SOURCES)
	cmake --preset clang
	cmake --build build/clang
	clang-tidy --quiet -p build/clang $(UNITS)
	cppcheck --quiet --error-exitcode=1 --std=c++20 --enable=warning,performance,portability --inline-suppr \
	  --suppress=missingIncludeSystem -I. -Iinclude store params apply driver wps platform

clean:
	rm -rf build
