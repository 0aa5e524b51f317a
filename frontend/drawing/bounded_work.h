// Work on what comes from outside, in a process of its own: it may take too long, need all memory or end in a
// crash, and the program goes on.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace vexa::frontend {

struct WorkLimits {
    unsigned int seconds = 20;                      ///< on a processor
    unsigned int patience = 3;                      ///< times as many in all, as much else may be going on
    std::uint64_t memory = std::uint64_t{2} << 30;  ///< bytes, beside what the program has
    std::uint64_t wholeMemory = UINT64_MAX;         ///< with what the program has, where that leaves enough
    std::uint64_t resultBytes = std::uint64_t{1} << 30;  ///< longest result
    /// Bytes, beside what the program has, for as long as other work may go on; `finishAlone` gives it the
    /// rest. Without it work takes what it may from its beginning.
    std::uint64_t besideOthers = UINT64_MAX;
    bool beginsAlone = false;  ///< nothing goes on before it is waited for, nor anything else meanwhile
};

enum class WorkEnd {
    done,
    tooLong,    ///< the limit of time
    crashed,    ///< ended without a result, for example for want of memory
    noProcess,  ///< the system gave none; nothing was done
};

/// Work that goes on in a copy of the process. Nothing that it does reaches this process but what it returns;
/// it must not wait for another thread, of which the copy has none: it begins while no other one has anything
/// to do, which is waited for two seconds of their work at most. Several may go on at the same time, all of
/// one thread.
class WorkApart {
  public:
    /// Begins `work`, which must be there until it is finished. A copy ends with this process, too.
    WorkApart(std::function<std::string()> work, const WorkLimits& limits);
    /// Ends what nobody waited for.
    ~WorkApart();
    WorkApart(const WorkApart&) = delete;
    WorkApart& operator=(const WorkApart&) = delete;

    /// Waits for the work and gives what it returned. Called once. The time that it may take in all counts
    /// from here on, but that on a processor from the beginning. Where the system gave no process at first,
    /// it is asked again.
    [[nodiscard]] WorkEnd finish(std::string& result);
    /// Whether it had less than it may have alone.
    [[nodiscard]] bool hadLess() const { return !isAlone_ && limits_.besideOthers != UINT64_MAX; }
    /// Does the work once more, with all the memory that it may have. Other work that goes on is given up
    /// for it, and begins again when it is waited for.
    [[nodiscard]] WorkEnd finishAlone(std::string& result);

  private:
    void begin();
    void giveUp();
    void closePipe();
    [[nodiscard]] WorkEnd wait(std::string& result);

    std::function<std::string()> work_;
    WorkLimits limits_;
    int process_ = 0;  // 0 for none
    int pipe_ = -1;    // where the result comes from
    bool isAlone_ = false;
};

/// Finishes work whose result begins with `+` when all is well, and does it once more alone when it is not
/// and it had less memory than it may have.
[[nodiscard]] WorkEnd finishWell(WorkApart& work, std::string& result);

/// Work apart from its beginning to its end.
[[nodiscard]] WorkEnd workApart(const std::function<std::string()>& work, const WorkLimits& limits,
                                std::string& result);

}  // namespace vexa::frontend
