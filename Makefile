# The project's commands. `make test` is what CI runs.
BUILD      ?= build
BUILD_ASAN ?= build-asan
BUILD_TSAN ?= build-tsan
JOBS       ?= $(shell nproc)
CMAKE_GEN  := -G Ninja
CTEST      := ctest --output-on-failure -j $(JOBS) --timeout 600

.PHONY: all bootstrap configure build test test-fast test-asan test-tsan bench format clean

all: build

bootstrap:
	bash scripts/bootstrap

configure: bootstrap
	cmake -S . -B $(BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=Release

build: configure
	cmake --build $(BUILD) -j $(JOBS)

# The whole suite: the release build, then the signal path under ASan and UBSan and the threaded tests
# under ThreadSanitizer.
test: build
	$(CTEST) --test-dir $(BUILD)
	$(MAKE) --no-print-directory test-asan test-tsan

test-fast: build
	$(CTEST) --test-dir $(BUILD)

test-asan: bootstrap
	cmake -S . -B $(BUILD_ASAN) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    -DVANTRICE_SANITIZE=address,undefined -DVANTRICE_BUILD_PLUGINS=OFF -DVANTRICE_BUILD_BENCH=OFF
	cmake --build $(BUILD_ASAN) -j $(JOBS) --target vantrice_dsp_tests
	$(CTEST) --test-dir $(BUILD_ASAN) -L '^dsp$$'

test-tsan: bootstrap
	@if [ -n "$$(find tests -name '*ConcurrencyTest.cpp' | head -n 1)" ]; then \
	    cmake -S . -B $(BUILD_TSAN) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	        -DVANTRICE_SANITIZE=thread -DVANTRICE_BUILD_PLUGINS=OFF -DVANTRICE_BUILD_BENCH=OFF && \
	    cmake --build $(BUILD_TSAN) -j $(JOBS) --target vantrice_thread_tests && \
	    $(CTEST) --test-dir $(BUILD_TSAN) -L '^threads$$'; \
	else echo "test-tsan: no threaded tests"; fi

bench: build
	$(BUILD)/bench/vantrice_bench --benchmark_counters_tabular=true

format:
	git ls-files -co --exclude-standard -- source plugin tools tests bench | grep -E '\.(h|cpp)$$' \
	    | grep -v '^source/dsp/StepTableData\.cpp$$' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(BUILD_ASAN) $(BUILD_TSAN)
