#include "app/shell.h"
#include "platform/heap.h"

int main(int argc, char** argv) {
  platform::keepFreedHeap();
  return app::run(argc, argv);
}
