// Cuts a line that a client of rigctld sent into requests, after the protocol's description (man rigctld).
// Answers nothing: that is CatAnswers.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace spectrino {

enum class CatVerb {
  GetFreq,
  SetFreq,
  GetMode,
  SetMode,
  GetVfo,
  SetVfo,
  GetSplitVfo,
  SetSplitVfo,
  GetSplitFreq,
  SetSplitFreq,
  GetSplitMode,
  SetSplitMode,
  GetPtt,
  SetPtt,
  GetLevel,
  SetLevel,
  GetFunc,
  SetFunc,
  GetInfo,
  GetPowerStat,
  GetLockMode,
  GetVfoInfo,
  GetVfoList,
  SetVfoOpt,
  CheckVfo,
  DumpState,
  Quit,
  NotServed,  ///< of the protocol, or well-formed; not answered here
  Nonsense,
};

/// One request: [separator] letter or "\" long name, then its arguments, a VFO before them in VFO mode.
///
///   "F 14074000"   "+\set_mode USB 2400"   ";f"   "fm" (two requests)
struct CatRequest {
  CatVerb Verb = CatVerb::Nonsense;
  std::string_view Name;    ///< the long one, for the answer; empty for nonsense
  char Separator = 0;       ///< between the records of an extended answer; 0: a plain one
  std::string_view Target;  ///< the VFO before the arguments; empty where there is none
  std::array<std::string_view, 2> Arguments;
  bool Whole = true;  ///< nothing that belongs to it is missing

  /// What was given, for the first record of an extended answer: "VFOA USB 2400".
  [[nodiscard]] std::string Given() const;
};

/// Takes the first request off a line without its end; nothing where only blanks or a comment are left. What
/// cannot be told apart takes the rest of the line with it. Views into the line.
[[nodiscard]] std::optional<CatRequest> TakeRequest(std::string_view& line, bool vfoMode);

}  // namespace spectrino
