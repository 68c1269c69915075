#pragma once

#include "bitbase_builder/table.h"

namespace bitbase_builder {

/// The whole program: reads the command line, solves into `library` and writes the files. Returns its exit status.
int run_program(int argc, char** argv, Library& library);

}  // namespace bitbase_builder
