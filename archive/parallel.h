// Work on many things on all cores of the machine.
#pragma once

#include <cstddef>
#include <functional>

namespace tonvale {

// Calls `work` for 0 to `count` - 1, from several threads at once and in no certain order, and
// returns when all is done. On the thread that called it, `goes_on` is asked now and then, with how
// many are done; once it says no, nothing new is begun. Whether all of it was done.
bool ForEachInParallel(std::size_t count, const std::function<void(std::size_t)>& work,
                       const std::function<bool(std::size_t done)>& goes_on);

}  // namespace tonvale
