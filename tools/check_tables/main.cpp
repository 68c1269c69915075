// Compares tables in the published format with our own and with themselves.

#include "check_tables/program.h"

int main(int argc, char** argv) { return check_tables::RunProgram(argc, argv); }
