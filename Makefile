# Friendly front end to the CMake build. Each target installs the Debian packages it
# needs (scripts/install-deps.sh), configures its own build directory and runs.
#
#   make demo     build the zylconv tool (Release) and run its demo
#   make test     build everything with warnings as errors and run the test suite
#   make bench    build and run the benchmarks, side by side with peers (BENCH_ARGS=...)
#   make asan     the test suite under AddressSanitizer + UndefinedBehaviorSanitizer
#   make test32   32-bit x86 libraries and test suite (multilib GCC)
#   make clean    remove the build directories and the demo output

JOBS ?= $(shell nproc 2>/dev/null || echo 2)
CMAKE ?= cmake
CTEST ?= ctest
BUILD ?= build
BUILD_BENCH ?= build-bench
BUILD_ASAN ?= build-asan
BUILD_32 ?= build-32
BENCH_ARGS ?=

DEPS := bash scripts/install-deps.sh
CONFIGURE := $(CMAKE) -S . -G Ninja
SANITIZE := -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all
SANITIZER_ENV := ASAN_OPTIONS=halt_on_error=1:detect_leaks=1 \
                 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
TOOLCHAIN_32 := $(CURDIR)/cmake/toolchain-i686.cmake
GTEST_32 := $(abspath $(BUILD_32))/googletest-install

# Each target is one sequence of steps; running two at once would race on apt and ninja.
.NOTPARALLEL:
.PHONY: help demo test bench asan test32 clean

help:
	@sed -n 's/^#   //p' $(firstword $(MAKEFILE_LIST))

demo:
	@$(DEPS) base
	$(CONFIGURE) -B $(BUILD) -DCMAKE_BUILD_TYPE=Release
	$(CMAKE) --build $(BUILD) -j $(JOBS) --target zylconv
	$(BUILD)/tools/zylconv/zylconv demo

test:
	@$(DEPS) base
	$(CONFIGURE) -B $(BUILD) -DCMAKE_BUILD_TYPE=Release -DZYLCC_BUILD_TESTS=ON -DZYLCC_WERROR=ON
	$(CMAKE) --build $(BUILD) -j $(JOBS)
	$(CTEST) --test-dir $(BUILD) --output-on-failure -j $(JOBS)

bench:
	@$(DEPS) bench
	$(CONFIGURE) -B $(BUILD_BENCH) -DCMAKE_BUILD_TYPE=Release -DZYL_BENCH_PEERS=ON \
	  -DZYLCC_BUILD_TESTS=OFF
	$(CMAKE) --build $(BUILD_BENCH) -j $(JOBS) --target zylcc_bench
	$(BUILD_BENCH)/bench/zylcc_bench $(BENCH_ARGS)

asan:
	@$(DEPS) base
	$(CONFIGURE) -B $(BUILD_ASAN) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZYLCC_BUILD_TESTS=ON \
	  -DZYLCC_BUILD_BENCH=OFF "-DCMAKE_C_FLAGS=$(SANITIZE)" "-DCMAKE_CXX_FLAGS=$(SANITIZE)" \
	  "-DCMAKE_EXE_LINKER_FLAGS=$(SANITIZE)" "-DCMAKE_SHARED_LINKER_FLAGS=$(SANITIZE)"
	$(SANITIZER_ENV) $(CMAKE) --build $(BUILD_ASAN) -j $(JOBS)
	$(SANITIZER_ENV) $(CTEST) --test-dir $(BUILD_ASAN) --output-on-failure -j $(JOBS)

# GoogleTest is rebuilt 32-bit from the sources Debian ships in /usr/src/googletest;
# the tool and the benchmarks (libpng, Google Benchmark) stay 64-bit only.
test32:
	@$(DEPS) 32
	@if [ ! -f $(GTEST_32)/.done ]; then \
	  $(CMAKE) -S /usr/src/googletest -B $(BUILD_32)/googletest -G Ninja \
	    -DCMAKE_TOOLCHAIN_FILE=$(TOOLCHAIN_32) -DCMAKE_BUILD_TYPE=Release \
	    -DCMAKE_INSTALL_PREFIX=$(GTEST_32) >/dev/null && \
	  $(CMAKE) --build $(BUILD_32)/googletest -j $(JOBS) && \
	  $(CMAKE) --install $(BUILD_32)/googletest >/dev/null && touch $(GTEST_32)/.done; \
	fi
	$(CONFIGURE) -B $(BUILD_32) -DCMAKE_TOOLCHAIN_FILE=$(TOOLCHAIN_32) -DCMAKE_BUILD_TYPE=Release \
	  -DCMAKE_PREFIX_PATH=$(GTEST_32) -DZYLCC_BUILD_TESTS=ON -DZYLCC_WERROR=ON \
	  -DZYLCC_BUILD_BENCH=OFF -DZYLCC_BUILD_TOOLS=OFF
	$(CMAKE) --build $(BUILD_32) -j $(JOBS)
	$(CTEST) --test-dir $(BUILD_32) --output-on-failure -j $(JOBS)

clean:
	rm -rf $(BUILD) $(BUILD_BENCH) $(BUILD_ASAN) $(BUILD_32) zylconv-out
