// Writes the table of king and pawn against king as C++ text, for the build of the engine.
//
//     single_pawn_generator FILE

#include <bit>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "bitbases/single_pawn_solver.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: single_pawn_generator FILE\n");
        return EXIT_FAILURE;
    }
    const std::vector<std::uint64_t> words = SolveSinglePawn();
    int draws = 0;
    for (const std::uint64_t word : words) draws += std::popcount(word);
    if (draws != single_pawn_draws) {
        std::fprintf(stderr, "single_pawn_generator: %d draws instead of %d\n", draws, single_pawn_draws);
        return EXIT_FAILURE;
    }
    std::FILE* const file = std::fopen(argv[1], "w");
    if (file == nullptr) {
        std::perror(argv[1]);
        return EXIT_FAILURE;
    }
    std::fprintf(file,
                 "#include \"bitbases/single_pawn_bitbases_data.h\"\n\n"
                 "const std::array<std::uint64_t, 8192> single_pawn_bitbase = {\n");
    for (const std::uint64_t word : words) std::fprintf(file, "0x%016" PRIX64 "ULL,\n", word);
    std::fprintf(file, "};\n");
    if (std::fclose(file) != 0) {
        std::perror(argv[1]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
