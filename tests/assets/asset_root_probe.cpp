// Prints the asset root the game would use when started from where this
// program lies: the package test puts it beside the installed game.
#include <cstdio>

#include "platform/paths.h"

int main() { std::puts(paths::assetDir().c_str()); }
