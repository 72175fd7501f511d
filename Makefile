# Velmora: `make run` and `make test` do all the set-up on a fresh Debian 12 machine.
BUILD ?= build
JOBS ?= $(shell nproc)
PREFIX ?= /usr/local

.PHONY: deps build run demo test bench clean install deb

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

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

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
