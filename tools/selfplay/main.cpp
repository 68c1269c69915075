#include "selfplay/program.h"

int main(int argc, char** argv) { return RunSelfplay(argc, argv); }
