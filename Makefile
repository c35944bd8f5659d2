# A thin front door to the presets of CMake.

PREFIX ?= /usr/local
JOBS ?= $(shell nproc)

.PHONY: all test bench bench-images bench-reading bench-rendering bench-history bench-capture install uninstall clean

all:
	@tools/setup build
	@tools/build release

test:
	@./test

bench-images:
	@tools/setup build bench
	@tools/build bench image-bench screen-to-png
	@build/bench/bench/images/image-bench --benchmark_repetitions=3
	@bench/images/commands.sh

bench-reading:
	@tools/setup build bench
	@tools/build bench
	@build/bench/bench/reading/reading-bench

bench-rendering:
	@tools/setup build bench
	@tools/build bench rendering-bench
	@build/bench/bench/rendering/rendering-bench

bench-history:
	@tools/setup build bench
	@tools/build bench history-bench
	@build/bench/bench/history/history-bench memory
	@build/bench/bench/history/history-bench scan

bench-capture:
	@tools/setup build bench
	@tools/build bench capture-bench
	@build/bench/bench/capture/capture-bench

bench: bench-images bench-reading bench-rendering bench-history bench-capture

install: all
	@DESTDIR="$(DESTDIR)" cmake --install build/release --prefix "$(PREFIX)"

uninstall:
	@rm -f "$(DESTDIR)$(PREFIX)/bin/lumenote"
	@rm -rf "$(DESTDIR)$(PREFIX)/share/lumenote"
	@echo "removed lumenote from $(DESTDIR)$(PREFIX)"

clean:
	rm -rf build
