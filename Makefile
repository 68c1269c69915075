# Builds vorka-uci for frameworks that test engines, which run `make EXE=name` and then `name bench`. Everybody else uses
# CMake's presets: README.md. Needs make, CMake and g++ 12 or clang 14.
#
#     make EXE=vorka-uci           the program, for the processor of this machine
#     make EXE=vorka-uci PGO=ON    the same, trained by the bench first (g++ only)

EXE    ?= vorka-uci
NATIVE ?= ON
PGO    ?= OFF
JOBS   ?= $(shell nproc 2> /dev/null || echo 1)

BUILD := build/make
SETTINGS := -DCMAKE_BUILD_TYPE=Release -DVORKA_LTO=ON -DVORKA_NATIVE=$(NATIVE) -DVORKA_PGO=$(PGO) -DVORKA_BUILD_TESTS=OFF
# A compiler that make's caller names; make itself has one always.
ifneq ($(origin CXX),default)
SETTINGS += -DCMAKE_CXX_COMPILER=$(CXX)
endif

# Lines of a recipe begin with this instead of a tab.
.RECIPEPREFIX := >

.PHONY: all clean
all:
> cmake -S . -B $(BUILD) $(SETTINGS)
> cmake --build $(BUILD) --target vorka-uci --parallel $(JOBS)
> cp $(BUILD)/vorka-uci $(EXE)

clean:
> rm -rf $(BUILD)
