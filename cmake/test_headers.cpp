// Gives the headers that all tests share a target to be compiled for.
