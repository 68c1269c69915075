#pragma once

/// A terminal or an interface that is gone (SIGHUP) is the end of the input: the program ends in the usual way, its
/// files whole.

/// SIGHUP counts from here on, unless the program was told to ignore it (nohup).
void EndInputOnHangUp();
[[nodiscard]] bool HasHungUp();

/// Waits until a descriptor is ready for `events` of poll, or can't be asked. False once the terminal has hung up.
[[nodiscard]] bool WaitUntilReady(int descriptor, short events);
