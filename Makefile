# run    a recorder on a sample board, on this machine
# test   the tests
# check  everything the gate asks for (see .ci/run)
# clean  removes all that was built

PRESET ?= dev
BUILD := build/$(PRESET)

.PHONY: run test check clean build

run: build
	scripts/run-sample $(BUILD)

test: build
	ctest --preset $(PRESET)

check:
	.ci/run

clean:
	rm -rf build

build:
	scripts/setup
	cmake --preset $(PRESET) --log-level=WARNING
	cmake --build --preset $(PRESET)
