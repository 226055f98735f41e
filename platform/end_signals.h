#pragma once

namespace platform {

/// The signals by which a machine asks a process to end: SIGTERM, SIGHUP, SIGINT. From the making of this on they don't
/// end it any more; whoever waits for something watches Handle() too, and ends in order. One object for the process,
/// made before anything that may take long; the programs that it starts are reached by the signals as ever.
class EndSignals {
  public:
    EndSignals();
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    /// True from the first of the signals on.
    bool Came() const;
    /// A file handle that can be read once one of them came, and stays so; it is only to be polled.
    int Handle() const { return ends_[0]; }

  private:
    int ends_[2] = {-1, -1};
};

}  // namespace platform
