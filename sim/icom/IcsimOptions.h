// What the command line of spectrino-icsim can say.
// Reading only: icsim.cpp acts on it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/icom/IcomRadio.h"

namespace spectrino {

/// What goes wrong, or right again, at its time.
enum class IcsimEvent { Silence, WrongBaud, Refusal, Heal, ScopeOff, PowerOff, PowerOn, Unplug, Replug };

struct IcsimOptions {
  struct Timed {
    double AtS = 0;  ///< after READY
    IcsimEvent Event = IcsimEvent::Silence;
  };

  IcomSimSetup Setup;
  std::string LinkPath;
  bool HelpWanted = false;
  std::vector<Timed> Events;  ///< in their order
};

inline constexpr std::string_view kIcsimUsage =
    R"(usage: spectrino-icsim --model ic7300|ic705|ic9700|ic7610 --link PATH
  --link PATH       symbolic link to the terminal that is the radio's port
  --echo            the bus returns what was sent to it
  --rate HZ         scope lines a second at the fast sweep (default 15)
  --divisions N     frames of one scope line, 1..15 (default: the model's own)
  --identity HH     says that it is another model, two hexadecimal digits
  --operator        somebody turns the knob slowly and changes the mode now and then
  --fault NAME=N    may be given several times:
      noise=N          garbage and a damaged byte with each n-th frame
      lost-division=N  each n-th scope frame never leaves
      wrong-address=N  each n-th frame comes from another address
      half-frame=N     each n-th frame breaks off in its middle
      silence=S        nothing is sent from S seconds on
      baud=S           from S seconds on nothing but noise is heard
      refuse=S         from S seconds on every command is refused
      heal=S           ends the three above
      scope-off=S      somebody switches the scope's data off
      off=S, on=S      the radio's power switch
      unplug=S         the port goes away after S seconds
      replug=S         and comes back after S seconds
Prints READY when it serves; SIGTERM ends it and removes the link.
)";

/// False with what is wrong; arguments without the program's name.
[[nodiscard]] bool ReadIcsimOptions(const std::vector<std::string>& arguments, IcsimOptions& options,
                                    std::string& trouble);

}  // namespace spectrino
