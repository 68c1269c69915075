// Computes tables of distances to mate from the rules of chess.

#include "table_builder/program.h"

int main(int argc, char** argv) { return table_builder::RunProgram(argc, argv); }
