// How the process's allocator treats freed memory.
#pragma once

namespace platform {

// glibc hands the top of its heap back to the system as soon as 128 KiB of
// it are free. The game frees in bursts what it allocates again moments
// later (a parsed saves file, a decoded picture's rows, a level's pieces), so
// every burst then pays for page faults; keeping up to 32 MiB of freed heap
// spares them. Called first thing in main, and by the benchmarks, which
// measure the game as it runs.
void keepFreedHeap();

}  // namespace platform
