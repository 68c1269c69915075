#include "frame/base/os_dependent.h"
#include "search/engine/engine.h"
#include "uci/uci_program.h"

int main(int argc, char* argv[]) {
    IgnoreBrokenPipe();
    ReserveStandardDescriptors();
    ExecutableDirectory(argc > 0 ? argv[0] : "");
    Engine engine;
    engine.bitbases.Init();
    VorkaUci::UciProgram(engine).run();
}
