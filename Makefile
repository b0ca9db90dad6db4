# The project's commands. `make test` is what CI runs.
BUILD      ?= build
BUILD_ASAN ?= build-asan
BUILD_TSAN ?= build-tsan
JOBS       ?= $(shell nproc)
CMAKE_GEN  := -G Ninja
CTEST      := ctest --output-on-failure -j $(JOBS) --timeout 600
# Sanitizer builds favour build time: light optimisation, no debug information. The ASan and UBSan build
# is clang's, instrumented for libFuzzer too, so one build serves the tests, the hosted plug-ins and the
# fuzz targets.
SANITIZE_FLAGS := -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O1" -DCMAKE_C_FLAGS_RELEASE="-O1" \
                  -DVANTRICE_BUILD_BENCH=OFF -DVANTRICE_BUILD_PLUGINS=ON -DVANTRICE_BUILD_VALIDATOR=ON
ASAN_FLAGS     := $(SANITIZE_FLAGS) -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
                  -DVANTRICE_SANITIZE=address,undefined,fuzzer-no-link
TSAN_FLAGS     := $(SANITIZE_FLAGS) -DVANTRICE_SANITIZE=thread
# Seconds each fuzz target runs in `make fuzz`.
FUZZ_SECONDS   ?= 600

# ccache finds its objects again from any checkout of the repository.
export CCACHE_BASEDIR := $(CURDIR)
export CCACHE_NOHASHDIR := 1

ARTEFACTS  := $(BUILD)/plugin/Vantrice_artefacts/Release
RENDER     := $(BUILD)/tools/render/vantrice-render
DEMO_DIR   ?= demo

# Where `make install` puts things: the user's own folders, or the system's with PREFIX=/usr.
ifeq ($(PREFIX),)
VST_DIR  := $(HOME)/.vst
VST3_DIR := $(HOME)/.vst3
LV2_DIR  := $(HOME)/.lv2
BIN_DIR  := $(HOME)/.local/bin
else
VST_DIR  := $(PREFIX)/lib/vst
VST3_DIR := $(PREFIX)/lib/vst3
LV2_DIR  := $(PREFIX)/lib/lv2
BIN_DIR  := $(PREFIX)/bin
endif

.PHONY: all bootstrap configure build test test-fast test-asan test-tsan asan-build validate fuzz fuzz-seeds mutants bench demo install uninstall \
        format clean skin

all: build

bootstrap:
	bash scripts/bootstrap

