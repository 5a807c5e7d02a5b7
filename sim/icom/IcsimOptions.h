// What the command line of spectrino-icsim can say.
// Reading only: icsim.cpp acts on it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/icom/IcomRadio.h"

namespace spectrino {

struct IcsimOptions {
  IcomSimSetup Setup;
  std::string LinkPath;
  bool HelpWanted = false;
  double SilenceAtS = -1;  ///< seconds after READY; below 0 never, like the ones below
  double UnplugAtS = -1;
  double ReplugAtS = -1;
};

inline constexpr std::string_view kIcsimUsage =
    R"(usage: spectrino-icsim --model ic7300|ic705|ic9700|ic7610 --link PATH
  --link PATH       symbolic link to the terminal that is the radio's port
  --echo            the bus returns what was sent to it
  --rate HZ         scope lines a second at the fast sweep (default 15)
  --divisions N     frames of one scope line, 1..15 (default: the model's own)
  --operator        somebody turns the knob slowly and changes the mode now and then
  --fault NAME=N    may be given several times:
      noise=N          garbage and a damaged byte with each n-th frame
      lost-division=N  each n-th scope frame never leaves
      wrong-address=N  each n-th frame comes from another address
      half-frame=N     each n-th frame breaks off in its middle
      silence=S        nothing is sent from S seconds on
      unplug=S         the port goes away after S seconds
      replug=S         and comes back after S seconds
Prints READY when it serves; SIGTERM ends it and removes the link.
)";

/// False with what is wrong; arguments without the program's name.
[[nodiscard]] bool ReadIcsimOptions(const std::vector<std::string>& arguments, IcsimOptions& options,
                                    std::string& trouble);

}  // namespace spectrino
