#pragma once

// How long a user is kept waiting once something was waited for in vain.
namespace store {

/// For another process's lock, in milliseconds.
inline constexpr int kImpatience = 1000;

/// For a server to take a connection, at first and after it was tried in vain.
inline constexpr int kConnectSeconds = 10;
inline constexpr int kImpatientConnectSeconds = 2;  // the least that the drivers take

}  // namespace store
