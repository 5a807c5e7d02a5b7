// Which program of this user is at the other end of a connection from this machine, as the system tells it.
#pragma once

#include <cstdint>
#include <string>

namespace spectrino::posix {

/// By /proc: the name of the process that holds the connection from peerPort to ownPort of this machine.
/// Empty where it is another user's or gone. Looks through all open files of the user's processes: not for a
/// thread that draws.
[[nodiscard]] std::string PeerProcess(std::uint16_t peerPort, std::uint16_t ownPort);

}  // namespace spectrino::posix
