#include "tune/state_lock.h"

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

StateLock::StateLock(const std::string& state) : path_(state + ".lock") {
    // Who had it before may have removed the file just as it was opened here.
    do {
        file_ = std::make_unique<OpenFile>(
            open(path_.c_str(), O_RDWR | O_CREAT | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC, 0666));
        if (!file_->is_open()) return;
        if (!file_->TakeLock()) throw std::runtime_error(state + ": another run is using it");
    } while (!file_->has_name());
}

StateLock::~StateLock() {
    // A file with something in it is somebody else's, whatever its name.
    if (file_->has_size(0)) unlink(path_.c_str());
}
