// What an Icom would reply to a read request, from what the host program's own reads tell.
// Tables only. The host can hand a request on to the radio as it is, but while the scope sends, it takes
// pieces of a line for the reply.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/RigctldReader.h"

namespace spectrino {

struct CivRead {
  std::string_view Civ;      ///< command and sub-command, in hexadecimal
  std::string_view Command;  ///< the host's: "get_level" or "get_func"
  std::string_view Argument;
  /// Data of the radio's reply, in hexadecimal; empty: no radio has that value.
  std::string (*Data)(double value);
};

/// Null for a request that the host has no read of its own for.
[[nodiscard]] const CivRead* FindCivRead(std::string_view civ);

/// Command, sub-command and data of the radio's reply; empty where the answer tells no value.
[[nodiscard]] std::string CivReply(const CivRead& read, const RigctldReply& answer);

/// The mode byte of a mode in Hamlib's words, two hexadecimal digits; empty for a word that has none.
[[nodiscard]] std::string_view CivModeOfWord(std::string_view word);

}  // namespace spectrino
