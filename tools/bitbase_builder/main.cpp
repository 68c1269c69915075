// Computes the two bitbase files of pawn endings from the rules of chess.

#include "bitbase_builder/program.h"

int main(int argc, char** argv) {
    bitbase_builder::Library library;
    return bitbase_builder::run_program(argc, argv, library);
}
