#pragma once

#include <exception>

/// Base of every exception that reports a failure. The exceptions that steer the search (search/steering.h) stand
/// apart: they report nothing and share no base, so that no handler of failures can swallow them.
class VorkaException : public std::exception {};
