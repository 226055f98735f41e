#pragma once

#include "bench/results.h"
#include "bench/stopwatch.h"
#include "setup/tree.h"

namespace bench {

/// Times the client as a whole: from the start of its process to its ready screen,
/// the save and the load of a slot by real gestures, its wait for another program, and its memory. Beside each stands
/// the bare engine with the same statements; beside the start a process that only shows an empty window and runs them.
/// `admin` of a server may take back what the client wrote, so that the engine can write it anew.
Results RunClientBench(const setup::Tree& tree, const std::optional<setup::ServerAdmin>& admin, const Effort& effort);

/// A process of its own: the client up to its ready screen, at the moment `now` (ISO form). Writes "ready" and its
/// megabytes to standard output.
int StartClientOnce(const QString& root, const QString& login, const QString& now);

/// A process of its own: an empty window, and the statements of the file `statements`, as `RunClientBench` writes it.
int StartBareOnce(const QString& statements);

}  // namespace bench
