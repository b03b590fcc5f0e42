# Two commands: `make run` builds and starts Lumora, `make test` builds and passes every test.
# Both install what they need first (tools/install-deps.sh) and can be run again at any time.

BUILD      ?= build
ASAN_BUILD ?= build-asan
JOBS       ?= $(shell nproc)
CMAKE_FLAGS ?=

.PHONY: run test deps build build-asan test-asan bench format package

deps:
	@tools/install-deps.sh

build: deps
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)
	cmake --build $(BUILD) -j $(JOBS)

run: build
	@tools/run.sh $(BUILD)/dist $(ARGS)

test: build
	cd $(BUILD) && ctest --output-on-failure -j 1
	$(MAKE) test-asan

# The Debian package of the staged installation, written to $(BUILD)/lumora_*.deb.
package: build
	cd $(BUILD) && cpack -G DEB

# The core and its tests once more under AddressSanitizer and UBSan.
build-asan: deps
	cmake -S . -B $(ASAN_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DLUMORA_SANITIZE=ON \
	  -DLUMORA_GUI=OFF -DLUMORA_PLAYER_TESTS=OFF -DLUMORA_BENCH=OFF -DLUMORA_WERROR=ON
	cmake --build $(ASAN_BUILD) -j $(JOBS) --target lumora_unit_tests

test-asan: build-asan
	cd $(ASAN_BUILD) && ctest --output-on-failure -L core -j $(JOBS)

# Every benchmark, one after the other (figures in README.md).
bench: build
	$(BUILD)/bench/lumora_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
	QT_QPA_PLATFORM=offscreen QTWEBENGINE_CHROMIUM_FLAGS="--no-sandbox --disable-gpu" \
	  $(BUILD)/bench/lumora_editor_bench
	bench/startup-time.sh $(BUILD)/dist 5
	node bench/player-budget.mjs $(BUILD)/dist

format:
	find src tests bench -name '*.cpp' -o -name '*.h' | xargs clang-format -i
