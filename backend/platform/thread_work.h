// Copies of the process (fork) that meet no thread in the middle of its work: a copy has only the thread that
// asked for it, and what another thread held at that moment, a lock of the memory's above all, stays held
// there for ever.
#pragma once

namespace vexa {

/// While one is there, its thread works; copying the process waits until all of them are gone but those of
/// the thread that copies it. A thread holds one for each piece of its work, and none while it waits for more
/// to do or for a lock that is held while another is begun. Whoever starts a thread waits until it runs.
class ThreadWork {
  public:
    /// Waits while the process is being copied.
    ThreadWork();
    ~ThreadWork();  // NOLINT(performance-trivially-destructible): not on every system
    ThreadWork(const ThreadWork&) = delete;
    ThreadWork& operator=(const ThreadWork&) = delete;
    ThreadWork(ThreadWork&&) = delete;
    ThreadWork& operator=(ThreadWork&&) = delete;
};

}  // namespace vexa
