// Starts the program of its own name for the level of this processor; see level.h. Standard input and output are left
// as they are, and so are the arguments, but for the first one, which becomes the path of the program: the engine looks
// for its bitbases in the folder that stands there.

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "frame/base/vocabulary.h"
#include "frame/launcher/level.h"

namespace {

void Complain(const std::string& sentence) {
    std::fprintf(stderr, "%s%s\n", std::string(vocabulary::launcher_says).c_str(), sentence.c_str());
}

/// The answer takes in whether the system keeps the wide registers, without which a processor is none of level 3.
Level LevelOfProcessor() {
    __builtin_cpu_init();
    if (__builtin_cpu_supports("x86-64-v3")) return Level::x86_64_v3;
    if (__builtin_cpu_supports("x86-64-v2")) return Level::x86_64_v2;
    return Level::x86_64;
}

/// The full path of the launcher, with links resolved; empty if the system doesn't tell, and errno then says why.
std::string OwnPath() {
    std::array<char, PATH_MAX> path;
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    return {path.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

/// Returns only if no place holds a program that can be started.
void Start(std::string_view launcher, Level level, std::vector<char*>& arguments) {
    for (std::string& path : PlacesOfProgram(launcher, level)) {
        arguments.front() = path.data();
        execv(path.c_str(), arguments.data());
        const int error = errno;
        if (error != ENOENT && error != ENOTDIR) {
            Complain(std::string(vocabulary::can_not_start) + path + ": " + std::strerror(error));
        }
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::string launcher = OwnPath();
    if (launcher.empty()) {
        Complain(std::string(vocabulary::own_folder_unknown) + std::strerror(errno));
        return EXIT_FAILURE;
    }
    const char* const wish = std::getenv("VORKA_LEVEL");
    const LevelChoice choice = ChooseLevel(LevelOfProcessor(), wish == nullptr ? "" : wish);
    if (!choice.refusal.empty()) {
        Complain(choice.refusal);
        return EXIT_FAILURE;
    }

    std::vector<char*> arguments(argv, argv + argc);
    arguments.resize(std::max<std::size_t>(arguments.size(), 1));  // the name may be missing
    arguments.push_back(nullptr);
    for (int level = static_cast<int>(choice.level); level >= 0; --level) {
        Start(launcher, Level{level}, arguments);
        const auto [beside, in_library] = PlacesOfProgram(launcher, Level{level});
        Complain((std::string(vocabulary::nothing_to_start) + beside).append(vocabulary::or_there) + in_library);
    }
    return EXIT_FAILURE;
}
