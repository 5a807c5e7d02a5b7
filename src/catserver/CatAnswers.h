// What each request of rigctld's protocol is answered with, and what it asks of the radio.
// No bytes come in here and none go out: RigctldFace does both.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "catserver/CatRequest.h"
#include "catserver/CatServerState.h"

namespace spectrino {

/// One client's own choices.
struct CatSession {
  bool VfoMode = false;  ///< requests name their VFO
  Vfo Current = Vfo::A;  ///< that the others mean
};

struct CatAnswer {
  struct Record {
    std::string Label;  ///< of the extended form; empty: the value stands alone
    std::string Value;
  };
  CatResult Result = CatResult::Done;
  std::vector<Record> Records;  ///< of a read
  bool IsSet = false;           ///< a plain answer tells the result too where all went well
  bool NoResult = false;        ///< no answer of this one tells it, as clients expect
  std::optional<CatWish> Wish;  ///< to be asked of the radio before the answer
};

/// A read that has no value.
[[nodiscard]] inline CatAnswer Failed(CatResult result) {
  return {.Result = result, .Records = {}, .Wish = {}};
}

[[nodiscard]] inline CatAnswer Values(std::vector<CatAnswer::Record> records) {
  return {.Records = std::move(records), .Wish = {}};
}

/// A set that needs nothing of the radio.
[[nodiscard]] inline CatAnswer SetDone(CatResult result) {
  return {.Result = result, .Records = {}, .IsSet = true, .Wish = {}};
}

[[nodiscard]] CatAnswer AnswerTo(const CatRequest& request, const CatServerState& radio, CatSession& session);

/// The answer on the wire, in the form that the request asked for.
///
///   plain      14074000 | LF                        RPRT -11 | LF
///   extended   get_freq: | LF | Frequency: 14074000 | LF | RPRT 0 | LF
[[nodiscard]] std::string Rendered(const CatRequest& request, const CatAnswer& answer);

}  // namespace spectrino
