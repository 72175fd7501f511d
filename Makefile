# Velmora: `make run` and `make test` do all the set-up on a fresh Debian 12 machine.
BUILD ?= build
JOBS ?= $(shell nproc)
PREFIX ?= /usr/local

.PHONY: deps build run demo test test-asan fuzz bench clean install deb

deps:
	@bash scripts/install-deps.sh

$(BUILD)/CMakeCache.txt:
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo

build: deps $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS)

run: build
	mkdir -p wedding
	cd wedding && ../$(BUILD)/velmora

# A sample wedding of about 300 invitations in demo/, and Velmora started on it.
demo: build
	./$(BUILD)/velmora-sample demo 300
	cd demo && ../$(BUILD)/velmora

ifeq ($(SANITIZE),1)
test: test-asan
else
test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)
endif

# The whole suite built apart under the address and undefined-behaviour checkers
# (`make test SANITIZE=1` is the same). Qt's and the system's own leaks are not ours:
# scripts/lsan.supp names them.
ASAN_BUILD ?= build-asan
SANITIZER_ENV = ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1 \
	UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	LSAN_OPTIONS=suppressions=$(CURDIR)/scripts/lsan.supp:print_suppressions=0

$(ASAN_BUILD)/CMakeCache.txt:
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -g1" -DVELMORA_SANITIZE=ON

test-asan: deps $(ASAN_BUILD)/CMakeCache.txt
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	# The package check is left out: a package of checked binaries is not one we ship.
	cd $(ASAN_BUILD) && $(SANITIZER_ENV) QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS) -LE package

# Every reader of outside text under libFuzzer for FUZZ_SECONDS each; crashes land in
# fuzz/regressions/, which the tests replay.
FUZZ_BUILD ?= build-fuzz
FUZZ_SECONDS ?= 30
# New inputs grow in $(FUZZ_BUILD)/corpus; the seeds kept in fuzz/corpus are read only.
# The files the readers are given live in memory when it can be had: a disk's syncs
# would take most of the time.
FUZZ_TMP ?= $(shell [ -d /dev/shm ] && echo /dev/shm || echo /tmp)
FUZZ_TARGETS = fuzz_inifile fuzz_numbers fuzz_places fuzz_userstore fuzz_database

$(FUZZ_BUILD)/CMakeCache.txt:
	@VELMORA_FUZZ=1 bash scripts/install-deps.sh
	cmake -S . -B $(FUZZ_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ -DVELMORA_FUZZ=ON

fuzz: $(FUZZ_BUILD)/CMakeCache.txt
	cmake --build $(FUZZ_BUILD) -j $(JOBS) --target $(FUZZ_TARGETS)
	@for t in $(FUZZ_TARGETS); do \
	  name=$${t#fuzz_}; mkdir -p $(FUZZ_BUILD)/corpus/$$name fuzz/regressions; \
	  echo "== $$t"; \
	  (cd $(FUZZ_BUILD) && TMPDIR=$(FUZZ_TMP) $(SANITIZER_ENV) ./fuzz/$$t -max_total_time=$(FUZZ_SECONDS) -max_len=8192 \
	    -timeout=10 -rss_limit_mb=4096 -artifact_prefix=$(CURDIR)/fuzz/regressions/$$name- -print_final_stats=1 \
	    corpus/$$name $(CURDIR)/fuzz/corpus/$$name) 2>&1 \
	    | grep -E "stat::number_of_executed_units|ERROR|SUMMARY|Test unit written" || exit 1; \
	done

bench: build
	@for b in $(BUILD)/bench/bench_*; do [ -f "$$b" ] && [ -x "$$b" ] || continue; echo "== $$b"; QT_QPA_PLATFORM=offscreen $$b; done

# The program, its icons, menu entry and metadata under $(PREFIX); DESTDIR stages them elsewhere.
install: build
	DESTDIR="$(DESTDIR)" cmake --install $(BUILD) --prefix "$(PREFIX)"

# A Debian package in $(BUILD)/, checked by lintian when it is installed.
deb: build
	cd $(BUILD) && cpack -G DEB
	@if command -v lintian >/dev/null; then lintian --fail-on error $(BUILD)/velmora_*.deb; \
	else echo "lintian is not installed: the package was not checked"; fi

clean:
	rm -rf $(BUILD)
