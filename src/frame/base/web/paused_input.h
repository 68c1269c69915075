#pragma once

/// Thrown by ReadLineOrEnd in a browser that doesn't let the engine wait: there is no line yet. Whoever started the
/// main loop catches it, and starts the loop again when there are lines. Nothing else may catch it.
struct input_paused_exception {};
