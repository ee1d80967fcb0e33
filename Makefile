# run         a sample board on this machine: its panel on a terminal, elsewhere a scenario
# test        the tests
# board-test  the tests on an emulated 32-bit ARM board, with real GPIO chips
# package     Debian packages into build/packages (ARCH=armhf, ARCH=arm64: for a board)
# docs        the reference, with the examples and guides, into build/docs
# coverage    which part of each room the tests reach; pages into build/coverage/html
# abi         what a change breaks for programs built against the recorded ABI (abi-record records)
# bench       measures the library beside what one would write by hand: a table, and build/bench.json
# bench-board the same on the emulated board, for the rows that need one: build/bench-board.json
# setup       installs the Debian packages that any of these needs, and does nothing else
# check       everything the gate asks for (see .ci/run)
# clean       removes all that was built

PRESET ?= dev
BUILD := build/$(PRESET)

.PHONY: run test board-test package docs coverage abi abi-record bench bench-board setup check clean build

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

coverage:
	scripts/setup coverage
	scripts/coverage

abi abi-record: build
	scripts/setup abi
	scripts/abi $(filter record,$(subst abi-,,$@))

bench:
	scripts/bench

bench-board:
	scripts/bench --board

setup:
	scripts/setup package docs coverage abi bench check board arm64

check:
	.ci/run

clean:
	rm -rf build

build:
	scripts/setup
	cmake --preset $(PRESET) --log-level=WARNING
	cmake --build --preset $(PRESET)
