#include "platform/heap.h"

#include <malloc.h>

namespace platform {

void keepFreedHeap() { mallopt(M_TRIM_THRESHOLD, 32 << 20); }

}  // namespace platform
