#pragma once

namespace moorline {

/// Lets all threads but the main one share one arena, where each would keep what it once needed. Before any thread
/// runs.
void shareHeap();
/// Gives back to the system what of the heap is free, of every thread.
void trimHeap();

} // namespace moorline
