#include "tune/program.h"

int main(int argc, char** argv) { return RunTune(argc, argv); }
