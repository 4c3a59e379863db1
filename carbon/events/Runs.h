// Which loops are running, the innermost last.
#ifndef LAMPBLACK_EVENTS_RUNS_H
#define LAMPBLACK_EVENTS_RUNS_H

namespace lampblack::events {

struct LoopRun {
    enum class Kind { Application, Current, Modal };

    explicit LoopRun(Kind);
    ~LoopRun();
    LoopRun(const LoopRun&) = delete;
    LoopRun& operator=(const LoopRun&) = delete;

    Kind kind;
    bool quit = false;
    LoopRun* outer;
};

LoopRun* InnermostRun();

// Ends a run and those inside of it, the innermost first.
void QuitFrom(LoopRun* inRun);

// Whether whoever receives events now must leave: the innermost run ends, or the loop was told to quit while
// none ran (which is then forgotten).
bool TakeQuit();

} // namespace lampblack::events

#endif
