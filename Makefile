# The two entry points of the README (`make run`, `make test`) and the helpers CI uses.
BUILD ?= build
JOBS ?= $(shell nproc)
BUILD_TYPE ?= RelWithDebInfo
CMAKE_FLAGS ?=
ARGS ?=
FUZZ_SECONDS ?= 60

.PHONY: all deps configure build run test asan-test tsan-test bench fuzz format format-check lint clean \
	update-translations pseudo-run

all: build

deps:
	@./scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) $(CMAKE_FLAGS) >/dev/null

build: configure
	cmake --build $(BUILD) -j $(JOBS)

run: build
	$(BUILD)/bin/tallyvox $(ARGS)

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

# The same tests with AddressSanitizer and UndefinedBehaviorSanitizer.
asan-test:
	$(MAKE) test BUILD=build-asan BUILD_TYPE=Debug CMAKE_FLAGS="-DTALLYVOX_SANITIZE=ON"

# The tests that run work side by side (label concurrency) with ThreadSanitizer; Qt's own
# libraries are not instrumented, so races reported inside them alone are suppressed.
tsan-test: deps
	@cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTALLYVOX_TSAN=ON >/dev/null
	cmake --build build-tsan -j $(JOBS) --target tallyvox SearchKitIndexer SearchKitIndexer32 \
		IndexerParent IndexerClientTest WordListRunTest BatchRunnerTest ApplicationShellTest \
		ConsoleModeTest
	cd build-tsan && TSAN_OPTIONS="suppressions=$(CURDIR)/tests/tsan.supp halt_on_error=1 die_after_fork=0" \
		ctest --output-on-failure -L concurrency

bench: build
	bench/run.sh $(BUILD)

# Each fuzz target for FUZZ_SECONDS on its seed corpus (a clang build with TALLYVOX_FUZZ).
fuzz: deps
	tests/fuzz/run.sh $(FUZZ_SECONDS)

format:
	git ls-files --cached --others --exclude-standard '*.cpp' '*.h' | xargs clang-format -i

format-check:
	git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror

# clang-tidy with the checked-in .clang-tidy over every source the build compiles; any
# finding fails. Needs the build's compile_commands.json and generated headers.
lint: build
	run-clang-tidy -p $(BUILD) -quiet -j $(JOBS) \
		'$(CURDIR)/(shell|prefs|words|services|support|indexer|tests|bench)/.*\.cpp$$' \
		>$(BUILD)/lint.log 2>&1 || { grep -E -A3 '(warning|error):' $(BUILD)/lint.log; exit 1; }
	@echo "lint: no findings"

# lupdate over every source: new texts enter translations/*.ts as unfinished, removed ones
# leave (docs/translations.md).
update-translations: configure
	cmake --build $(BUILD) --target update_translations

# The program in the pseudo-language, every text bracketed and 40 % longer.
pseudo-run: build
	LC_ALL= LC_MESSAGES= LANG=en_US.UTF-8 LANGUAGE=en_XA $(BUILD)/bin/tallyvox $(ARGS)

clean:
	rm -rf build build-asan build-tsan

.PHONY: package package-check

# The Debian package, built from $(BUILD) by CPack: $(BUILD)/tallyvox_<version>_amd64.deb.
package: build
	rm -f $(BUILD)/tallyvox_*.deb
	cd $(BUILD) && cpack -G DEB

# Installs that package into a fresh minimal Debian 12 system, runs it and purges it
# (needs root and the network; see docs/packaging.md).
package-check: package
	@./scripts/install-deps.sh mmdebstrap
	packaging/package-check.sh $(BUILD)/tallyvox_*_amd64.deb
