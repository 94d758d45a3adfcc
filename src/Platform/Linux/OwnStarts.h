#pragma once

namespace velto {

/// Tells whether the programs that started were this program's own tools and what those ran, from what the kernel counts
/// anyway: so that a tool of ours costs no look at every process. One thread.
class OwnStarts {
public:
    /// Every process has been looked at.
    void looked();
    /// Whether a start since then may have been a tool of ours.
    bool possible() const;
    /// Whether a tool of ours runs.
    bool running() const;
    /// Once none runs: whether no process is left that wasn't there at the look before the last, so that there is nothing to
    /// look at. A process that is older than that and becomes another program while a tool of ours runs isn't noticed here.
    bool over();

private:
    long m_ended = 0; ///< changes whenever a tool of ours has ended
    int m_newest = 0; ///< the newest process or thread at the last look; 0 if unknown
    int m_before = 0; ///< the same at the one before: who has just started may become another program yet
};

} // namespace velto
