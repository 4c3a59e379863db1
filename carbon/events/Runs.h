// Which loops are running, the innermost last.
#ifndef LAMPBLACK_EVENTS_RUNS_H
#define LAMPBLACK_EVENTS_RUNS_H

namespace lampblack::events {

struct Run {
    enum class Kind { Application, Current, Modal };

    explicit Run(Kind);
    ~Run();
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    Kind kind;
    bool quit = false;
    Run* outer;
};

Run* InnermostRun();

// Ends a run and those inside of it, the innermost first.
void QuitFrom(Run* inRun);

// Whether whoever receives events now must leave: the innermost run ends, or the loop was told to quit while
// none ran (which is then forgotten).
bool TakeQuit();

} // namespace lampblack::events

#endif
