#include "backend/platform/thread_work.h"

namespace vexa {

// Nothing copies a process here.
ThreadWork::ThreadWork() = default;
ThreadWork::~ThreadWork() = default;

}  // namespace vexa
