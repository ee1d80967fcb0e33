# run         a sample board on this machine: its panel on a terminal, elsewhere a recorder on it
# test        the tests
# board-test  the tests on an emulated 32-bit ARM board, with real GPIO chips
# package     Debian packages into build/packages (ARCH=armhf: for a 32-bit ARM board)
# docs        the reference, with the examples and guides, into build/docs
# check       everything the gate asks for (see .ci/run)
# clean       removes all that was built

PRESET ?= dev
BUILD := build/$(PRESET)

.PHONY: run test board-test package docs check clean build

run: build
	scripts/run-sample $(BUILD)

test: build
	ctest --preset $(PRESET)

board-test:
	scripts/board-test

package:
	scripts/setup package $(filter-out $(shell dpkg --print-architecture),$(ARCH))
	scripts/package $(ARCH)

docs:
	scripts/setup docs
	scripts/docs

check:
	.ci/run

clean:
	rm -rf build

build:
	scripts/setup
	cmake --preset $(PRESET) --log-level=WARNING
	cmake --build --preset $(PRESET)
