# The front door. Every target sets itself up on a fresh Debian machine and rebuilds only what changed.

SOURCES = $(or $(shell git ls-files '*.c' '*.cpp' '*.h'),$(error git does not list the sources here))
UNITS = $(filter store/%.cpp params/%.cpp apply/%.cpp driver/%.cpp wps/%.cpp platform/%.cpp sim/%.cpp wlanctl/%.cpp,$(SOURCES))

STAGE = scripts/stage.sh

.PHONY: help check demo test test-all test-rest test-clang test-arm64 test-musl build build-clang arm64 musl package \
  fuzz soak mutants stages docs interface bench format lint clean

help:
	@echo "make demo         run the library inside a simulated gateway and watch it apply settings"
	@echo "make test         every test, with sanitizers and of the optimised build: minutes"
	@echo "make test-all     that and all that follows up to package: half an hour"
	@echo "make test-clang   every test, built with clang"
	@echo "make test-arm64   every test as ARM64 code, under emulation"
	@echo "make test-musl    the tests in C against the musl C library"
	@echo "make test-box     the shortest story of the box, and the tests that only a kernel can pass"
	@echo "make box          the ARM64 library on a real ARM64 kernel with the driver inside it, in qemu; STORY=wps: one story"
	@echo "make box-shell    a shell in that machine"
	@echo "make package      Debian packages for amd64 and arm64, into build/packages"
	@echo "make check ROOM=params  builds what changed and runs the tests of one room: seconds"
	@echo "make fuzz         random input through every door of the library, a minute each (SECONDS=, DOOR=)"
	@echo "make soak         processes that are killed or lack what they need, ten minutes at most (SECONDS=, KILLS=, SEED=)"
	@echo "make mutants      which changes of the library no test notices: hours (ROOM=, FILE=, SAMPLE=200 SEED=1, JOBS=)"
	@echo "make stages       what the stages of the last make test or test-all took, into CONTRIBUTING.md"
	@echo "make build        build the library, the simulated gateway, the tool and the examples into build/release"
	@echo "make arm64        the same and the tests for the gateway's processor, into build/arm64; sizes, and what it needs"
	@echo "make docs         the reference to browse, into build/docs/html: header, settings, documents, manual pages"
	@echo "make bench        what each work costs beside its limit, in two minutes; BASE=REF: and what it cost in that commit"
	@echo "make interface    describe the binary interface anew, after a change of it that is meant"
	@echo "make format       format the sources"
	@echo "make lint         check the format, build with clang, run clang-tidy and cppcheck"
	@echo "make clean        remove the build folders"

# Without the tests, so that the demo and the build need no package that is only for them.
build/release/build.ninja:
	cmake --preset release -DBUILD_TESTING=OFF

build/arm64/build.ninja:
	cmake --preset arm64 -DBUILD_TESTING=OFF

demo:
	@scripts/setup.sh demo
	@$(MAKE) -s --no-print-directory build/release/build.ninja
	cmake --build build/release --target gateway-sim wlanctl apply_settings attach_store status_page switch_radio
	examples/demo.sh build/release

# The test programs are built once, in build/dev, and run twice: on what is sanitized there, and on what ships.
test:
	@scripts/setup.sh test
	@$(STAGE) --forget
	@$(STAGE) "configure" $(MAKE) -s --no-print-directory configure-tests
	@$(STAGE) "build: sanitized, and the test programs" cmake --build build/dev
	@$(STAGE) "build: optimised, as it ships" cmake --build build/release
	@$(STAGE) "test: sanitized" scripts/run_tests.sh build/dev
	@$(STAGE) "test: optimised" scripts/run_tests.sh build/release
	@$(STAGE) --table

.PHONY: configure-tests
configure-tests:
	cmake --preset dev -DWIFIMGR_TEST_GATEWAY=$(CURDIR)/build/release
	cmake --preset release -DBUILD_TESTING=ON -DWIFIMGR_BENCH=ON -DWIFIMGR_TEST_PROGRAMS=$(CURDIR)/build/dev/tests

test-all: test
	@$(MAKE) --no-print-directory test-rest
	@$(STAGE) --table

# What make test leaves out. A machine that has no other system's packages to load still has the rest of it.
test-rest:
	@scripts/setup.sh test-all
	@for stage in package test-musl test-clang test-box test-arm64; do \
	  $(STAGE) "make $$stage" $(MAKE) --no-print-directory $$stage BOX_MAY_LACK=yes || exit 1; \
	done

# What installs and describes the library is looked at where it is optimised; the rest where it is sanitized.
check:
	@[ -n "$(ROOM)" ] || { echo "make check ROOM=...: the folders of tests/ are the rooms" >&2; exit 2; }
	@[ -f "tests/$(ROOM)/tests.cmake" ] || { echo "make check: there is no room $(ROOM)" >&2; exit 2; }
	@scripts/setup.sh test
	@[ -f build/dev/build.ninja ] && [ -f build/release/build.ninja ] || $(MAKE) -s --no-print-directory configure-tests
	@case "$(ROOM)" in \
	  abi | install) build=build/release target=all; cmake --build build/dev --target lock_test || exit 1 ;; \
	  gateway | wlanctl) build=build/dev target=tests_$(ROOM); cmake --build build/release --target gateway-sim || exit 1 ;; \
	  *) build=build/dev target=tests_$(ROOM) ;; \
	esac; \
	cmake --build $$build --target $$target && scripts/run_tests.sh $$build -L '^$(ROOM)$$'

stages:
	@$(STAGE) --into CONTRIBUTING.md

fuzz:
	@scripts/setup.sh fuzz
	cmake --preset fuzz
	cmake --build --preset fuzz
	tests/fuzz/run.sh build/fuzz $(or $(SECONDS),60) $(DOOR)

