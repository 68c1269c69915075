// A page has no terminal that could hang up, and what a worker writes never has to wait.

#include "frame/base/hang_up.h"

void EndInputOnHangUp() {}

bool HasHungUp() { return false; }

bool WaitUntilReady(int /*descriptor*/, short /*events*/) { return true; }
