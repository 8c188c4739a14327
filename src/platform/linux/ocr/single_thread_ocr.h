#pragma once
// Tesseract runs its neural network on an OpenMP pool sized from OMP_THREAD_LIMIT, which the
// OpenMP runtime reads once, when it is loaded, before `main`. With a pool per core, one line costs
// 130–400 ms instead of 18–45 ms on a busy desktop. A program that recognises text calls this
// first thing in `main`: when the variable is missing it sets it to 1 and executes itself again,
// with the same arguments, so the runtime starts with it. Main thread, before any other thread.

namespace vesko {

// Returns only when OMP_THREAD_LIMIT is set (or the re-execution failed, which leaves the program
// running, slower); otherwise the process image is replaced.
void ensureSingleThreadedOcr(char** argv);

}  // namespace vesko