soak:
	@scripts/setup.sh test
	@$(MAKE) -s --no-print-directory configure-tests
	cmake --build build/release --target soak
	build/release/tests/soak --seconds $(or $(SECONDS),600) --kills $(or $(KILLS),10000) --seed $(or $(SEED),0)

mutants:
	@scripts/setup.sh test
	@$(MAKE) -s --no-print-directory configure-tests
	cmake --build build/dev --target api_lib_wifimgr $(addprefix tests_,store params apply driver wps platform)
	python3 tests/mutants/run.py $(if $(ROOM),--room $(ROOM)) $(if $(FILE),--file $(FILE)) \
	  $(if $(SAMPLE),--sample $(SAMPLE)) $(if $(SEED),--seed $(SEED)) $(if $(JOBS),--jobs $(JOBS))

build-clang:
	@scripts/setup.sh clang
	cmake --preset clang -DBUILD_TESTING=ON
	cmake --build build/clang

test-clang: build-clang
	@echo "== All tests of the build with clang"
	scripts/run_tests.sh build/clang

arm64:
	@scripts/setup.sh arm64
	cmake --preset arm64 -DBUILD_TESTING=ON
	cmake --build build/arm64
	@scripts/size_report.sh build/arm64/lib/libapi_lib_wifimgr.so.1 aarch64-linux-gnu-

# The machine's own programs inside a simulated gateway need its driver built for them.
test-arm64:
	@scripts/setup.sh arm64
	@$(MAKE) --no-print-directory arm64
	@$(MAKE) -s --no-print-directory build/release/build.ninja
	cmake --build build/release --target gateway_driver
	@echo "== All tests as ARM64 code"
	scripts/test_arm64.sh build/arm64 build/release

musl:
	@scripts/setup.sh musl
	cmake --preset musl
	cmake --build build/musl

# Debian has no C++ runtime for musl, and the test programs are C++: what is in C runs, and both libraries do the same.
test-musl: musl
	@$(MAKE) -s --no-print-directory build/release/build.ninja
	cmake --build build/release --target gateway-sim apply_settings
	@echo "== The tests in C against musl"
	scripts/run_tests.sh build/musl
	scripts/same_outcome.sh build/release build/release build/musl

package:
	@scripts/setup.sh package
	@$(MAKE) -s --no-print-directory build/release/build.ninja build/arm64/build.ninja
	scripts/package.sh build/release build/arm64

docs:
	@scripts/setup.sh docs
	docs/build.sh

interface:
	@scripts/setup.sh test
	@$(MAKE) -s --no-print-directory build/release/build.ninja
	cmake --build build/release --target api_lib_wifimgr
	scripts/describe_interface.sh build/release/lib/libapi_lib_wifimgr.so.1

# The commit to compare with, if any, is built beside this one.
BASE :=
bench:
	@scripts/setup.sh bench
	cmake --preset release -DWIFIMGR_BENCH=ON
	cmake --build build/release --target wifimgr_bench_free wifimgr_bench_standin wifimgr_bench_programs
	$(if $(BASE),scripts/build_base.sh $(BASE) build/base)
	python3 bench/run.py build/release $(if $(BASE),build/base/build $(BASE))

build:
	@scripts/setup.sh build
	@$(MAKE) -s --no-print-directory build/release/build.ninja
	cmake --build build/release

format:
	@scripts/setup.sh lint
	clang-format -i $(SOURCES)

lint: build-clang
	@scripts/setup.sh lint
	clang-format --dry-run -Werror $(SOURCES)
	clang-tidy --quiet -p build/clang $(UNITS)
	cppcheck --quiet --error-exitcode=1 --std=c++20 --enable=warning,performance,portability --inline-suppr \
	  --suppress=missingIncludeSystem -I. -Iinclude store params apply driver wps platform

# The machine needs the library and the tools for its processor, and the simulated gateway to compare with. ARCH=native: the machine's
# own processor, under KVM where that may be used.
BOX = ARCH=$(or $(ARCH),arm64) box/scripts/box.sh
BOX_PARTS = gateway-sim wlanctl apply_settings attach_store status_page switch_radio

box-build:
	@scripts/setup.sh $(if $(filter native,$(ARCH)),box-native,box) || { echo "box: there is no box without these packages" >&2; exit 3; }
	@$(MAKE) -s --no-print-directory build/release/build.ninja
	cmake --build build/release --target $(BOX_PARTS)
	@[ "$(ARCH)" = native ] || { $(MAKE) -s --no-print-directory build/arm64/build.ninja && \
	  cmake --build build/arm64 --target $(BOX_PARTS); }

box: box-build $(if $(STORY),$(if $(filter kernel-tests,$(STORY)),box-tests),box-tests)
	$(BOX) $(or $(STORY),all)

box-shell: box-build
	$(BOX) shell

# What only a kernel shows, in a few minutes: the shortest story, and the tests that emulation cannot run.
test-box: box-build box-tests
	@echo "== The gateway in a box"
	$(BOX) queries kernel-tests $(if $(BOX_MAY_LACK),|| { [ $$? -eq 3 ] && echo "== THE BOX COULD NOT BE BUILT HERE: nothing of it was run"; })

# The test programs that emulation cannot run, and what they start.
BOX_TESTS = $(shell sed -n 's/^\([^\#\t]*\)\t.*/\1/p' scripts/not_emulated.txt | uniq) hold_store library_probe request_probe wireless_probe

box-tests:
	cmake --preset $(if $(filter native,$(ARCH)),release,arm64) -DBUILD_TESTING=ON
	cmake --build build/$(if $(filter native,$(ARCH)),release,arm64) --target $(BOX_TESTS)

box-clean:
	rm -rf build/box

clean:
	rm -rf build
