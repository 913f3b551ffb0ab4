#include "app/shell.h"

int main(int argc, char** argv) { return app::run(argc, argv); }
