// How long something takes where time is what is tested.
#pragma once

#include <ctime>

namespace vexa {

/// Seconds that the processor works for `work`: what else goes on on the machine does not count.
template <typename Work>
double processorSeconds(const Work& work) {
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

}  // namespace vexa