configure: bootstrap
	cmake -S . -B $(BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=Release

build: configure
	cmake --build $(BUILD) -j $(JOBS)

# The whole suite: the release build with the hosted plug-ins, then everything again under ASan and
# UBSan with a short run of each fuzz target, and the threaded tests under ThreadSanitizer.
test: build
	$(CTEST) --test-dir $(BUILD)
	$(MAKE) --no-print-directory test-asan test-tsan

test-fast: build
	$(CTEST) --test-dir $(BUILD)

asan-build: bootstrap
	cmake -S . -B $(BUILD_ASAN) $(CMAKE_GEN) $(ASAN_FLAGS)
	cmake --build $(BUILD_ASAN) -j $(JOBS)

test-asan: asan-build
	$(CTEST) --test-dir $(BUILD_ASAN) -LE '^format$$'

test-tsan: bootstrap
	cmake -S . -B $(BUILD_TSAN) $(CMAKE_GEN) $(TSAN_FLAGS)
	cmake --build $(BUILD_TSAN) -j $(JOBS) --target vantrice_thread_tests vantrice-validate
	$(CTEST) --test-dir $(BUILD_TSAN) -L '^threads$$'

# The built plug-ins loaded through JUCE's hosting classes, format by format.
validate: build
	$(CTEST) --test-dir $(BUILD) -L '^validate$$'

# A longer fuzzing campaign, target by target; new inputs stay in the build, findings are reported.
fuzz: asan-build
	bash scripts/fuzz-campaign $(BUILD_ASAN) $(FUZZ_SECONDS)

# What the tests catch: each seeded fault of scripts/mutants.list built and tested in turn (not part of
# `make test`). MUTANTS_FLAGS=--validate adds the host validator, --only REGEX picks mutants.
mutants: configure
	bash scripts/mutants --build $(BUILD) $(MUTANTS_FLAGS)

# Rewrites the seed corpus from documents the plug-in writes itself.
fuzz-seeds: asan-build
	$(BUILD_ASAN)/fuzz/vantrice-fuzz-seeds fuzz/corpus

bench: build
	$(BUILD)/bench/vantrice_bench --benchmark_counters_tabular=true

# A first look: the demo loop through a few factory presets, with a picture, into demo/.
demo: build
	@mkdir -p $(DEMO_DIR)
	@set -e; for preset in "MPC 60" "C64 Volume Registry" "Phone Call" "Stereo Wide"; do \
	    name=$$(echo "$$preset" | tr 'A-Z ' 'a-z-'); \
	    echo "== $$preset -> $(DEMO_DIR)/$$name.wav"; \
	    $(RENDER) --preset "$$preset" --plot "$(DEMO_DIR)/$$name.png" "$(DEMO_DIR)/$$name.wav"; \
	done
	@echo
	@echo "Rendered into $(DEMO_DIR)/ (WAV files and pictures of input and output)."
	@echo "Plug-ins built in $(ARTEFACTS):"
	@echo "  VST/libVantrice.so   the 2.4-interface library (hosts load it from ~/.vst)"
	@echo "  VST3/Vantrice.vst3   LV2/Vantrice.lv2   Standalone/Vantrice"
	@echo "Install them for this user with 'make install', or for all users with 'sudo make install PREFIX=/usr'."

install: build
	install -d "$(DESTDIR)$(VST_DIR)" "$(DESTDIR)$(VST3_DIR)" "$(DESTDIR)$(LV2_DIR)" "$(DESTDIR)$(BIN_DIR)"
	install -m 755 "$(ARTEFACTS)/VST/libVantrice.so" "$(DESTDIR)$(VST_DIR)/Vantrice.so"
	rm -rf "$(DESTDIR)$(VST3_DIR)/Vantrice.vst3" "$(DESTDIR)$(LV2_DIR)/Vantrice.lv2"
	cp -r "$(ARTEFACTS)/VST3/Vantrice.vst3" "$(DESTDIR)$(VST3_DIR)/"
	cp -r "$(ARTEFACTS)/LV2/Vantrice.lv2" "$(DESTDIR)$(LV2_DIR)/"
	install -m 755 "$(ARTEFACTS)/Standalone/Vantrice" "$(DESTDIR)$(BIN_DIR)/vantrice"
	install -m 755 "$(RENDER)" "$(DESTDIR)$(BIN_DIR)/vantrice-render"
	@echo "Installed into $(DESTDIR)$(VST_DIR), $(DESTDIR)$(VST3_DIR), $(DESTDIR)$(LV2_DIR) and $(DESTDIR)$(BIN_DIR)."

uninstall:
	rm -rf "$(DESTDIR)$(VST_DIR)/Vantrice.so" "$(DESTDIR)$(VST3_DIR)/Vantrice.vst3" "$(DESTDIR)$(LV2_DIR)/Vantrice.lv2" \
	    "$(DESTDIR)$(BIN_DIR)/vantrice" "$(DESTDIR)$(BIN_DIR)/vantrice-render"

# Draws the skin's pictures and writes its document anew from the layout table, with a contact sheet of
# every frame to look at (build/skin-sheet.png). A test checks that the committed files are current.
skin: build
	$(BUILD)/tools/skin-gen/skin-gen --out resources/skin
	$(BUILD)/tools/skin-gen/skin-gen --sheet $(BUILD)/skin-sheet.png
	@echo "Wrote resources/skin; look at $(BUILD)/skin-sheet.png"

format:
	git ls-files -co --exclude-standard -- source plugin tools tests bench fuzz | grep -E '\.(h|cpp)$$' \
	    | grep -v '^source/dsp/StepTableData\.cpp$$' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(BUILD_ASAN) $(BUILD_TSAN)
